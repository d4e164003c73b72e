#pragma once

#include <QWidget>
#include <functional>

#include "hotkey/shortcut_recorder.h"
#include "hotkey/views/command_key.h"
#include "ui/accessible_node.h"

namespace horalo {

// The field that shows the shortcut and records a new one: a click, Space or Return starts, and
// then the next combination counts, also one that another program holds. Losing the keyboard or the
// window ends the recording without a change.
class KeyRecorderView : public QWidget, public AccessibleNode, private ShortcutRecorderSurface {
  Q_OBJECT
 public:
  KeyRecorderView(const HotkeyConfiguration& configuration, KeyCodeOf keyCodeOf,
                  QWidget* parent = nullptr);
  ~KeyRecorderView() override;

  std::function<void(const HotkeyConfiguration&)> onConfigurationChange;
  std::function<void(bool isRecording)> onRecordingChange;

  // Shows another shortcut, without calling anybody.
  void setConfiguration(const HotkeyConfiguration& configuration);
  // Ends recording, if it is under way, without a change.
  void endRecording();

  QSize sizeHint() const override;  // 120 x 24, growing with the desktop's factor for texts

  QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
  QStringList accessibleActions() const override;
  void doAccessibleAction(const QString& name) override;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void redraw() override;
  void beep() override;
  void takeKeyboard() override;
  void releaseKeyboard() override;

  void recordKey(const QKeyEvent& event);

  KeyCodeOf keyCodeOf_;
  ShortcutRecorder recorder_;
  bool hadKeyboard_ = false;  // before recording: reached by Tab, which goes on from here
};

}  // namespace horalo
