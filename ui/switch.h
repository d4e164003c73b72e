#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include "ui/accessible_node.h"

namespace horalo {

// A small switch with its label on the left: the label, a gap, then a track of 26 x 15 in which a
// knob slides. Its text is its accessible name too; without one it is the switch alone. All around
// there is room for the focus ring (kFocusRingMargin).
class Switch : public QAbstractButton, public AccessibleNode {
  Q_OBJECT
 public:
  explicit Switch(const QString& text = {}, QWidget* parent = nullptr);

  QSize sizeHint() const override;

  QAccessible::Role accessibleRole() const override { return QAccessible::CheckBox; }
  QString accessibleText() const override { return text(); }
  void amendAccessibleState(QAccessible::State& state) const override;
  QStringList accessibleActions() const override;
  void doAccessibleAction(const QString& name) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void moveKnob(bool checked);

  QVariantAnimation knob_;  // 0: off, 1: on
};

}  // namespace horalo
