#include "hotkey/shortcut_recorder.h"

#include <optional>

#include "hotkey/key.h"

namespace horalo {
namespace {

// Shift alone is not enough: the shortcut would take a letter from everything that is typed.
constexpr ModifierFlags kRequired =
    ModifierFlags::control | ModifierFlags::option | ModifierFlags::command;

}  // namespace

void ShortcutRecorder::click() {
  if (isRecording_) {
    endRecording();
    return;
  }
  isRecording_ = true;
  surface_.redraw();
  if (onRecordingChange) onRecordingChange(true);
  if (isRecording_) surface_.takeKeyboard();
}

bool ShortcutRecorder::keyDown(std::uint32_t keyCode, ModifierFlags modifiers) {
  if (!isRecording_) return false;
  const std::optional<Key> key = Key::fromCarbonKeyCode(keyCode);
  if (key == Key(Key::escape)) {
    endRecording();
  } else if (!modifiers.containsAny(kRequired)) {
    surface_.beep();
  } else if (!key || !key->isModifier()) {
    configuration_ = {keyCode, (modifiers & ModifierFlags::shortcut).rawValue};
    surface_.redraw();
    if (onConfigurationChange) onConfigurationChange(configuration_);
    endRecording();
  }
  return true;
}

void ShortcutRecorder::flagsChanged() {
  if (isRecording_) surface_.redraw();
}

void ShortcutRecorder::setHovered(bool hovered) {
  isHovered_ = hovered;
  surface_.redraw();
}

void ShortcutRecorder::setConfiguration(const HotkeyConfiguration& configuration) {
  configuration_ = configuration;
  surface_.redraw();
}

std::string ShortcutRecorder::text() const {
  return isRecording_ ? "Type shortcut..." : configuration_.displayString();
}

// Whoever is called may end the recording again, by taking the keyboard away for example: the
// state changes first, so that nobody is told twice.
void ShortcutRecorder::endRecording() {
  if (!isRecording_) return;
  isRecording_ = false;
  surface_.redraw();
  if (onRecordingChange) onRecordingChange(false);
  surface_.releaseKeyboard();
}

}  // namespace horalo
