#pragma once

#include <QWidget>

#include "ui/accessible_node.h"
#include "ui/symbols.h"

namespace horalo {

// The tab of a settings page, with its symbol above its title. The only one, and so always chosen.
class SettingsTab : public QWidget, public AccessibleNode {
  Q_OBJECT
 public:
  SettingsTab(Symbol symbol, const QString& title, QWidget* parent = nullptr);

  QSize sizeHint() const override;

  QAccessible::Role accessibleRole() const override { return QAccessible::PageTab; }
  QString accessibleText() const override { return title_; }
  void amendAccessibleState(QAccessible::State& state) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Symbol symbol_;
  QString title_;
};

}  // namespace horalo
