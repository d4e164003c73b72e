#include <gtest/gtest.h>

#include <string>

#include "hotkey/hotkey_configuration.h"
#include "preferences/preferences.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

class HotkeyConfigurationStoreTest : public testing::Test {
 protected:
  ManualTimers timers_;
  PreferencesStore store_{{}, timers_};  // in memory
  Preferences preferences_{store_};
};

TEST_F(HotkeyConfigurationStoreTest, nothingStoredIsTheDefault) {
  EXPECT_EQ(HotkeyConfiguration::load(preferences_), HotkeyConfiguration{});
}

TEST_F(HotkeyConfigurationStoreTest, whatIsSavedIsLoaded) {
  const HotkeyConfiguration configuration{40, 0x1E0000};
  configuration.save(preferences_);
  EXPECT_EQ(preferences_.hotkeyConfiguration(), R"({"keyCode":40,"modifiers":1966080})");
  EXPECT_EQ(HotkeyConfiguration::load(preferences_), configuration);
}

TEST_F(HotkeyConfigurationStoreTest, whatCannotBeReadIsTheDefaultAndOverwritten) {
  int broken = 0;
  for (const std::string bytes :
       {"", "{", "{}", R"({"keyCode":14})", R"({"keyCode":40,"modifiers":-1})",
        R"({"keyCode":4294967296,"modifiers":0})", "\xFF\xFE"}) {
    preferences_.setHotkeyConfiguration(bytes);
    EXPECT_EQ(HotkeyConfiguration::load(preferences_), HotkeyConfiguration{}) << bytes;
    const HotkeyConfiguration recorded{40, 0x100000};
    recorded.save(preferences_);
    EXPECT_EQ(HotkeyConfiguration::load(preferences_), recorded);
    ++broken;
  }
  EXPECT_EQ(broken, 7);
}

TEST_F(HotkeyConfigurationStoreTest, aValueOfAnotherTypeIsTheDefault) {
  for (const plist::Value& value : {plist::Value(true), plist::Value(14.0),
                                    plist::Value(std::string(R"({"keyCode":40,"modifiers":0})"))}) {
    store_.set({{"hotkeyConfiguration", value}});
    EXPECT_EQ(HotkeyConfiguration::load(preferences_), HotkeyConfiguration{});
  }
}

}  // namespace
}  // namespace horalo
