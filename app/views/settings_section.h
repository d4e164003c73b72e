#pragma once

#include <QWidget>

class QVBoxLayout;

namespace horalo {

class FormLabel;
class SettingsRow;

// A group of rows on a rounded background, with a header above and a footer below where it has
// them.
class SettingsSection : public QWidget {
  Q_OBJECT
 public:
  explicit SettingsSection(const QString& header = {}, QWidget* parent = nullptr);

  void addRow(SettingsRow* row);
  // An empty footer takes no room.
  void setFooter(const QString& text);

 private:
  QVBoxLayout* rows_;
  FormLabel* footer_;
};

}  // namespace horalo
