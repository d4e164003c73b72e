#pragma once

#include <QWidget>

#include "ui/focus_ring.h"

namespace horalo {

// One setting: its title with a description under it, and a control on the right. The row is the
// parent of all three; the title names a picker to screen readers.
class SettingsRow : public QWidget {
  Q_OBJECT
 public:
  // Room to the right of what is drawn, in which the ring of a control with the keyboard lies.
  static constexpr int kRingRoom = kFocusRingMargin;

  // `ringRoom`: what the control itself leaves of that, as most do.
  SettingsRow(const QString& title, const QString& description, QWidget* control,
              int ringRoom = kRingRoom, QWidget* parent = nullptr);
};

}  // namespace horalo
