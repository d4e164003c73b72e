#include "app/status_item.h"

#include <QApplication>
#include <QWidget>
#include <utility>

#include "app/status_icon.h"
#include "ui/appearance.h"

namespace horalo {
namespace {

// An embedded icon is a window of its own, which would bear the program's name.
void retitleEmbeddedWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->inherits("QSystemTrayIconSys")) window->setWindowTitle(QStringLiteral("Tray Icon"));
  }
}

const char* nameOf(TrayBackend::Kind kind) {
  switch (kind) {
    case TrayBackend::Kind::statusNotifier:
      return "statusnotifier";
    case TrayBackend::Kind::xembed:
      return "xembed";
    case TrayBackend::Kind::none:
      break;
  }
  return "none";
}

}  // namespace

StatusItem::StatusItem(TrayBackend& host, StatusMenu::Actions actions)
    : host_(host), actions_(std::move(actions)) {
  host_.onChange([this] { followHost(); });
}

StatusItem::~StatusItem() {
  host_.onChange([] {});
}

void StatusItem::setUp(const std::string& shortcut) {
  if (menu_) return;
  menu_ = std::make_unique<StatusMenu>(actions_, shortcut);
  followHost();
}

void StatusItem::remove() {
  // Without a session bus hiding an icon ends the program; deleting one never does.
  icon_.reset();
  menu_.reset();
}

void StatusItem::setShortcut(const std::string& shortcut) {
  if (menu_) menu_->setShortcut(shortcut);
}

// An icon does not outlive its host: one that was on a session bus that ended could not be shown on
// the next.
void StatusItem::followHost() {
  const Kind kind = host_.kind();
  const bool canBeShown = kind != Kind::none && (decided_ == Kind::none || decided_ == kind);
  if (!menu_ || !canBeShown) {
    icon_.reset();
  } else if (!icon_) {
    decided_ = kind;
    makeIcon();
  }
}

void StatusItem::makeIcon() {
  icon_ = std::make_unique<QSystemTrayIcon>();
  retint();
  QObject::connect(&Appearance::shared(), &Appearance::changed, icon_.get(), [this] { retint(); });
  icon_->setToolTip(QStringLiteral("Horalo"));
  icon_->setContextMenu(&menu_->menu());
  QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger) actions_.togglePanel();
                   });
  icon_->show();
  retitleEmbeddedWindow();
}

void StatusItem::retint() {
  icon_->setIcon(statusIcon(statusIconInk()));
}

TrayStatus StatusItem::status() const {
  if (!isWanted()) return {};
  if (isVisible()) return {nameOf(decided_), true, {}};
  const bool isHostless = host_.kind() == Kind::none;
  return {nameOf(Kind::none), false,
          isHostless ? "nothing on this desktop shows tray icons"
                     : "the desktop's tray changed its protocol; quit Horalo and start it again"};
}

}  // namespace horalo
