#include "converter/converter_view_model.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "preferences/preferences_store.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

using testing::ElementsAre;

constexpr Instant kNow{1704067200, 0};  // 2024-01-01T00:00:00Z

// The user's zone, which a test may change.
class ManualZone final : public ZoneSource {
 public:
  TimeZone current() const override { return zone; }

  TimeZone zone = TimeZone::find("Asia/Tokyo").value();
};

class ConverterViewModelTest : public testing::Test {
 protected:
  std::unique_ptr<ConverterViewModel> makeModel() {
    return std::make_unique<ConverterViewModel>(
        ConverterViewModel::Environment{parser_, clock_, zones_, timers_, preferences_});
  }

  std::string row(RowKind kind) {
    EXPECT_TRUE(model_->result());
    if (!model_->result()) return {};
    const LocaleTexts texts("en_US");
    return rows(*model_->result(), {clock_, zones_, texts})
        .at(static_cast<std::size_t>(kind))
        .value;
  }

  // How often observers are told of a change while `act` runs.
  int changesDuring(const std::function<void()>& act) {
    int changes = 0;
    const auto connection =
        QObject::connect(model_.get(), &ConverterViewModel::willChange, [&] { ++changes; });
    act();
    QObject::disconnect(connection);
    return changes;
  }

  // One refresh timer waits while a result is shown, and none otherwise.
  void expectState(bool result, bool error) {
    EXPECT_EQ(model_->result().has_value(), result);
    EXPECT_EQ(model_->errorMessage().has_value(), error);
    EXPECT_EQ(timers_.pendingCount(), result ? 1U : 0U);
  }

  TemporaryFolder folder_;
  ManualClock clock_{kNow};
  ManualTimers timers_{&clock_};
  ManualZone zones_;
  TimestampParser parser_{clock_, zones_};
  PreferencesStore store_{folder_ / "p.plist", timers_};
  Preferences preferences_{store_};
  std::unique_ptr<ConverterViewModel> model_ = makeModel();
};

TEST_F(ConverterViewModelTest, startsEmptyInTheUsersZone) {
  expectState(false, false);
  EXPECT_EQ(model_->input(), "");
  EXPECT_FALSE(model_->isUTC());
  EXPECT_EQ(model_->selectedTimezone().identifier(), "Asia/Tokyo");
  EXPECT_EQ(model_->currentTimezone().identifier(), "Asia/Tokyo");
  EXPECT_FALSE(model_->focusTrigger().isNull());
  EXPECT_NE(model_->focusTrigger(), makeModel()->focusTrigger());
}

TEST_F(ConverterViewModelTest, startsWithTheStoredUTC) {
  preferences_.setIsUTC(true);
  model_ = makeModel();
  EXPECT_TRUE(model_->isUTC());
  EXPECT_EQ(model_->currentTimezone().identifier(), "UTC");
  EXPECT_EQ(model_->selectedTimezone().identifier(), "Asia/Tokyo");
}

TEST_F(ConverterViewModelTest, movesBetweenItsThreeStates) {
  struct Row {
    const char* input;
    bool result, error;
  };
  const std::vector<Row> rows{
      {"1704067200", true, false}, {"nonsense", false, true},   {"now", true, false},
      {"", false, false},          {"nonsense", false, true},   {" ", false, false},
      {"tomorrow", true, false},   {"2024-01-01", true, false}, {"3 days ago", true, false},
      {"2024-13-01", false, true}, {"other", false, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.input);
    model_->setInput(row.input);
    EXPECT_EQ(model_->input(), row.input);
    expectState(row.result, row.error);
    EXPECT_EQ(model_->errorMessage().value_or(""), row.error ? "Could not parse input" : "");
  }
  EXPECT_EQ(rows.size(), 11U);
}

TEST_F(ConverterViewModelTest, whiteSpaceAloneIsEmpty) {
  for (const char* input : {" ", "\t\n\r\v\f ", "\u00A0\u2003\u3000", "\u2028\u2029\u0085"}) {
    model_->setInput(input);
    expectState(false, false);
    EXPECT_EQ(model_->input(), input) << "kept as typed";
  }
  model_->setInput("\u200B");
  expectState(false, true);
}

