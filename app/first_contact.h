#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/timers.h"
#include "hotkey/hotkey_configuration.h"

namespace horalo {

// What a person can do to open the converter, as far as the program knows by now.
struct WaysIn {
  bool shortcutWorks = false;
  bool iconIsVisible = false;
};

// "Shift+Super+E" for ⇧⌘E: how keyboards here are labelled.
std::string spelledShortcut(const HotkeyConfiguration& configuration);

// One sentence that says how to open the converter.
std::string howToOpen(const WaysIn& ways, const HotkeyConfiguration& configuration);

// Tells the person who started the program what to do next, since it shows no window: one line on a
// terminal, and in a log where there is nothing to be seen; and a notice of the desktop where there
// is nothing to be seen and nothing to be pressed, or, at the very first start, nothing to be seen.
class FirstContact {
 public:
  struct Environment {
    Timers& timers;
    std::function<WaysIn()> waysIn;
    std::function<HotkeyConfiguration()> shortcut;
    bool isTerminal = false;  // whether a person reads what is said
    std::function<void(const std::string& line)> say;
    std::function<void(const std::string& title, const std::string& text)> notify;
    std::filesystem::path marker;  // a file that is there after the first start
  };

  explicit FirstContact(Environment environment);

  // To be called once, when the shortcut was asked for. An icon may take a moment to appear.
  void begin();

 private:
  void iconShouldBeThere();
  void say();

  Environment environment_;
  std::unique_ptr<Timer> patience_;
  bool isFirstStart_ = false;
  bool hasSpoken_ = false;
};

}  // namespace horalo
