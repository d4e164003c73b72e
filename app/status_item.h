#pragma once

#include <QSystemTrayIcon>
#include <memory>

#include "app/status_menu.h"
#include "app/tray_backend.h"
#include "app/tray_status.h"

namespace horalo {

// The icon in the desktop's tray, for as long as the user wants one. It is made when a host is
// there, because the widget library decides only once, with the first icon, how it talks to hosts.
class StatusItem {
 public:
  using Kind = TrayBackend::Kind;

  // `host` must outlive this object. A click on the icon toggles the panel.
  StatusItem(TrayBackend& host, StatusMenu::Actions actions);
  ~StatusItem();

  // Both may be called at any time and do nothing where there is nothing to do.
  void setUp(const std::string& shortcut);
  void remove();
  // Retitles the first item of the menu.
  void setShortcut(const std::string& shortcut);

  bool isWanted() const { return menu_ != nullptr; }
  bool isVisible() const { return icon_ != nullptr; }
  TrayStatus status() const;

 private:
  void followHost();
  void makeIcon();
  void retint();

  TrayBackend& host_;
  StatusMenu::Actions actions_;
  std::unique_ptr<StatusMenu> menu_;       // while an icon is wanted
  std::unique_ptr<QSystemTrayIcon> icon_;  // while there is a host as well
  Kind decided_ = Kind::none;              // how the widget library talks to hosts, in this process
};

}  // namespace horalo
