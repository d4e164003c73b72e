#pragma once

#include <QRectF>
#include <QWidget>

class QPainter;

namespace horalo {

// Draws a separator along the upper (horizontal) or left (vertical) edge of `rect`, as thin as a
// device-independent pixel and sharp at every scale.
void drawDivider(QPainter& painter, const QRectF& rect, Qt::Orientation orientation);

// The same as a widget, one pixel thick.
class Divider : public QWidget {
  Q_OBJECT
 public:
  explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::Orientation orientation_;
};

}  // namespace horalo
