#include "app/panel_controller.h"

#include <gmock/gmock.h>

#include <limits>

#include "engine/conversion_result.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A panel that keeps a record of what is done with it.
class FakePanel final : public PanelWindow {
 public:
  explicit FakePanel(std::vector<std::string>& record) : record_(record) {}

  bool isVisible() const override { return isVisible_; }
  void prepare() override { record_.push_back("prepare"); }
  void show(std::uint32_t eventTime) override {
    isVisible_ = true;
    record_.push_back("show " + std::to_string(eventTime));
  }
  // Like a real one, it may say twice that it closed.
  void close() override {
    isVisible_ = false;
    record_.push_back("close");
    closed_();
    closed_();
  }
  void onClose(std::function<void()> closed) override { closed_ = std::move(closed); }
  void selectAll() override { record_.push_back("select all"); }
  void whenOnScreen(std::function<void()> shown) override { shown(); }

 private:
  std::vector<std::string>& record_;
  bool isVisible_ = false;
  std::function<void()> closed_;
};

class PanelControllerTest : public testing::Test {
 protected:
  PanelControllerTest()
      : controller_({.parser = TimestampParser::shared(),
                     .preferences = preferences_,
                     .pasteboard = pasteboard_,
                     .timers = timers_,
                     .makeViewModel = [this] { return makeViewModel(); },
                     .makePanel =
                         [this](ConverterViewModel&) {
                           ++panelsMade_;
                           return std::make_unique<FakePanel>(record_);
                         }}) {}

  std::unique_ptr<ConverterViewModel> makeViewModel() {
    auto model = std::make_unique<ConverterViewModel>(
        ConverterViewModel::Environment{TimestampParser::shared(), RowContext::shared().clock,
                                        RowContext::shared().zones, timers_, preferences_});
    viewModel_ = model.get();
    return model;
  }

  // Opens the panel with auto-paste on, of a clipboard that holds `text`.
  void showWithClipboard(const std::string& text) {
    preferences_.setAutoPasteFromClipboard(true);
    pasteboard_.copy(text);
    controller_.showPanel();
  }

  ManualTimers timers_;
  PreferencesStore store_{{}, timers_};
  Preferences preferences_{store_};
  FakePasteboard pasteboard_;
  std::vector<std::string> record_;
  int panelsMade_ = 0;
  ConverterViewModel* viewModel_ = nullptr;
  PanelController controller_;
};

TEST_F(PanelControllerTest, MakesPanelAndViewModelAtTheFirstShowAndKeepsThem) {
  EXPECT_FALSE(controller_.isVisible());
  EXPECT_EQ(panelsMade_, 0);
  controller_.togglePanel(77);
  EXPECT_TRUE(controller_.isVisible());
  ConverterViewModel* const first = viewModel_;
  controller_.togglePanel();
  EXPECT_FALSE(controller_.isVisible());
  controller_.togglePanel();
  EXPECT_EQ(panelsMade_, 1);
  EXPECT_EQ(viewModel_, first);
  EXPECT_THAT(record_, ElementsAre("show 77", "close", "show 0"));
}

// Made at the start of the program, but as it would be made at the first show.
TEST_F(PanelControllerTest, WhatIsStoredCountsAtTheFirstShow) {
  controller_.prepare();
  preferences_.setIsUTC(true);
  EXPECT_FALSE(viewModel_->isUTC());
  controller_.showPanel();
  EXPECT_TRUE(viewModel_->isUTC());
  controller_.closePanel();
  preferences_.setIsUTC(false);
  controller_.showPanel();
  EXPECT_TRUE(viewModel_->isUTC()) << "later it is the panel's own";
}

TEST_F(PanelControllerTest, ClosingAClosedPanelDoesNothing) {
  controller_.closePanel();
  controller_.showPanel();
  controller_.closePanel();
  controller_.closePanel();
  EXPECT_THAT(record_, ElementsAre("show 0", "close"));
}

