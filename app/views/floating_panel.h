#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>

#include "app/panel_placement.h"
#include "app/views/converter_view.h"
#include "app/views/guides_window.h"
#include "app/window_backend.h"
#include "preferences/preferences.h"

namespace horalo {

// The window of the converter: without a frame, above the others, gone as soon as it loses the
// keyboard. It is dragged by whatever is no control, sticks to its home and remembers where it was
// left. Kept once made; closing only hides it.
class FloatingPanel : public QWidget {
  Q_OBJECT
 public:
  // `backend` and `preferences` must outlive the panel, which takes `contentView`.
  FloatingPanel(WindowBackend& backend, Preferences& preferences, ConverterView* contentView);
  ~FloatingPanel() override;

  // Runs after every closing: by close(), by Escape, by losing the keyboard. One closing may run it
  // twice, because a window that is closed loses the keyboard too.
  void setOnClose(std::function<void()> onClose) { onClose_ = std::move(onClose); }

  // Moves the panel to where it was left, else to its home on the main screen. Without a screen it
  // stays where it is.
  void place();

  // Shows it with the keyboard; `eventTime` is the time stamp of the key press that asked, or 0.
  void makeKeyAndOrderFront(std::uint32_t eventTime);

  // Closes the panel, wherever the wish comes from.
  void close();

  // Fits the look to what the desktop can show; to be called when compositing starts or stops.
  void updateBackdrop();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void resignKey();
  void showGuides();
  void endDrag();

  WindowBackend& backend_;
  Preferences& preferences_;
  ConverterView* contentView_;
  PanelPlacement placement_;
  std::unique_ptr<GuidesWindow> guidesWindow_;
  std::function<void()> onClose_;
};

}  // namespace horalo
