#include "app/converter_panel.h"

#include <QEvent>
#include <QWindow>
#include <utility>

namespace horalo {

ConverterPanel::ConverterPanel(const ConverterView::Environment& environment,
                               WindowBackend& windows, ConverterView::Callbacks callbacks)
    : view_(new ConverterView(environment,
                              {.onDismiss = [this] { close(); },
                               .onOpenSettings = std::move(callbacks.onOpenSettings),
                               .onShowCopiedToast = std::move(callbacks.onShowCopiedToast)})),
      panel_(windows, environment.preferences, view_) {
  windows.onCompositingChanged([this] { panel_.updateBackdrop(); });
}

ConverterPanel::~ConverterPanel() = default;

void ConverterPanel::show(std::uint32_t eventTime) {
  panel_.place();
  panel_.makeKeyAndOrderFront(eventTime);
}

void ConverterPanel::whenOnScreen(std::function<void()> shown) {
  QWindow* window = panel_.windowHandle();
  if (window != nullptr && window->isExposed()) {
    shown();
    return;
  }
  shown_ = std::move(shown);
  if (window != nullptr) window->installEventFilter(this);
}

bool ConverterPanel::eventFilter(QObject* watched, QEvent* event) {
  const auto* window = static_cast<QWindow*>(watched);
  if (event->type() == QEvent::Expose && window->isExposed() && shown_) {
    watched->removeEventFilter(this);
    std::exchange(shown_, nullptr)();
  }
  return false;
}

}  // namespace horalo
