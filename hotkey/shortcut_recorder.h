#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "hotkey/hotkey_configuration.h"

namespace horalo {

// What the recorder asks of the view that shows it.
class ShortcutRecorderSurface {
 public:
  virtual ~ShortcutRecorderSurface() = default;
  virtual void redraw() = 0;
  virtual void beep() = 0;
  // To become the one that key events go to, and to be it no longer.
  virtual void takeKeyboard() = 0;
  virtual void releaseKeyboard() = 0;
};

// Records a new shortcut: a click starts, a combination with Control, Option or Command completes,
// Escape or another click leaves everything as it was.
//
//   idle --click()--> recording --click(), Escape, endRecording()--> idle
//                     recording --combination------------------------> idle, with a new
//                     configuration
class ShortcutRecorder {
 public:
  // `surface` must outlive this object.
  ShortcutRecorder(ShortcutRecorderSurface& surface, const HotkeyConfiguration& configuration)
      : surface_(surface), configuration_(configuration) {}

  // Called with each shortcut that was recorded, while still recording.
  std::function<void(const HotkeyConfiguration&)> onConfigurationChange;
  // Called once when recording starts and once when it ends, however it ends.
  std::function<void(bool isRecording)> onRecordingChange;

  void click();

  // A key that is no modifier was pressed, with the modifiers that were down. False where it was
  // none of the recorder's business: it is not recording.
  bool keyDown(std::uint32_t keyCode, ModifierFlags modifiers);
  // A modifier went down or up.
  void flagsChanged();
  void setHovered(bool hovered);

  // Ends recording without a change, when the keyboard went elsewhere. Harmless while idle.
  void endRecording();

  // Shows another shortcut, without calling anybody but the surface.
  void setConfiguration(const HotkeyConfiguration& configuration);

  const HotkeyConfiguration& configuration() const { return configuration_; }
  bool isRecording() const { return isRecording_; }
  bool isHovered() const { return isHovered_; }
  // The text to show (UTF-8).
  std::string text() const;

 private:
  ShortcutRecorderSurface& surface_;
  HotkeyConfiguration configuration_;
  bool isRecording_ = false;
  bool isHovered_ = false;
};

}  // namespace horalo
