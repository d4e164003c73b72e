#pragma once

#include <QAccessible>
#include <QString>
#include <QStringList>

class QWidget;

namespace horalo {

// What a widget of ours is to a screen reader. A widget that inherits this beside QWidget need not
// write an accessible interface of its own.
class AccessibleNode {
 public:
  AccessibleNode();
  virtual ~AccessibleNode() = default;
  AccessibleNode(const AccessibleNode&) = delete;
  AccessibleNode& operator=(const AccessibleNode&) = delete;

  virtual QAccessible::Role accessibleRole() const = 0;
  // Empty: the widget's accessible name, if it was given one.
  virtual QString accessibleText() const { return {}; }
  // Sets what holds beyond focus and visibility.
  virtual void amendAccessibleState(QAccessible::State& state) const { (void)state; }
  // Names as QAccessibleActionInterface has them.
  virtual QStringList accessibleActions() const { return {}; }
  virtual void doAccessibleAction(const QString& name) { (void)name; }
};

// Tells screen readers, where there are any, that a widget's name is another one now.
void announceName(QWidget* widget);
// The same for `state`, whose set bits are those that changed.
void announceState(QWidget* widget, QAccessible::State changed);

}  // namespace horalo
