#include "app/status_menu.h"

#include <QAction>
#include <QKeySequence>
#include <utility>

namespace horalo {
namespace {

QString showConverterTitle(const std::string& shortcut) {
  // A menu takes an ampersand for the mark of a mnemonic.
  QString shown = QString::fromStdString(shortcut);
  shown.replace(u'&', QStringLiteral("&&"));
  return QStringLiteral("Show Converter (") + shown + u')';
}

}  // namespace

StatusMenu::StatusMenu(Actions actions, const std::string& shortcut)
    : showConverterMenuItem_(add("", std::move(actions.togglePanel))) {
  menu_.addSeparator();
  add("Settings...", std::move(actions.openSettings))
      ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
  add("Check for Updates...", std::move(actions.checkForUpdates));
  menu_.addSeparator();
  add("Quit Horalo", std::move(actions.quit))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  setShortcut(shortcut);
}

void StatusMenu::setShortcut(const std::string& shortcut) {
  showConverterMenuItem_->setText(showConverterTitle(shortcut));
}

QAction* StatusMenu::add(const char* title, std::function<void()> action) {
  QAction* item = menu_.addAction(QString::fromLatin1(title));
  // Some desktops move items called "Settings" or "Quit" to menus of their own.
  item->setMenuRole(QAction::NoRole);
  QObject::connect(item, &QAction::triggered, item, [action = std::move(action)] { action(); });
  return item;
}

}  // namespace horalo
