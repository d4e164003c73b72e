#pragma once

#include <QObject>
#include <functional>

#include "app/panel_window.h"
#include "app/views/converter_view.h"
#include "app/views/floating_panel.h"
#include "app/window_backend.h"

namespace horalo {

// The floating panel with the converter in it.
class ConverterPanel final : public QObject, public PanelWindow {
 public:
  // Everything that `environment` and `windows` refer to must outlive the panel. The view's
  // onDismiss is the panel's own.
  ConverterPanel(const ConverterView::Environment& environment, WindowBackend& windows,
                 ConverterView::Callbacks callbacks);
  ~ConverterPanel() override;

  bool isVisible() const override { return panel_.isVisible(); }
  void prepare() override { view_->prepare(); }
  void show(std::uint32_t eventTime) override;
  void close() override { panel_.close(); }
  void onClose(std::function<void()> closed) override { panel_.setOnClose(std::move(closed)); }
  void selectAll() override { view_->selectAllInput(); }
  void whenOnScreen(std::function<void()> shown) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  ConverterView* view_;  // the panel's
  FloatingPanel panel_;
  std::function<void()> shown_;  // to be called when the panel is on the screen
};

}  // namespace horalo
