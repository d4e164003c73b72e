#pragma once

#include <QAbstractButton>
#include <functional>

#include "base/clock.h"
#include "engine/current_zone.h"
#include "engine/time_zone.h"
#include "ui/accessible_node.h"

namespace horalo {

// The zone in which results are shown, and on a press the menu to choose another: the user's own,
// then the common ones.
class TimezonePickerView : public QAbstractButton, public AccessibleNode {
  Q_OBJECT
 public:
  using OnChange = std::function<void(const TimeZone& chosen)>;

  // `clock` says at which moment abbreviations hold and `zones` which zone is the user's own; both
  // must outlive the view. `onChange` is called at every choice, also of the same zone again.
  TimezonePickerView(const Clock& clock, const ZoneSource& zones, OnChange onChange,
                     QWidget* parent = nullptr);

  void render(const TimeZone& selected);

  QSize sizeHint() const override;

  QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
  QString accessibleText() const override { return text(); }
  void amendAccessibleState(QAccessible::State& state) const override;
  QStringList accessibleActions() const override;
  void doAccessibleAction(const QString& name) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void showMenu();

  const Clock& clock_;
  const ZoneSource& zones_;
  OnChange onChange_;
};

}  // namespace horalo
