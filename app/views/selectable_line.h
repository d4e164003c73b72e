#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <QTextLayout>

class QPainter;

namespace horalo {

// One line of text of which a part can be selected. Where it is too long for its area it ends in an
// ellipsis, and moves to the left while the selection is drawn beyond the edge.
class SelectableLine {
 public:
  // `direction` says where the first character stands; Auto goes by the text's own script.
  void setText(const QString& text, const QFont& font, Qt::LayoutDirection direction);

  // The area is where the line is drawn, in the coordinates of its widget.
  void setArea(const QRectF& area);
  const QRectF& area() const { return area_; }
  // Whether there is text at `point`.
  bool covers(QPointF point) const;

  // Starts to select at `x`, and selects up to `x`; true where that changed what is to be drawn.
  void begin(double x);
  bool extend(double x);
  bool clear();
  bool hasSelection() const { return end_ > start_; }
  QString selectedText() const { return text_.mid(start_, end_ - start_); }

  void draw(QPainter& painter, const QColor& colour, const QColor& selectionColour) const;

 private:
  bool fits() const { return width_ <= area_.width(); }
  int positionAt(double x) const;

  QString text_;
  QFont font_;
  QTextLayout layout_;
  QRectF area_;
  double width_ = 0;   // of the whole line
  double scroll_ = 0;  // how far the line is moved to the left
  int anchor_ = 0;
  int start_ = 0;
  int end_ = 0;  // one past the last character; the start where nothing is selected
};

}  // namespace horalo
