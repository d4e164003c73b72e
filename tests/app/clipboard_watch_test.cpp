#include "app/clipboard_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preferences/preferences_store.h"
#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClipboardWatchTest : public testing::Test {
 protected:
  void copy(const std::string& text) {
    pasteboard_.copy(text);
    timers_.advance(ClipboardMonitor::kInterval);
    pasteboard_.answerReads();
  }

  void enable(bool on) {
    preferences_.setClipboardMonitorEnabled(on);
    watch_.updateClipboardMonitor();
  }

  ManualClock clock_{{1'800'000'000, 0}};
  ManualTimers timers_{&clock_};
  FakePasteboard pasteboard_;
  FixedZone zone_{TimeZone::utc()};
  TimestampParser parser_{clock_, zone_};
  PreferencesStore store_{{}, timers_};
  Preferences preferences_{store_};
  std::vector<std::string> inputs_;
  ClipboardWatch watch_{
      {pasteboard_, timers_, parser_, zone_, preferences_},
      [this](const std::string& input, const ConversionResult&) { inputs_.push_back(input); }};
};

TEST_F(ClipboardWatchTest, isOffUntilTheUserWantsIt) {
  watch_.updateClipboardMonitor();
  copy("1700000000");
  EXPECT_FALSE(watch_.isWatching());
  EXPECT_THAT(inputs_, IsEmpty());
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(ClipboardWatchTest, followsThePreferenceWhenItIsTold) {
  enable(true);
  copy("1700000000");
  preferences_.setClipboardMonitorEnabled(false);
  copy("1700000001");
  watch_.updateClipboardMonitor();
  EXPECT_FALSE(watch_.isWatching());
  copy("1700000002");
  enable(true);
  timers_.advance(1);
  copy("1700000003");
  EXPECT_THAT(inputs_, ElementsAre("1700000000", "1700000001", "1700000003"));
}

TEST_F(ClipboardWatchTest, forgetsAChangeWhenItIsTurnedOnAgain) {
  enable(true);
  pasteboard_.copy("1700000000");
  enable(true);
  timers_.advance(1);
  EXPECT_EQ(pasteboard_.answerReads(), 0U);
  EXPECT_THAT(inputs_, IsEmpty());
}

TEST_F(ClipboardWatchTest, suppressesOneChangeWhileItWatches) {
  watch_.suppressNextChange();
  enable(true);
  copy("1700000000");
  watch_.suppressNextChange();
  copy("1700000001");
  copy("1700000002");
  EXPECT_THAT(inputs_, ElementsAre("1700000000", "1700000002"));
}

}  // namespace
}  // namespace horalo
