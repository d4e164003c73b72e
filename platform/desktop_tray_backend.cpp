#include "platform/desktop_tray_backend.h"

namespace horalo {
namespace {

constexpr const char* kEmbeddingTray = "_NET_SYSTEM_TRAY";

}  // namespace

DesktopTrayBackend::DesktopTrayBackend(SessionBus& bus, SelectionWatch* selections)
    : selections_(selections), statusNotifier_(bus, [this] { changed_(); }) {
  if (selections_ != nullptr) selections_->observe(kEmbeddingTray, [this] { changed_(); });
}

TrayBackend::Kind DesktopTrayBackend::kind() const {
  if (!statusNotifier_.isKnown()) return Kind::none;
  if (statusNotifier_.isThere()) return Kind::statusNotifier;
  return selections_ != nullptr && selections_->hasOwner(kEmbeddingTray) ? Kind::xembed
                                                                         : Kind::none;
}

}  // namespace horalo
