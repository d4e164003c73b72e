#pragma once

#include <QMenu>
#include <functional>
#include <string>

namespace horalo {

// The menu of the status item:
//
//   Show Converter (⇧⌘E)
//   --------------------
//   Settings...                Ctrl+,
//   Check for Updates...
//   --------------------
//   Quit Horalo                Ctrl+Q
class StatusMenu {
 public:
  struct Actions {
    std::function<void()> togglePanel;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> quit;
  };

  // `shortcut` is the display string that the first item shows.
  StatusMenu(Actions actions, const std::string& shortcut);

  void setShortcut(const std::string& shortcut);
  QMenu& menu() { return menu_; }

 private:
  QAction* add(const char* title, std::function<void()> action);

  QMenu menu_;
  QAction* showConverterMenuItem_;
};

}  // namespace horalo
