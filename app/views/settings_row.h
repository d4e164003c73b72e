#pragma once

#include <QWidget>

class QComboBox;

namespace horalo {

// One setting: its title with a description under it, and a control on the right. The row is the
// parent of all three; the title names a picker to screen readers.
class SettingsRow : public QWidget {
  Q_OBJECT
 public:
  SettingsRow(const QString& title, const QString& description, QWidget* control,
              QWidget* parent = nullptr);
};

}  // namespace horalo