TEST_F(PanelControllerTest, AsksForTheKeyboardAnewAtEveryShow) {
  controller_.prepare();
  const QUuid before = viewModel_->focusTrigger();
  controller_.showPanel();
  const QUuid first = viewModel_->focusTrigger();
  EXPECT_NE(first, before);
  controller_.showPanel();
  EXPECT_NE(viewModel_->focusTrigger(), first);
  EXPECT_THAT(record_, ElementsAre("prepare", "show 0", "show 0"));
}

TEST_F(PanelControllerTest, IsPreparedOnlyWhileNobodyUsesIt) {
  controller_.showPanel();
  controller_.prepare();
  EXPECT_THAT(record_, ElementsAre("show 0"));
  EXPECT_EQ(panelsMade_, 1);
}

TEST_F(PanelControllerTest, ClearsTheInputAMinuteAfterClosing) {
  controller_.showPanel();
  viewModel_->setInput("now");
  controller_.closePanel();
  timers_.advance(59.9);
  EXPECT_EQ(viewModel_->input(), "now");
  timers_.advance(0.2);
  EXPECT_EQ(viewModel_->input(), "");
}

TEST_F(PanelControllerTest, ReopeningWithinTheDelayKeepsTheInput) {
  controller_.showPanel();
  viewModel_->setInput("now");
  controller_.closePanel();
  timers_.advance(59);
  controller_.showPanel();
  timers_.advance(3600);
  EXPECT_EQ(viewModel_->input(), "now");
  controller_.closePanel();
  timers_.advance(61);
  EXPECT_EQ(viewModel_->input(), "");
}

TEST_F(PanelControllerTest, TheDelayIsReadAtEachClosing) {
  controller_.showPanel();
  viewModel_->setInput("now");
  preferences_.setAutoClearDelay(5);
  controller_.closePanel();
  timers_.advance(5);
  EXPECT_EQ(viewModel_->input(), "");
}

TEST_F(PanelControllerTest, SomeDelaysNeverClear) {
  const double never[] = {0, -1, std::numeric_limits<double>::quiet_NaN(), 1e12};
  int tried = 0;
  for (const double delay : never) {
    preferences_.setAutoClearDelay(delay);
    controller_.showPanel();
    viewModel_->setInput("now");
    controller_.closePanel();
    timers_.advance(1e9);
    EXPECT_EQ(viewModel_->input(), "now") << delay;
    ++tried;
  }
  EXPECT_EQ(tried, 4);
}

TEST_F(PanelControllerTest, NothingIsRefreshedWhileThePanelIsHidden) {
  preferences_.setAutoClearDelay(-1);
  controller_.showPanel();
  viewModel_->setInput("now");
  EXPECT_EQ(timers_.pendingCount(), 1U);
  controller_.closePanel();
  EXPECT_EQ(timers_.pendingCount(), 0U);
  controller_.showPanel();
  EXPECT_EQ(timers_.pendingCount(), 1U);
}

TEST_F(PanelControllerTest, WithoutThePreferenceTheClipboardIsNotRead) {
  pasteboard_.copy("1700000000");
  controller_.showPanel();
  EXPECT_EQ(pasteboard_.readsUnderWay(), 0U);
}

TEST_F(PanelControllerTest, AutoPastesWhatCanBeRead) {
  showWithClipboard("  1700000000 \n");
  EXPECT_TRUE(controller_.isVisible()) << "the panel does not wait";
  EXPECT_EQ(viewModel_->input(), "");
  EXPECT_EQ(pasteboard_.answerReads(), 1U);
  EXPECT_EQ(viewModel_->input(), "1700000000");
  timers_.advance(0);
  EXPECT_THAT(record_, ElementsAre("show 0"));
}

