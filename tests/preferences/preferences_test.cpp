#include "preferences/preferences.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "preferences/preferences_store.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

class PreferencesTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  ManualTimers timers_;
  PreferencesStore store_{folder_ / "p.plist", timers_};
  Preferences preferences_{store_};
};

TEST_F(PreferencesTest, aFreshInstallation) {
  EXPECT_FALSE(preferences_.launchAtLogin());
  EXPECT_TRUE(preferences_.showMenuBarIcon());
  EXPECT_TRUE(preferences_.closeWindowAfterCopy());
  EXPECT_FALSE(preferences_.autoPasteFromClipboard());
  EXPECT_FALSE(preferences_.clipboardMonitorEnabled());
  EXPECT_EQ(preferences_.toastPosition(), "bottomCenter");
  EXPECT_EQ(preferences_.autoClearDelay(), 60);
  EXPECT_EQ(preferences_.updateCheckInterval(), 0);
  EXPECT_EQ(preferences_.shownUpdateCheckInterval(), 86400);
  EXPECT_FALSE(preferences_.isUTC());
  EXPECT_EQ(preferences_.panelPosition(), std::nullopt);
  EXPECT_EQ(preferences_.hotkeyConfiguration(), std::nullopt);
  EXPECT_FALSE(exists(store_.file().path())) << "reading must not write";
}

TEST_F(PreferencesTest, eachValueIsStoredUnderItsKeyAndType) {
  preferences_.setLaunchAtLogin(true);
  preferences_.setShowMenuBarIcon(false);
  preferences_.setCloseWindowAfterCopy(false);
  preferences_.setAutoPasteFromClipboard(true);
  preferences_.setClipboardMonitorEnabled(true);
  preferences_.setToastPosition("topLeft");
  preferences_.setAutoClearDelay(-1);
  preferences_.setUpdateCheckInterval(2592000);
  preferences_.setIsUTC(true);
  preferences_.setPanelPosition({393.5, -20});
  preferences_.setHotkeyConfiguration("{\"keyCode\":14}");

  const plist::Dictionary expected{
      {"launchAtLogin", true},
      {"showMenuBarIcon", false},
      {"closeWindowAfterCopy", false},
      {"autoPasteFromClipboard", true},
      {"clipboardMonitorEnabled", true},
      {"toastPosition", "topLeft"},
      {"autoClearDelay", -1.0},
      {"updateCheckInterval", 2592000.0},
      {"isUTC", true},
      {"panelPositionX", 393.5},
      {"panelPositionY", -20.0},
      {"hotkeyConfiguration", plist::Data{"{\"keyCode\":14}"}},
  };
  EXPECT_EQ(expected.size(), 12U);
  EXPECT_EQ(PreferencesFile(store_.file().path()).read().values, expected);

  PreferencesStore other(store_.file().path(), timers_);
  const Preferences readAgain(other);
  EXPECT_TRUE(readAgain.launchAtLogin());
  EXPECT_FALSE(readAgain.showMenuBarIcon());
  EXPECT_FALSE(readAgain.closeWindowAfterCopy());
  EXPECT_TRUE(readAgain.autoPasteFromClipboard());
  EXPECT_TRUE(readAgain.clipboardMonitorEnabled());
  EXPECT_EQ(readAgain.toastPosition(), "topLeft");
  EXPECT_EQ(readAgain.autoClearDelay(), -1);
  EXPECT_EQ(readAgain.updateCheckInterval(), 2592000);
  EXPECT_EQ(readAgain.shownUpdateCheckInterval(), 2592000);
  EXPECT_TRUE(readAgain.isUTC());
  EXPECT_EQ(readAgain.panelPosition(), (Point{393.5, -20}));
  EXPECT_EQ(readAgain.hotkeyConfiguration(), "{\"keyCode\":14}");
}

// What a reader says, as text.
template <typename T>
std::string shown(const T& value) {
  std::ostringstream text;
  text << std::boolalpha << value;
  return text.str();
}