TEST_F(ConverterViewModelTest, theInputIsTrimmedForTheParser) {
  model_->setInput("\u2003 now + 2h \n");
  ASSERT_TRUE(model_->result());
  EXPECT_EQ(model_->result()->source, TimestampSource(source::DateMath{"now + 2h"}));
  EXPECT_EQ(model_->result()->date, (Instant{kNow.seconds + 7200, 0}));
}

TEST_F(ConverterViewModelTest, aResultCarriesDateSourceAndZone) {
  model_->setInput("1704067200");
  ASSERT_TRUE(model_->result());
  EXPECT_EQ(model_->result()->date, kNow);
  EXPECT_EQ(model_->result()->source, TimestampSource(source::UnixSeconds{}));
  EXPECT_EQ(model_->result()->timezone.identifier(), "Asia/Tokyo");
  EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T09:00:00+09:00");
}

TEST_F(ConverterViewModelTest, theSameInputIsNotConvertedAgainUnlessAsked) {
  model_->setInput("now");
  clock_.set({kNow.seconds + 5, 0});
  EXPECT_EQ(changesDuring([&] { model_->setInput("now"); }), 0);
  EXPECT_EQ(model_->result()->date, kNow);
  model_->convert();
  EXPECT_EQ(model_->result()->date, (Instant{kNow.seconds + 5, 0}));
  expectState(true, false);
}

TEST_F(ConverterViewModelTest, nearResultsAreRefreshedEachSecondAndOthersEveryTen) {
  struct Row {
    const char* input;
    double interval;
  };
  const std::vector<Row> rows{
      {"now", 1},          {"1704067200", 1},      {"1704067259", 1},
      {"1704067260", 10},  {"1704067141", 1},      {"1704067140", 10},
      {"1704067259.9", 1}, {"1704067140.1", 1},    {"1704067139.999", 10},
      {"0", 10},           {"253402300799", 10},   {"tomorrow", 10},
      {"now + 59s", 1},    {"now + 1 minute", 10}, {"2024-01-01T00:00:30Z", 1},
  };
  for (const Row& row : rows) {
    model_->setInput(row.input);
    EXPECT_EQ(timers_.timeToNext(), row.interval) << row.input;
    expectState(true, false);
  }
  EXPECT_EQ(rows.size(), 15U);
}

TEST_F(ConverterViewModelTest, aResultForNowKeepsItsInstantAndAgesEachSecondUntilItIsFar) {
  model_->setInput("now");
  EXPECT_EQ(row(RowKind::relative), "in 0 seconds");
  EXPECT_EQ(changesDuring([&] { timers_.advance(0.999); }), 0);
  EXPECT_EQ(changesDuring([&] { timers_.advance(0.001); }), 1);
  EXPECT_EQ(row(RowKind::relative), "1 second ago");
  EXPECT_EQ(changesDuring([&] { timers_.advance(58); }), 58);
  EXPECT_EQ(row(RowKind::relative), "59 seconds ago");
  EXPECT_EQ(timers_.timeToNext(), 1.0);
  EXPECT_EQ(changesDuring([&] { timers_.advance(1); }), 1);
  EXPECT_EQ(timers_.timeToNext(), 10.0) << "60 seconds are far";
  EXPECT_EQ(changesDuring([&] { timers_.advance(100); }), 10);
  EXPECT_EQ(row(RowKind::relative), "2 minutes ago");
  EXPECT_EQ(model_->result()->date, kNow);
  expectState(true, false);
}

TEST_F(ConverterViewModelTest, aResultThatComesNearIsRefreshedFaster) {
  model_->setInput("1704067275");  // 75 s ahead
  EXPECT_EQ(changesDuring([&] { timers_.advance(20); }), 2);
  EXPECT_EQ(timers_.timeToNext(), 1.0);
  EXPECT_EQ(changesDuring([&] { timers_.advance(3); }), 3);
}

TEST_F(ConverterViewModelTest, theIntervalFollowsAClockThatIsSetAnew) {
  model_->setInput("now");
  clock_.advance(std::chrono::hours(24));
  timers_.advance(1);
  EXPECT_EQ(timers_.timeToNext(), 10.0);
  clock_.advance(-std::chrono::hours(24));
  timers_.advance(10);
  EXPECT_EQ(timers_.timeToNext(), 1.0);
}

