#pragma once

#include <QWidget>
#include <limits>
#include <optional>

#include "app/views/selectable_line.h"
#include "ui/accessible_node.h"

namespace horalo {

// One of the panel's rows: its label, its value, and at the end the hint that Return copies it or
// the check mark that says it was copied. A click copies; dragging selects a part of the value.
class ResultRowView : public QWidget, public AccessibleNode {
  Q_OBJECT
 public:
  struct Content {
    QString label;
    QString value;
    bool isSecondary = false;  // drawn with less weight
    bool isSelected = false;   // highlighted
    bool isCopied = false;     // shows the check mark
    // Where the value's first character stands: Auto goes by the value's own script.
    Qt::LayoutDirection direction = Qt::LeftToRight;
    friend bool operator==(const Content&, const Content&) = default;
  };

  explicit ResultRowView(QWidget* parent = nullptr);

  void render(const Content& content);

  // The part of the value that was selected with the mouse; empty where there is none.
  QString selectedText() const { return value_.selectedText(); }
  void clearSelection();

  // The size in pixels at which the value fits, at most that of its style; and the most it may
  // have, so that the rows' values can be of one size.
  int fittingValueSize() const;
  void limitValueSize(int most);
  int valueSize() const { return valueFont().pixelSize(); }

  // The height of a row with its paddings as they should be, and the least that it can do with.
  static int preferredHeight();
  static int leastHeight();

  QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }
  QString accessibleText() const override;
  void amendAccessibleState(QAccessible::State& state) const override;
  QStringList accessibleActions() const override;
  void doAccessibleAction(const QString& name) override;

 Q_SIGNALS:
  // Clicked with the left button, without selecting.
  void clicked();
  // Pressed with it, so that a part of the value may come to be selected.
  void pressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void updateLook();
  void layOut();
  QFont valueFont() const;
  double valueLeft() const;
  double valueRoom() const;
  QRectF slotRect() const;
  void paintCopyHint(QPainter& painter) const;

  Content content_;
  QFont labelFont_;
  SelectableLine value_;
  int mostValueSize_ = std::numeric_limits<int>::max();

  // A press that is under way, and whether it has become a selection.
  std::optional<QPointF> pressedAt_;
  bool moved_ = false;
};

}  // namespace horalo
