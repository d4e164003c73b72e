#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "base/geometry.h"

class QMouseEvent;
class QRegion;
class QWidget;

namespace horalo {

// What a window is to the desktop.
enum class WindowRole {
  panel,   // floats above ordinary windows on every workspace, takes the keyboard, no task bar
  toast,   // floats above everything, never takes the keyboard, no task bar
  guides,  // like a toast, and the pointer goes through it
  window   // an ordinary window: settings, alerts
};

struct ScreenFrames {
  Rect frame;         // the whole screen
  Rect visibleFrame;  // less the desktop's panels
};

// What the program asks of the desktop's window system beyond what the widget library offers.
// Coordinates have their origin at the bottom left of the primary screen (base/geometry.h).
class WindowBackend {
 public:
  virtual ~WindowBackend() = default;

  // Sets the flags and attributes of a top-level widget; once, before it is first shown.
  virtual void configure(QWidget& window, WindowRole role) = 0;

  // Puts the window's lower left corner at `origin`; before or after it is shown.
  virtual void setFrameOrigin(QWidget& window, Point origin) = 0;
  virtual Rect frame(const QWidget& window) const = 0;

  // Shows the window in front. `panel` and `window` roles get the keyboard, whatever the desktop's
  // focus-stealing prevention; `eventTime` is the time stamp of the key press that asked for it,
  // 0 where there was none.
  virtual void orderFront(QWidget& window, std::uint32_t eventTime) = 0;

  // The screen with the pointer; nothing where there is no screen.
  virtual std::optional<ScreenFrames> mainScreen() const = 0;
  // The screen that shows most of a window; the main one where none does.
  virtual std::optional<ScreenFrames> screenOf(const QWidget& window) const = 0;
  // Where the pointer was when a mouse event happened, which on a busy machine is not where it is
  // when the event is dealt with.
  virtual Point pointerLocation(const QMouseEvent& event) const = 0;

  // Whether transparent pixels show what lies behind, and whether that can be blurred.
  virtual bool isComposited() const = 0;
  virtual bool canBlur() const = 0;
  // Calls `changed`, for as long as the backend lives, whenever either may have changed.
  virtual void onCompositingChanged(std::function<void()> changed) = 0;

  // Cuts the window to a region of its physical pixels, which is its hit area too; an empty one
  // gives it back its rectangle.
  virtual void setShape(QWidget& window, const QRegion& pixels) = 0;

  // Asks for a blur behind a window with corners of `radius`; nothing happens where there is none.
  virtual void setBlurBehind(QWidget& window, double radius) = 0;
};

}  // namespace horalo
