#include "hotkey/views/menu_key_combos.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <optional>
#include <string>
#include <string_view>

#include "hotkey/views/event_modifiers.h"

namespace horalo {
namespace {

struct NamedKey {
  Qt::Key key;
  std::string_view name;  // as Key::fromString() reads it
};

// The keys whose equivalent is no character.
constexpr NamedKey kNamedKeys[] = {
    {Qt::Key_Return, "return"},     {Qt::Key_Enter, "keypadenter"},
    {Qt::Key_Tab, "tab"},           {Qt::Key_Escape, "escape"},
    {Qt::Key_Backspace, "delete"},  {Qt::Key_Delete, "forwarddelete"},
    {Qt::Key_Help, "help"},         {Qt::Key_Insert, "help"},
    {Qt::Key_Home, "home"},         {Qt::Key_End, "end"},
    {Qt::Key_PageUp, "pageup"},     {Qt::Key_PageDown, "pagedown"},
    {Qt::Key_Up, "uparrow"},        {Qt::Key_Down, "downarrow"},
    {Qt::Key_Left, "leftarrow"},    {Qt::Key_Right, "rightarrow"},
    {Qt::Key_VolumeUp, "volumeup"}, {Qt::Key_VolumeDown, "volumedown"},
    {Qt::Key_VolumeMute, "mute"},
};

std::string keyEquivalent(Qt::Key key) {
  for (const NamedKey& row : kNamedKeys) {
    if (row.key == key) return std::string(row.name);
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F20) {
    return "f" + std::to_string(key - Qt::Key_F1 + 1);
  }
  const auto character = static_cast<char32_t>(key);
  return character < 0x01000000 ? QString::fromUcs4(&character, 1).toStdString() : std::string();
}

std::optional<KeyCombo> keyComboOf(const QKeySequence& shortcut) {
  if (shortcut.count() != 1) return std::nullopt;
  const QKeyCombination combination = shortcut[0];
  const std::optional<Key> key = Key::fromString(keyEquivalent(combination.key()));
  if (!key) return std::nullopt;
  return KeyCombo(*key, modifierFlags(combination.keyboardModifiers()));
}

}  // namespace

std::vector<KeyCombo> keyCombos(const QMenu& menu) {
  std::vector<KeyCombo> combos;
  for (const QAction* item : menu.actions()) {
    if (const auto combo = keyComboOf(item->shortcut())) combos.push_back(*combo);
    if (const QMenu* submenu = item->menu()) {
      const std::vector<KeyCombo> below = keyCombos(*submenu);
      combos.insert(combos.end(), below.begin(), below.end());
    }
  }
  return combos;
}

std::vector<KeyCombo> mainMenuKeyCombos(const QMenu* mainMenu) {
  return mainMenu != nullptr ? keyCombos(*mainMenu) : std::vector<KeyCombo>{};
}

}  // namespace horalo
