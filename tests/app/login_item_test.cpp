#include "app/login_item.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

class LoginItemTest : public testing::Test {
 protected:
  static std::string read(const fs::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  TemporaryFolder folder_;
  fs::path entry_ =
      folder_.path(QStringLiteral("config/autostart/org.horalo.Horalo.desktop")).toStdString();
};

TEST_F(LoginItemTest, WritesAnEntryThatStartsInTheBackground) {
  const LoginItem item(entry_, "/opt/horalo/bin/horalo");
  EXPECT_FALSE(item.isEnabled());
  item.setEnabled(true);
  EXPECT_TRUE(item.isEnabled());
  const std::string text = read(entry_);
  EXPECT_EQ(text.rfind("[Desktop Entry]\n", 0), 0U);
  EXPECT_NE(text.find("\nType=Application\n"), std::string::npos);
  EXPECT_NE(text.find("\nExec=\"/opt/horalo/bin/horalo\" --background\n"), std::string::npos);
}

TEST_F(LoginItemTest, RemovesTheEntry) {
  const LoginItem item(entry_, "/usr/bin/horalo");
  item.setEnabled(true);
  item.setEnabled(false);
  EXPECT_FALSE(item.isEnabled());
  EXPECT_FALSE(fs::exists(entry_));
  item.setEnabled(false);
  EXPECT_FALSE(fs::exists(entry_));
}

TEST_F(LoginItemTest, QuotesWhatTheExecKeyWouldTakeForSomethingElse) {
  const LoginItem item(entry_, "/home/me/My $1 \"best\" 100%/horalo");
  item.setEnabled(true);
  EXPECT_NE(read(entry_).find(R"(Exec="/home/me/My \\$1 \\"best\\" 100%%/horalo" --background)"),
            std::string::npos)
      << read(entry_);
}

TEST_F(LoginItemTest, AnEntryThatTheUserHidIsNotEnabled) {
  const LoginItem item(entry_, "/usr/bin/horalo");
  item.setEnabled(true);
  std::ofstream(entry_, std::ios::app) << "Hidden=true\n";
  EXPECT_FALSE(item.isEnabled());
  item.repair();
  EXPECT_FALSE(item.isEnabled());
}

TEST_F(LoginItemTest, FollowsAProgramThatMoved) {
  LoginItem(entry_, "/old/horalo").setEnabled(true);
  LoginItem(entry_, "/new/horalo").repair();
  EXPECT_NE(read(entry_).find("Exec=\"/new/horalo\""), std::string::npos);
  EXPECT_EQ(read(entry_).find("/old/"), std::string::npos);
}

TEST_F(LoginItemTest, LeavesTheRestOfAnEntryThatItRepairs) {
  LoginItem(entry_, "/old/horalo").setEnabled(true);
  std::ofstream(entry_, std::ios::app) << "X-GNOME-Autostart-enabled=false\n";
  LoginItem(entry_, "/new/horalo").repair();
  const std::string text = read(entry_);
  EXPECT_NE(text.find("\nExec=\"/new/horalo\" --background\nIcon="), std::string::npos) << text;
  EXPECT_NE(text.find("\nX-GNOME-Autostart-enabled=false\n"), std::string::npos);
}

TEST_F(LoginItemTest, WritesAnEntryWithoutACommandAnew) {
  fs::create_directories(entry_.parent_path());
  std::ofstream(entry_) << "[Desktop Entry]\nType=Application\n";
  LoginItem(entry_, "/new/horalo").repair();
  EXPECT_NE(read(entry_).find("\nExec=\"/new/horalo\" --background\n"), std::string::npos);
}

TEST_F(LoginItemTest, RepairMakesNoEntry) {
  LoginItem(entry_, "/new/horalo").repair();
  EXPECT_FALSE(fs::exists(entry_));
}

TEST_F(LoginItemTest, LeavesAnUnchangedEntryAlone) {
  const LoginItem item(entry_, "/usr/bin/horalo");
  item.setEnabled(true);
  const auto written = fs::last_write_time(entry_);
  std::ofstream(entry_, std::ios::app) << "X-Note=kept\n";
  item.repair();
  EXPECT_NE(read(entry_).find("X-Note=kept"), std::string::npos);
  EXPECT_GE(fs::last_write_time(entry_), written);
}

TEST_F(LoginItemTest, ASettingThatCannotBeWrittenIsSilent) {
  const LoginItem item("/proc/autostart/org.horalo.Horalo.desktop", "/usr/bin/horalo");
  item.setEnabled(true);
  EXPECT_FALSE(item.isEnabled());
  const LoginItem homeless("", "/usr/bin/horalo");
  homeless.setEnabled(true);
  EXPECT_FALSE(homeless.isEnabled());
}

}  // namespace
}  // namespace horalo
