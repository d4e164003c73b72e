#pragma once

#include <any>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace horalo {

// The in-process notifications by which one part of the program announces a change that another
// must act on at once.
namespace notification {
// Carries the new HotkeyConfiguration.
inline constexpr std::string_view hotkeyConfigurationDidChange = "hotkeyConfigurationDidChange";
inline constexpr std::string_view menuBarIconVisibilityDidChange = "menuBarIconVisibilityDidChange";
inline constexpr std::string_view updateCheckIntervalDidChange = "updateCheckIntervalDidChange";
inline constexpr std::string_view clipboardMonitorSettingDidChange =
    "clipboardMonitorSettingDidChange";
// Posted immediately before the program writes to the clipboard.
inline constexpr std::string_view appDidCopyToClipboard = "appDidCopyToClipboard";
}  // namespace notification

// Delivers notifications at once, in the order in which observers were added. Observers stay for
// the life of the centre, so what they capture must outlive it or be held weakly.
class NotificationCenter {
 public:
  using Observer = std::function<void(const std::any& object)>;

  void observe(std::string_view name, Observer observer);
  // `object` is empty where the notification carries none.
  void post(std::string_view name, const std::any& object = {});

 private:
  std::map<std::string, std::vector<Observer>, std::less<>> observers_;
};

}  // namespace horalo
