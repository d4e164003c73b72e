#include "app/first_contact.h"

#include <fstream>
#include <utility>

namespace horalo {
namespace {

constexpr double kIconPatience = 2.0;  // seconds

bool makeMarker(const std::filesystem::path& marker) {
  std::error_code failed;
  if (marker.empty() || std::filesystem::exists(marker, failed)) return false;
  std::filesystem::create_directories(marker.parent_path(), failed);
  return std::ofstream(marker).is_open();
}

}  // namespace

std::string spelledShortcut(const HotkeyConfiguration& configuration) {
  const ModifierFlags modifiers{configuration.modifiers};
  std::string text;
  const auto add = [&](ModifierFlags flag, const char* name) {
    if (modifiers.contains(flag)) text.append(name).append("+");
  };
  add(ModifierFlags::control, "Ctrl");
  add(ModifierFlags::option, "Alt");
  add(ModifierFlags::shift, "Shift");
  add(ModifierFlags::command, "Super");
  return text.append(keyCodeToString(configuration.keyCode).value_or("?"));
}

std::string howToOpen(const WaysIn& ways, const HotkeyConfiguration& configuration) {
  if (ways.shortcutWorks) {
    return "Press " + configuration.displayString() + " (" + spelledShortcut(configuration) +
           ") to open the converter.";
  }
  const std::string regret =
      "The shortcut " + configuration.displayString() + " is not available here. ";
  if (ways.iconIsVisible) return regret + "Click the icon in the tray to open the converter.";
  return regret + "Start Horalo again to open the converter, or bind a key to \"horalo toggle\".";
}

FirstContact::FirstContact(Environment environment) : environment_(std::move(environment)) {}

void FirstContact::begin() {
  isFirstStart_ = makeMarker(environment_.marker);
  if (environment_.isTerminal && environment_.waysIn().shortcutWorks) {
    say();
    if (!isFirstStart_) return;
  }
  patience_ = environment_.timers.make();
  patience_->startOnce(kIconPatience, [this] { iconShouldBeThere(); });
}

void FirstContact::iconShouldBeThere() {
  const WaysIn ways = environment_.waysIn();
  if (!hasSpoken_ && (environment_.isTerminal || !ways.iconIsVisible)) say();
  if (ways.iconIsVisible || (ways.shortcutWorks && !isFirstStart_)) return;
  environment_.notify("Horalo is running", howToOpen(ways, environment_.shortcut()));
}

void FirstContact::say() {
  hasSpoken_ = true;
  const std::string sentence = howToOpen(environment_.waysIn(), environment_.shortcut());
  environment_.say("Horalo is running. " + sentence);
}

}  // namespace horalo
