#include "base/user_folders.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace horalo {
namespace {

class UserFolders : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) unsetenv(name);
  }
};

TEST_F(UserFolders, areThoseOfTheEnvironment) {
  setenv("HOME", "/h", 1);
  setenv("XDG_CONFIG_HOME", "/x/config", 1);
  setenv("XDG_STATE_HOME", "/x/state", 1);
  EXPECT_EQ(userConfigFolder(), "/x/config");
  EXPECT_EQ(userStateFolder(), "/x/state");
}

TEST_F(UserFolders, areElseInTheHome) {
  setenv("HOME", "/h", 1);
  for (const char* useless : {"", "relative/path", "~/config"}) {
    setenv("XDG_CONFIG_HOME", useless, 1);
    setenv("XDG_STATE_HOME", useless, 1);
    EXPECT_EQ(userConfigFolder(), "/h/.config");
    EXPECT_EQ(userStateFolder(), "/h/.local/state");
  }
}

TEST_F(UserFolders, withoutHomeAreThoseOfTheUserDatabase) {
  const passwd* const user = getpwuid(getuid());
  ASSERT_NE(user, nullptr);
  const std::string home = user->pw_dir;
  ASSERT_EQ(home.front(), '/');
  EXPECT_EQ(userConfigFolder(), home + "/.config");
  setenv("HOME", "relative", 1);
  EXPECT_EQ(userConfigFolder(), home + "/.config");
}

}  // namespace
}  // namespace horalo
