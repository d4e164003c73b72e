#include "hotkey/views/menu_key_combos.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <string>

namespace horalo {
namespace {

QAction* add(QMenu& menu, const char* shortcut) {
  QAction* const item = menu.addAction(QStringLiteral("Item"));
  item->setShortcut(QKeySequence(QString::fromUtf8(shortcut), QKeySequence::PortableText));
  return item;
}

std::string texts(const std::vector<KeyCombo>& combos) {
  std::string result;
  for (const KeyCombo& combo : combos) result += combo.description() + ' ';
  return result;
}

TEST(MenuKeyCombosTest, walksTheItemsInOrder) {
  QMenu menu;
  add(menu, "Ctrl+,");
  menu.addSeparator();
  QMenu* const submenu = menu.addMenu(QStringLiteral("More"));
  add(*submenu, "Shift+Meta+E");
  QMenu* const deeper = submenu->addMenu(QStringLiteral("Deeper"));
  add(*deeper, "Alt+Return");
  add(*submenu, "F5");
  menu.addMenu(QStringLiteral("Nothing"));
  add(menu, "Ctrl+Alt+Shift+Meta+K")->setEnabled(false);
  EXPECT_EQ(texts(keyCombos(menu)),
            "\u2303, \u21E7\u2318E \u2325\u21A9\uFE0E \uF860F5 \u2303\u2325\u21E7\u2318K ");
}

TEST(MenuKeyCombosTest, anItemWithASubmenuAndAShortcutGivesBoth) {
  QMenu menu;
  QMenu* const submenu = menu.addMenu(QStringLiteral("More"));
  submenu->menuAction()->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
  add(*submenu, "Ctrl+N");
  EXPECT_EQ(texts(keyCombos(menu)), "\u2303M \u2303N ");
}

TEST(MenuKeyCombosTest, readsKeysOfEveryKind) {
  struct {
    const char* shortcut;
    Key key;
  } const rows[] = {
      {"A", Key::a},
      {"1", Key::one},
      {".", Key::period},
      {"[", Key::leftBracket},
      {"]", Key::rightBracket},
      {"\\", Key::backslash},
      {"`", Key::grave},
      {"\"", Key::quote},
      {"\u00A7", Key::section},
      {"Space", Key::space},
      {"Tab", Key::tab},
      {"Return", Key::return_},
      {"Enter", Key::keypadEnter},
      {"Esc", Key::escape},
      {"Backspace", Key::delete_},
      {"Del", Key::forwardDelete},
      {"Ins", Key::help},
      {"Help", Key::help},
      {"Home", Key::home},
      {"End", Key::end},
      {"PgUp", Key::pageUp},
      {"PgDown", Key::pageDown},
      {"Up", Key::upArrow},
      {"Down", Key::downArrow},
      {"Left", Key::leftArrow},
      {"Right", Key::rightArrow},
      {"F1", Key::f1},
      {"F12", Key::f12},
      {"F20", Key::f20},
      {"Volume Up", Key::volumeUp},
      {"Volume Down", Key::volumeDown},
      {"Volume Mute", Key::mute},
  };
  int read = 0;
  for (const auto& row : rows) {
    QMenu menu;
    add(menu, row.shortcut);
    const auto combos = keyCombos(menu);
    ASSERT_EQ(combos.size(), 1U) << row.shortcut;
    EXPECT_EQ(combos.front(), KeyCombo(row.key, {})) << row.shortcut;
    ++read;
  }
  EXPECT_EQ(read, 32);
}

TEST(MenuKeyCombosTest, whatIsNoKeyEquivalentIsLeftOut) {
  QMenu menu;
  for (const char* shortcut : {"", "Ctrl++", "F21", "F35", "Menu", "Ctrl+K, Ctrl+C", "\u00DF"}) {
    add(menu, shortcut);
  }
  EXPECT_EQ(menu.actions().size(), 7);
  EXPECT_TRUE(keyCombos(menu).empty()) << texts(keyCombos(menu));
}

TEST(MenuKeyCombosTest, noMainMenuHasNone) {
  EXPECT_TRUE(mainMenuKeyCombos(nullptr).empty());
  QMenu menu;
  add(menu, "Ctrl+Q");
  EXPECT_EQ(texts(mainMenuKeyCombos(&menu)), "\u2303Q ");
}

}  // namespace
}  // namespace horalo
