#pragma once

#include <QAbstractButton>

#include "ui/accessible_node.h"
#include "ui/symbols.h"

namespace horalo {

// A button that is a symbol and nothing else; darker while the pointer is over it.
class SymbolButton : public QAbstractButton, public AccessibleNode {
  Q_OBJECT
 public:
  // `size` of the symbol in device-independent pixels, before the desktop's factor for texts;
  // `name` is for screen readers.
  SymbolButton(Symbol symbol, double size, const QString& name, QWidget* parent = nullptr);

  QSize sizeHint() const override;

  QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
  QStringList accessibleActions() const override;
  void doAccessibleAction(const QString& name) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  Symbol symbol_;
  double size_;
};

}  // namespace horalo
