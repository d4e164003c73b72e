#pragma once

#include <QWidget>
#include <array>

#include "app/panel_placement.h"
#include "app/window_backend.h"

namespace horalo {

// Three dashed lines across the screen that show where the panel's home is, while it is dragged.
// Clicks go through the window.
class GuidesWindow : public QWidget {
  Q_OBJECT
 public:
  // Covers the screen with `screenFrame`.
  GuidesWindow(WindowBackend& backend, const Rect& defaultFrame, const Rect& screenFrame);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  // The dashes alone, for desktops where a window cannot be translucent.
  QRegion shape() const;

  std::array<GuideLine, 3> lines_;
  bool translucent_;
};

}  // namespace horalo
