#include "preferences/notification_center.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace horalo {
namespace {

using testing::ElementsAre;

TEST(NotificationCenter, namesAreThoseThatObserversKnow) {
  EXPECT_EQ(notification::hotkeyConfigurationDidChange, "hotkeyConfigurationDidChange");
  EXPECT_EQ(notification::menuBarIconVisibilityDidChange, "menuBarIconVisibilityDidChange");
  EXPECT_EQ(notification::updateCheckIntervalDidChange, "updateCheckIntervalDidChange");
  EXPECT_EQ(notification::clipboardMonitorSettingDidChange, "clipboardMonitorSettingDidChange");
  EXPECT_EQ(notification::appDidCopyToClipboard, "appDidCopyToClipboard");
}

TEST(NotificationCenter, deliversAtOnceAndInOrderToThoseWhoObserveTheName) {
  NotificationCenter center;
  std::vector<std::string> heard;
  center.observe(notification::appDidCopyToClipboard, [&](const std::any& object) {
    heard.push_back(object.has_value() ? "?" : "first");
  });
  center.observe(notification::appDidCopyToClipboard,
                 [&](const std::any&) { heard.push_back("second"); });
  center.observe(notification::hotkeyConfigurationDidChange, [&](const std::any& object) {
    heard.push_back(std::to_string(std::any_cast<int>(object)));
  });
  center.post(notification::appDidCopyToClipboard);
  EXPECT_THAT(heard, ElementsAre("first", "second"));
  center.post(notification::hotkeyConfigurationDidChange, 7);
  EXPECT_THAT(heard, ElementsAre("first", "second", "7"));
  center.post(notification::menuBarIconVisibilityDidChange);
  EXPECT_EQ(heard.size(), 3U) << "nobody observes it";
}

TEST(NotificationCenter, anObserverMayPostAndObserve) {
  NotificationCenter center;
  std::vector<std::string> heard;
  center.observe("outer", [&](const std::any&) {
    heard.push_back("outer");
    center.observe("outer", [&](const std::any&) { heard.push_back("late"); });
    center.post("inner");
  });
  center.observe("inner", [&](const std::any&) { heard.push_back("inner"); });
  center.post("outer");
  EXPECT_THAT(heard, ElementsAre("outer", "inner"));
}

}  // namespace
}  // namespace horalo
