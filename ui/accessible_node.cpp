#include "ui/accessible_node.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace horalo {
namespace {

class NodeInterface final : public QAccessibleWidget {
 public:
  NodeInterface(QWidget* widget, AccessibleNode& node)
      : QAccessibleWidget(widget, node.accessibleRole()), node_(node) {}

  QString text(QAccessible::Text kind) const override {
    const QString own = kind == QAccessible::Name ? node_.accessibleText() : QString();
    return own.isEmpty() ? QAccessibleWidget::text(kind) : own;
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    node_.amendAccessibleState(state);
    return state;
  }

  QStringList actionNames() const override {
    return node_.accessibleActions() + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    if (node_.accessibleActions().contains(name)) {
      node_.doAccessibleAction(name);
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  AccessibleNode& node_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  Q_UNUSED(className);
  auto* node = dynamic_cast<AccessibleNode*>(object);
  if (node == nullptr) return nullptr;
  return new NodeInterface(static_cast<QWidget*>(object), *node);
}

}  // namespace

AccessibleNode::AccessibleNode() {
  static const bool installed = (QAccessible::installFactory(makeInterface), true);
  Q_UNUSED(installed);
}

void announceName(QWidget* widget) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(widget, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&event);
}

void announceState(QWidget* widget, QAccessible::State changed) {
  if (!QAccessible::isActive()) return;
  QAccessibleStateChangeEvent event(widget, changed);
  QAccessible::updateAccessibility(&event);
}

}  // namespace horalo
