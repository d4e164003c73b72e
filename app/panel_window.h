#pragma once

#include <cstdint>
#include <functional>

namespace horalo {

// What the program does with the converter's panel as a whole.
class PanelWindow {
 public:
  virtual ~PanelWindow() = default;

  virtual bool isVisible() const = 0;
  // Loads what the first show will need, while nobody waits for it.
  virtual void prepare() = 0;
  // Puts the panel in its place, in front, with the keyboard. `eventTime` as in WindowBackend.
  virtual void show(std::uint32_t eventTime) = 0;
  // Hides it, and runs what was set with onClose.
  virtual void close() = 0;
  // Called after every closing, whatever closed the panel; maybe twice for one.
  virtual void onClose(std::function<void()> closed) = 0;
  // Selects the whole text of the field that has the keyboard.
  virtual void selectAll() = 0;
  // Calls `shown` once when the panel can be seen on the screen, at once where it can now.
  virtual void whenOnScreen(std::function<void()> shown) = 0;
};

}  // namespace horalo