TEST_F(PanelControllerTest, LimitsTheReadInTimeAndSize) {
  showWithClipboard("now");
  ASSERT_EQ(pasteboard_.readLimits().size(), 1U);
  EXPECT_EQ(pasteboard_.readLimits()[0].seconds, 1.0);
  EXPECT_EQ(pasteboard_.readLimits()[0].bytes, 4096U);
}

TEST_F(PanelControllerTest, DoesNotPasteWhatMeansNothing) {
  const std::string texts[] = {"", " \n\t ", "nonsense", std::string(101, '1')};
  int tried = 0;
  for (const std::string& text : texts) {
    showWithClipboard(text);
    pasteboard_.answerReads();
    EXPECT_EQ(viewModel_->input(), "") << text;
    controller_.closePanel();
    ++tried;
  }
  pasteboard_.copy(std::nullopt);
  controller_.showPanel();
  pasteboard_.answerReads();
  EXPECT_EQ(viewModel_->input(), "");
  EXPECT_EQ(tried, 4);
}

TEST_F(PanelControllerTest, AHundredCharactersAreNotTooMany) {
  const std::string text = std::string(99, '0') + "1";
  showWithClipboard(text);
  pasteboard_.answerReads();
  EXPECT_EQ(viewModel_->input(), text);
}

TEST_F(PanelControllerTest, SelectsATextThatIsTheInputAlready) {
  showWithClipboard("1700000000");
  pasteboard_.answerReads();
  controller_.closePanel();
  controller_.showPanel();
  timers_.advance(1);
  EXPECT_THAT(record_, ElementsAre("show 0", "close", "show 0"));
  pasteboard_.answerReads();
  timers_.advance(0.04);
  EXPECT_NE(record_.back(), "select all") << "the delay counts from the answer";
  timers_.advance(0.02);
  EXPECT_EQ(record_.back(), "select all");
}

TEST_F(PanelControllerTest, ALateAnswerDoesNotTouchWhatWasTyped) {
  showWithClipboard("1700000000");
  viewModel_->setInput("to");
  EXPECT_EQ(pasteboard_.answerReads(), 0U);
  EXPECT_EQ(viewModel_->input(), "to");
}

TEST_F(PanelControllerTest, WhatIsTypedBeforeTheSelectionIsNotSelected) {
  showWithClipboard("1700000000");
  pasteboard_.answerReads();
  controller_.closePanel();
  controller_.showPanel();
  pasteboard_.answerReads();
  timers_.advance(0.02);
  viewModel_->setInput("17000000001");
  timers_.advance(1);
  EXPECT_THAT(record_, testing::Not(testing::Contains("select all")));
}

TEST_F(PanelControllerTest, ALateAnswerDoesNotCountForAnotherShow) {
  showWithClipboard("1700000000");
  controller_.closePanel();
  EXPECT_EQ(pasteboard_.readsUnderWay(), 0U);
  pasteboard_.answerReads();
  EXPECT_EQ(viewModel_->input(), "");
  controller_.showPanel();
  EXPECT_EQ(pasteboard_.answerReads(), 1U);
  EXPECT_EQ(viewModel_->input(), "1700000000");
}

TEST_F(PanelControllerTest, AClosedPanelSelectsNothing) {
  showWithClipboard("1700000000");
  viewModel_->setInput("1700000000");
  controller_.closePanel();
  controller_.showPanel();
  pasteboard_.answerReads();
  controller_.closePanel();
  timers_.advance(1);
  EXPECT_THAT(record_, testing::Not(testing::Contains("select all")));
}

// The shortcut of another program, or a second start, while the panel is open.
TEST_F(PanelControllerTest, ShowingAnOpenPanelPastesNothing) {
  controller_.showPanel();
  viewModel_->setInput("today");
  showWithClipboard("1700000000");
  EXPECT_EQ(pasteboard_.readsUnderWay(), 0U);
  EXPECT_EQ(viewModel_->input(), "today");
}

}  // namespace
}  // namespace horalo