TEST_F(ConverterViewModelTest, theTimerEndsWithTheResultAndWithTheModel) {
  model_->setInput("now");
  model_->setInput("");
  EXPECT_EQ(timers_.pendingCount(), 0U);
  model_->setInput("now");
  model_->setInput("x");
  EXPECT_EQ(timers_.pendingCount(), 0U);
  model_->setInput("now");
  model_->clear();
  EXPECT_EQ(timers_.pendingCount(), 0U);
  model_->setInput("now");
  model_.reset();
  EXPECT_EQ(timers_.pendingCount(), 0U);
  timers_.advance(100);
}

TEST_F(ConverterViewModelTest, clearForgetsEverythingButTheZone) {
  const TimeZone paris = TimeZone::find("Europe/Paris").value();
  model_->setTimezone(paris);
  for (const char* input : {"now", "x", ""}) {
    model_->setInput(input);
    model_->clear();
    EXPECT_EQ(model_->input(), "");
    expectState(false, false);
  }
  EXPECT_EQ(model_->selectedTimezone(), paris);
}

TEST_F(ConverterViewModelTest, togglingUTCStoresItAndShowsTheResultInIt) {
  model_->setInput("1704067200");
  model_->toggleUTC();
  EXPECT_TRUE(model_->isUTC());
  EXPECT_EQ(store_.value("isUTC"), plist::Value(true));
  EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T00:00:00Z");
  expectState(true, false);
  model_->toggleUTC();
  EXPECT_FALSE(model_->isUTC());
  EXPECT_EQ(store_.value("isUTC"), plist::Value(false));
  EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T09:00:00+09:00");
  EXPECT_EQ(model_->selectedTimezone().identifier(), "Asia/Tokyo");
}

TEST_F(ConverterViewModelTest, withoutAResultTogglingUTCOnlyFlipsAndStores) {
  for (const char* input : {"", "x"}) {
    model_->setInput(input);
    const bool before = model_->isUTC();
    model_->toggleUTC();
    EXPECT_EQ(model_->isUTC(), !before);
    EXPECT_EQ(preferences_.isUTC(), !before);
    expectState(false, *input != '\0');
  }
}

TEST_F(ConverterViewModelTest, togglingConvertsAnew) {
  model_->setInput("now");
  timers_.advance(5);
  model_->toggleUTC();
  EXPECT_EQ(model_->result()->date, (Instant{kNow.seconds + 5, 0}));
}

TEST_F(ConverterViewModelTest, choosingAZoneTurnsUTCOff) {
  model_->setInput("1704067200");
  model_->toggleUTC();
  const TimeZone paris = TimeZone::find("Europe/Paris").value();
  for (int i = 0; i < 2; ++i) {
    model_->setTimezone(paris);
    EXPECT_FALSE(model_->isUTC());
    EXPECT_EQ(store_.value("isUTC"), plist::Value(false));
    EXPECT_EQ(model_->currentTimezone(), paris);
    EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T01:00:00+01:00");
    expectState(true, false);
  }
}

TEST_F(ConverterViewModelTest, theChosenZoneIsNotStored) {
  model_->setTimezone(TimeZone::find("Europe/Paris").value());
  EXPECT_EQ(store_.values(), (plist::Dictionary{{"isUTC", false}}));
  EXPECT_EQ(makeModel()->selectedTimezone().identifier(), "Asia/Tokyo");
}

TEST_F(ConverterViewModelTest, theParserFollowsAChangedZoneAndTheShownZoneStays) {
  zones_.zone = TimeZone::find("Europe/Paris").value();
  model_->setInput("2024-01-01 10:00:00");
  EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T18:00:00+09:00");
  model_->setTimezone(zones_.current());
  EXPECT_EQ(row(RowKind::iso8601), "2024-01-01T10:00:00+01:00");
}

