#pragma once

#include <QWidget>
#include <memory>

#include "app/views/general_settings_view.h"

namespace horalo {

// What the settings window holds: the one tab, its form, and the version below.
class SettingsView : public QWidget {
  Q_OBJECT
 public:
  static constexpr QSize kSize{450, 440};

  // `version` is that of the product, "1.3.0".
  SettingsView(const SettingsEnvironment& environment, const QString& version,
               QWidget* parent = nullptr);

  GeneralSettingsView& general() { return *general_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  SettingsEnvironment environment_;
  GeneralSettingsView* general_;
  std::shared_ptr<void> watch_;  // while the window is open
};

}  // namespace horalo