TEST_F(PreferencesTest, aValueOfAnotherTypeCountsAsAbsent) {
  struct Reader {
    const char* key;
    std::function<std::string()> read;
    const char* absent;
    const char* accepted;  // the types that count, of those below
  };
  const std::vector<Reader> readers{
      {"launchAtLogin", [&] { return shown(preferences_.launchAtLogin()); }, "false", "b"},
      {"showMenuBarIcon", [&] { return shown(preferences_.showMenuBarIcon()); }, "true", "b"},
      {"closeWindowAfterCopy", [&] { return shown(preferences_.closeWindowAfterCopy()); }, "true",
       "b"},
      {"autoPasteFromClipboard", [&] { return shown(preferences_.autoPasteFromClipboard()); },
       "false", "b"},
      {"clipboardMonitorEnabled", [&] { return shown(preferences_.clipboardMonitorEnabled()); },
       "false", "b"},
      {"isUTC", [&] { return shown(preferences_.isUTC()); }, "false", "b"},
      {"toastPosition", [&] { return preferences_.toastPosition(); }, "bottomCenter", "s"},
      {"autoClearDelay", [&] { return shown(preferences_.autoClearDelay()); }, "60", "ir"},
      {"updateCheckInterval", [&] { return shown(preferences_.updateCheckInterval()); }, "0", "ir"},
      {"updateCheckInterval", [&] { return shown(preferences_.shownUpdateCheckInterval()); },
       "86400", "ir"},
      {"hotkeyConfiguration", [&] { return preferences_.hotkeyConfiguration().value_or("none"); },
       "none", "d"},
  };
  struct Row {
    char type;
    plist::Value value;
    const char* text;
  };
  const std::vector<Row> values{
      {'b', true, "true"},
      {'b', false, "false"},
      {'i', 0, "0"},
      {'i', 1, "1"},
      {'r', 0.5, "0.5"},
      {'s', "true", "true"},
      {'s', "60", "60"},
      {'d', plist::Data{"{}"}, "{}"},
      {'t', plist::Date{"2024-01-01T00:00:00Z"}, ""},
      {'a', plist::Array{true}, ""},
      {'m', plist::Dictionary{{"x", 1}}, ""},
  };
  int count = 0;
  for (const Reader& reader : readers) {
    for (const Row& row : values) {
      store_.set({{reader.key, row.value}});
      const bool counts =
          std::string_view(reader.accepted).find(row.type) != std::string_view::npos;
      EXPECT_EQ(reader.read(), counts ? row.text : reader.absent)
          << reader.key << " as " << row.type << " " << row.text;
      ++count;
    }
  }
  EXPECT_EQ(count, 121);
}

TEST_F(PreferencesTest, thePanelHasAPositionOnlyWhereBothAreNumbers) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  struct Row {
    std::optional<plist::Value> x, y;
    std::optional<Point> position;
  };
  const std::vector<Row> rows{
      {plist::Value(1), plist::Value(2.5), Point{1, 2.5}},
      {plist::Value(-5000), plist::Value(1e300), Point{-5000, 1e300}},
      {plist::Value(1), std::nullopt, std::nullopt},
      {std::nullopt, plist::Value(2), std::nullopt},
      {plist::Value("1"), plist::Value(2), std::nullopt},
      {plist::Value(1), plist::Value(true), std::nullopt},
      {plist::Value(std::nan("")), plist::Value(2), std::nullopt},
      {plist::Value(1), plist::Value(kInfinite), std::nullopt},
      {plist::Value(1), plist::Value(-kInfinite), std::nullopt},
  };
  for (const Row& row : rows) {
    const TemporaryFolder folder;
    PreferencesStore store(folder / "p.plist", timers_);
    if (row.x) store.set({{"panelPositionX", *row.x}});
    if (row.y) store.set({{"panelPositionY", *row.y}});
    EXPECT_EQ(Preferences(store).panelPosition(), row.position);
  }
  EXPECT_EQ(rows.size(), 9U);
}

TEST_F(PreferencesTest, oddNumbersAreReadAsTheyStand) {
  store_.set({{"autoClearDelay", 1e12}, {"updateCheckInterval", -5}, {"toastPosition", "topleft"}});
  EXPECT_EQ(preferences_.autoClearDelay(), 1e12);
  EXPECT_EQ(preferences_.updateCheckInterval(), -5);
  EXPECT_EQ(preferences_.toastPosition(), "topleft");
  store_.set({{"autoClearDelay", std::nan("")}});
  EXPECT_TRUE(std::isnan(preferences_.autoClearDelay()));
}

}  // namespace
}  // namespace horalo
