#pragma once

#include <filesystem>

namespace horalo {

// The desktop's list of programs that start with the session, as far as it concerns this program:
// a desktop entry in the user's autostart folder (freedesktop.org, Desktop Application Autostart
// 0.5).
class LoginItem {
 public:
  // $XDG_CONFIG_HOME/autostart/org.horalo.Horalo.desktop; empty where the user has no home.
  static std::filesystem::path defaultPath();

  // `program` is what the entry starts, as an absolute path.
  LoginItem(std::filesystem::path entry, std::filesystem::path program);

  // Writes or removes the entry. What cannot be done is left undone, silently.
  void setEnabled(bool enabled) const;

  // Whether there is an entry that the desktop will start.
  bool isEnabled() const;

  // Points an existing entry to this program again, if the program has moved.
  void repair() const;

 private:
  std::filesystem::path entry_;
  std::filesystem::path program_;
};

}  // namespace horalo
