#pragma once

#include <QScrollArea>
#include <functional>
#include <memory>
#include <vector>

#include "app/login_item.h"
#include "hotkey/views/key_recorder_view.h"
#include "preferences/notification_center.h"
#include "preferences/preferences.h"

namespace horalo {

class SettingsRow;
class SettingsSection;

// What the settings act on. All must outlive the view.
struct SettingsEnvironment {
  Preferences& preferences;
  NotificationCenter& notifications;
  const LoginItem& loginItem;
  // Called when the recording of a shortcut starts and ends: meanwhile the shortcut in use must
  // reach the recorder.
  std::function<void(bool isRecording)> onRecordingChange;
  // See KeyRecorderView.
  KeyCodeOf keyCodeOf;
  // Makes something that calls back after the stored values have changed, for as long as it lives.
  std::function<std::shared_ptr<void>(std::function<void()> changed)> watch;
};

// The form with all preferences: each control shows the stored value, stores what it is changed to
// and announces it where somebody must act at once. Nothing is stored or announced on opening.
class GeneralSettingsView : public QScrollArea {
  Q_OBJECT
 public:
  explicit GeneralSettingsView(const SettingsEnvironment& environment, QWidget* parent = nullptr);

  // Shows what is stored now, whoever stored it.
  void refresh();

  // Ends the recording of a shortcut, if one is under way, without a change.
  void endRecording();

 private:
  // A choice of a picker: what it says, and what is stored for it.
  struct Choice {
    QString label;
    double seconds;
  };

  SettingsSection* addSection(const QString& header = {});
  SettingsRow* makeSwitchRow(const QString& title, const QString& description,
                             std::function<bool()> stored, std::function<void(bool)> changed);
  SettingsRow* makeToastPositionRow();
  SettingsRow* makeIntervalRow(const QString& title, const QString& description,
                               const std::vector<Choice>& choices, std::function<double()> stored,
                               std::function<void(double)> changed);
  SettingsRow* makeShortcutRow();
  void showHiddenIconHint();
  void scrollToFocus(QWidget* now);

  SettingsEnvironment environment_;
  QWidget* form_;
  SettingsSection* appSection_ = nullptr;
  KeyRecorderView* recorder_ = nullptr;
  std::vector<std::function<void()>> refreshers_;
};

}  // namespace horalo
