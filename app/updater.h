#pragma once

#include <string>

namespace horalo {

// Keeps the program up to date. There is one only where the program runs from an application
// bundle, a folder whose name ends in ".app"; elsewhere nothing of it is loaded or wakes up.
class Updater {
 public:
  virtual ~Updater() = default;

  // Off at first. Automatic checks are silent unless there is something new.
  virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;

  // Seconds between automatic checks, kept between an hour and ten years; less, and what is not a
  // number, means an hour.
  virtual void setUpdateCheckInterval(double seconds) = 0;

  // A check that the user asked for: it always ends in a window.
  virtual void checkForUpdates() = 0;

  // Why this copy can never be updated; empty where nothing speaks against it. There are no
  // automatic checks then.
  virtual std::string obstacle() const = 0;
};

}  // namespace horalo