TEST_F(ConverterViewModelTest, observersHearOfEachChangeBeforeItIsMade) {
  const auto seenBefore = [&](const std::function<void()>& act,
                              const std::function<std::string()>& look) {
    std::vector<std::string> seen;
    const auto connection = QObject::connect(model_.get(), &ConverterViewModel::willChange,
                                             [&] { seen.push_back(look()); });
    act();
    QObject::disconnect(connection);
    return seen.empty() ? std::string("silence") : seen.front();
  };
  const auto input = [&] { return model_->input(); };
  const auto shown = [&]() -> std::string {
    if (model_->result()) return std::to_string(model_->result()->date.seconds);
    return model_->errorMessage().value_or("nothing");
  };
  const auto zone = [&] { return model_->currentTimezone().identifier(); };
  const QUuid trigger = model_->focusTrigger();

  EXPECT_EQ(seenBefore([&] { model_->setInput("1"); }, input), "");
  EXPECT_EQ(seenBefore([&] { model_->setInput("x"); }, shown), "1");
  EXPECT_EQ(seenBefore([&] { model_->setInput("2"); }, shown), "Could not parse input");
  EXPECT_EQ(seenBefore([&] { model_->convert(); }, shown), "2");
  EXPECT_EQ(seenBefore([&] { model_->toggleUTC(); }, zone), "Asia/Tokyo");
  EXPECT_EQ(seenBefore([&] { model_->setTimezone(TimeZone::find("Asia/Shanghai").value()); }, zone),
            "UTC");
  EXPECT_EQ(seenBefore([&] { model_->clear(); }, input), "2");
  EXPECT_EQ(seenBefore([&] { model_->requestFocus(); },
                       [&] { return model_->focusTrigger().toString().toStdString(); }),
            trigger.toString().toStdString());
}

TEST_F(ConverterViewModelTest, resultAndMessageAreNeverSeenTogether) {
  bool together = false;
  QObject::connect(model_.get(), &ConverterViewModel::willChange,
                   [&] { together = together || (model_->result() && model_->errorMessage()); });
  for (const char* input : {"1", "x", "2", "", "x", "3"}) model_->setInput(input);
  model_->clear();
  EXPECT_FALSE(together);
}

TEST_F(ConverterViewModelTest, tellsOfItsInputOnceItsResultIsThere) {
  std::vector<std::string> told;
  QObject::connect(model_.get(), &ConverterViewModel::inputChanged, [&] {
    told.push_back(model_->input() + (model_->result() ? " result" : "") +
                   (model_->errorMessage() ? " error" : ""));
  });
  model_->setInput("now");
  model_->setInput("now");
  model_->convert();
  model_->setInput("x");
  model_->clear();
  EXPECT_THAT(told, ElementsAre("now result", "x error", ""));
}

TEST_F(ConverterViewModelTest, eachRequestForFocusIsAFreshValue) {
  std::vector<QUuid> triggers{model_->focusTrigger()};
  QObject::connect(model_.get(), &ConverterViewModel::focusRequested,
                   [&] { triggers.push_back(model_->focusTrigger()); });
  model_->requestFocus();
  model_->requestFocus();
  ASSERT_EQ(triggers.size(), 3U);
  EXPECT_NE(triggers[0], triggers[1]);
  EXPECT_NE(triggers[1], triggers[2]);
}

TEST_F(ConverterViewModelTest, whileRestingNothingIsRefreshed) {
  model_->setInput("now");
  model_->setResting(true);
  EXPECT_EQ(timers_.pendingCount(), 0U);
  EXPECT_EQ(changesDuring([&] { timers_.advance(3600); }), 0);
  EXPECT_EQ(changesDuring([&] { model_->setResting(false); }), 1) << "the rows are built anew";
  EXPECT_EQ(timers_.timeToNext(), 10.0) << "an hour has passed";
  EXPECT_EQ(row(RowKind::relative), "1 hour ago");
  EXPECT_EQ(model_->result()->date, kNow);
}

TEST_F(ConverterViewModelTest, whatIsConvertedWhileRestingIsRefreshedFromTheWakingOn) {
  model_->setResting(true);
  model_->setInput("now");
  EXPECT_TRUE(model_->result());
  model_->toggleUTC();
  EXPECT_EQ(timers_.pendingCount(), 0U);
  model_->setResting(false);
  EXPECT_EQ(timers_.timeToNext(), 1.0);
  EXPECT_EQ(timers_.pendingCount(), 1U);
}

TEST_F(ConverterViewModelTest, wakingTwiceOrWithoutAResultDoesNothing) {
  EXPECT_EQ(changesDuring([&] {
              model_->setResting(true);
              model_->setResting(false);
            }),
            0);
  EXPECT_EQ(timers_.pendingCount(), 0U);
  model_->setInput("now");
  timers_.advance(0.5);
  EXPECT_EQ(changesDuring([&] { model_->setResting(false); }), 0);
  EXPECT_EQ(timers_.timeToNext(), 0.5);
}

}  // namespace
}  // namespace horalo
