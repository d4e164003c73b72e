#include "app/commands.h"

#include <memory>

#include "app/app_delegate.h"

namespace horalo {
namespace {

// A panel that something covers, a screen locker for example, is never seen.
constexpr double kPatience = 0.5;  // seconds

}  // namespace

bool Commands::run(const std::string& command, const Done& done) {
  if (command == "show") {
    show(done);
    return true;
  }
  if (command == "toggle") {
    delegate_.togglePanel();
  } else if (command == "hide") {
    delegate_.closePanel();
  } else if (command == "settings") {
    delegate_.openSettings();
  } else if (command == "check-updates") {
    delegate_.checkForUpdates();
  } else if (command == "quit") {
    delegate_.quit();
  } else if (command == "status") {
    done(asText(delegate_.status()));
    return true;
  } else if (command == "status --json") {
    done(asJson(delegate_.status()) + '\n');
    return true;
  } else {
    return false;
  }
  done("");
  return true;
}

void Commands::show(const Done& done) {
  delegate_.showPanel();
  const auto once = std::make_shared<Done>(done);
  const auto answer = [once] {
    if (const Done pending = std::exchange(*once, nullptr)) pending("");
  };
  delegate_.whenPanelIsOnScreen(answer);
  timers_.after(kPatience, answer);
}

}  // namespace horalo
