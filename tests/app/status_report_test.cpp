#include "app/status_report.h"

#include <gtest/gtest.h>

namespace horalo {
namespace {

StatusReport allWell() {
  StatusReport report;
  report.version = "1.3.0";
  report.session = "x11";
  report.hotkey = {"x11", true, ""};
  report.shortcut = "⇧⌘E";
  report.tray = {"statusnotifier", true, ""};
  report.clipboard = {"x11", ""};
  report.isWatching = true;
  report.panelIsVisible = false;
  report.updates = {true, ""};
  report.zone = "Asia/Tokyo";
  report.tzdata = "2024a";
  return report;
}

TEST(StatusReportTest, IsOneObjectOnOneLine) {
  EXPECT_EQ(asJson(allWell()),
            R"({"running":true,"version":"1.3.0","session":"x11",)"
            R"("hotkey":{"backend":"x11","shortcut":"⇧⌘E","active":true,"reason":""},)"
            R"("tray":{"backend":"statusnotifier","visible":true,"reason":""},)"
            R"("clipboard":{"backend":"x11","watching":true,"reason":""},)"
            R"("panel":{"visible":false},"updates":{"enabled":true,"reason":""},)"
            R"("timezone":{"id":"Asia/Tokyo","tzdata":"2024a"}})");
}

TEST(StatusReportTest, EscapesWhatAReasonHolds) {
  StatusReport report = allWell();
  report.hotkey = {"none", false, "bind \"horalo toggle\"\n"};
  EXPECT_NE(asJson(report).find(R"("reason":"bind \"horalo toggle\"\n"})"), std::string::npos);
}

TEST(StatusReportTest, TellsPeopleTheSame) {
  EXPECT_EQ(asText(allWell()),
            "Horalo 1.3.0 runs.\n"
            "Session     x11\n"
            "Shortcut    ⇧⌘E works (x11)\n"
            "Tray icon   shown (statusnotifier)\n"
            "Clipboard   watched (x11)\n"
            "Panel       closed\n"
            "Updates     automatic\n"
            "Time zone   Asia/Tokyo (time-zone files 2024a)\n");

  StatusReport report = allWell();
  report.hotkey = {"x11", false, "another program has this shortcut"};
  report.tray = {"none", false, "nothing on this desktop shows tray icons"};
  report.tzdata.clear();
  const std::string text = asText(report);
  EXPECT_NE(text.find("⇧⌘E does not work (x11): another program has this shortcut\n"),
            std::string::npos);
  EXPECT_NE(text.find("not shown (none): nothing on this desktop shows tray icons\n"),
            std::string::npos);
  EXPECT_NE(text.find("Time zone   Asia/Tokyo\n"), std::string::npos);
}

}  // namespace
}  // namespace horalo
