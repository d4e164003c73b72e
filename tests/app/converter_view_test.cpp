#include "app/views/converter_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hotkey/key.h"
#include "tests/app/panel_window.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;

TEST(ConverterView, ShowsThePromptUntilSomethingIsTyped) {
  PanelWindow panel;
  EXPECT_THAT(panel.labels(), ElementsAre("Type a timestamp or date",
                                          "Try: 1704067200, 2024-01-01T00:00:00Z, or \"now\""));
  EXPECT_TRUE(panel.clear().isHidden());
  EXPECT_FALSE(panel.row(0).isVisible());
}

TEST(ConverterView, ShowsFiveRowsAndHowTheInputWasUnderstood) {
  PanelWindow panel;
  panel.viewModel.toggleUTC();
  panel.type(QStringLiteral("1704067200"));
  const std::vector<std::string> rows = {
      "Unix (s): 1704067200", "Unix (ms): 1704067200000", "ISO 8601: 2024-01-01T00:00:00Z",
      "Formatted: Jan 1, 2024 at 12:00:00 AM", "Relative: 2 years ago"};
  int run = 0;
  for (const std::string& row : rows) {
    EXPECT_TRUE(panel.row(run).isVisible());
    EXPECT_THAT(panel.rowText(run), Eq(row));
    ++run;
  }
  EXPECT_THAT(run, Eq(5));
  EXPECT_THAT(panel.labels(), ElementsAre("Detected: Unix (seconds)"));
  EXPECT_THAT(panel.highlighted(), ElementsAre(0));
}

TEST(ConverterView, ShowsTheMessageWhereTheInputMeansNothing) {
  PanelWindow panel;
  panel.type(QStringLiteral("next tuesdy"));
  EXPECT_THAT(panel.labels(), ElementsAre("Could not parse input"));
  EXPECT_FALSE(panel.row(0).isVisible());
  EXPECT_TRUE(panel.clear().isVisible());
}

TEST(ConverterView, TheClearButtonComesWithTheFirstCharacterAndClears) {
  PanelWindow panel;
  panel.type(QStringLiteral("1"));
  EXPECT_TRUE(panel.clear().isVisible());
  QTest::mouseClick(&panel.clear(), Qt::LeftButton);
  panel.turn();
  EXPECT_TRUE(panel.clear().isHidden());
  EXPECT_THAT(panel.input().text(), Eq(QString()));
  EXPECT_THAT(panel.viewModel.input(), Eq(""));
  EXPECT_TRUE(panel.input().hasFocus());
}

TEST(ConverterView, TheFootersTextsStandOnOneLine) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  const auto isCentred = [](const QWidget& widget) {
    return 2 * widget.y() + widget.height() == widget.parentWidget()->height();
  };
  EXPECT_TRUE(isCentred(panel.utc()));
  EXPECT_TRUE(isCentred(panel.find<TimezonePickerView>()));
}

TEST(ConverterView, ArrowsStopAtBothEnds) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  for (int i = 0; i < 6; ++i) panel.press(Qt::Key_Down);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(4));
  EXPECT_THAT(panel.highlighted(), ElementsAre(4));
  for (int i = 0; i < 6; ++i) panel.press(Qt::Key_Up);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(0));
  EXPECT_THAT(panel.highlighted(), ElementsAre(0));
}

TEST(ConverterView, ArrowsMoveTheHighlightWhateverHasTheKeyboard) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  panel.utc().setFocus();
  panel.press(Qt::Key_Down);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(1));
  EXPECT_TRUE(panel.utc().hasFocus());
}

TEST(ConverterView, ArrowsPassThroughWithoutAResult) {
  PanelWindow panel;
  panel.type(QStringLiteral("what"));
  panel.press(Qt::Key_Down);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(0));
  panel.type(QStringLiteral("x"));
  EXPECT_THAT(panel.input().text(), Eq(QStringLiteral("whatx")));
}

TEST(ConverterView, TypingHighlightsTheFirstRowAgain) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Down);
  panel.press(Qt::Key_Down);
  panel.type(QStringLiteral("0"));
  EXPECT_THAT(panel.highlighted(), ElementsAre(0));
}

TEST(ConverterView, ReturnCopiesTheHighlightedRow) {
  PanelWindow panel;
  panel.viewModel.toggleUTC();
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Down);
  panel.press(Qt::Key_Down);
  panel.press(Qt::Key_Return);
  panel.press(Qt::Key_Up);
  panel.press(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("2024-01-01T00:00:00Z", "1704067200000"));
}

TEST(ConverterView, ReturnConvertsWhereThereIsNoResult) {
  PanelWindow panel;
  panel.press(Qt::Key_Return);
  panel.type(QStringLiteral("nothing"));
  panel.press(Qt::Key_Return);
  EXPECT_THAT(panel.pasteboard.written(), IsEmpty());
  EXPECT_THAT(panel.viewModel.errorMessage(), Optional(Eq("Could not parse input")));
  EXPECT_THAT(panel.calls, IsEmpty());
}

TEST(ConverterView, ARelativeRowIsCopiedAsItIsAtThatMoment) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  for (int i = 0; i < 4; ++i) panel.press(Qt::Key_Down);
  panel.clock.advance(std::chrono::seconds(3));  // no refresh has come by
  panel.press(Qt::Key_Return);
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("3 seconds ago"));
}

TEST(ConverterView, AClickHighlightsARowAndCopiesIt) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  QTest::mouseClick(&panel.row(1), Qt::LeftButton, {}, {200, 10});
  panel.turn();
  EXPECT_THAT(panel.highlighted(), ElementsAre(1));
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("1704067200000"));
  EXPECT_THAT(panel.view.copiedRowIndex(), Optional(1));
  EXPECT_TRUE(panel.input().hasFocus());
}

TEST(ConverterView, AScreenReaderCanPressARow) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  QAccessible::queryAccessibleInterface(&panel.row(1))
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("1704067200000"));
}

TEST(ConverterView, ACopyIsAnnouncedBeforeItIsWritten) {
  PanelWindow panel;
  std::vector<std::string> order;
  panel.notifications.observe(notification::appDidCopyToClipboard, [&](const std::any& object) {
    EXPECT_FALSE(object.has_value());
    order.emplace_back("announced");
  });
  panel.pasteboard.setBeforeWrite([&] { order.emplace_back("written"); });
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Return);
  EXPECT_THAT(order, ElementsAre("announced", "written"));
}

TEST(ConverterView, ClosesAfterCopyingWithAToast) {
  PanelWindow panel;
  panel.preferences.setCloseWindowAfterCopy(true);
  panel.pasteboard.setBeforeWrite([&] { panel.calls.emplace_back("write"); });
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Return);
  EXPECT_THAT(panel.calls, ElementsAre("write", "toast", "dismiss"));
  EXPECT_THAT(panel.view.copiedRowIndex(), Eq(std::nullopt));
}

TEST(ConverterView, TheCheckMarkStaysForASecond) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Return);
  EXPECT_THAT(panel.view.copiedRowIndex(), Optional(0));
  panel.timers.advance(0.99);
  EXPECT_THAT(panel.view.copiedRowIndex(), Optional(0));
  panel.timers.advance(0.02);
  EXPECT_THAT(panel.view.copiedRowIndex(), Eq(std::nullopt));
}

TEST(ConverterView, AnEarlierCopysTimerClearsALaterCheckMark) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Return);
  panel.timers.advance(0.6);
  panel.press(Qt::Key_Down);
  panel.press(Qt::Key_Return);
  EXPECT_THAT(panel.view.copiedRowIndex(), Optional(1));
  panel.timers.advance(0.5);
  EXPECT_THAT(panel.view.copiedRowIndex(), Eq(std::nullopt));
}

TEST(ConverterView, ACheckMarksTimerOutlivesTheView) {
  PanelFixture fixture;
  fixture.preferences.setCloseWindowAfterCopy(false);
  {
    ConverterView view(fixture.environment(), fixture.callbacks());
    view.copyToClipboard(2, "text");
    EXPECT_THAT(view.copiedRowIndex(), Optional(2));
  }
  fixture.timers.advance(2);
  EXPECT_THAT(fixture.pasteboard.written(), ElementsAre("text"));
}

TEST(ConverterView, CommandCommaOpensTheSettings) {
  PanelWindow panel;
  panel.press(Qt::Key_Comma, Qt::MetaModifier);
  panel.type(QStringLiteral("now"));
  panel.press(Qt::Key_Comma, Qt::ControlModifier);
  panel.utc().setFocus();
  panel.press(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_THAT(panel.calls, ElementsAre("settings", "settings", "settings"));
  EXPECT_THAT(panel.input().text(), Eq(QStringLiteral("now")));
}

TEST(ConverterView, CommandNeedsNoLatinLayout) {
  PanelWindow panel;
  const auto press = [&panel](int written, Key place, Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(QEvent::KeyPress, written, modifiers, place.carbonKeyCode(), 0, 0);
    QCoreApplication::sendEvent(&panel.input(), &event);
    panel.turn();
  };
  constexpr int be = 0x411;  // the Cyrillic letter on the comma's key
  constexpr int ef = 0x424;  // on that of A
  constexpr int es = 0x421;  // on that of C
  press(be, Key::comma, Qt::MetaModifier);
  press(be, Key::comma, Qt::ControlModifier);
  EXPECT_THAT(panel.calls, ElementsAre("settings", "settings"));
  for (const Qt::KeyboardModifier command : {Qt::MetaModifier, Qt::ControlModifier}) {
    panel.input().setText(QStringLiteral("now"));
    press(ef, Key::a, command);
    EXPECT_THAT(panel.input().selectedText(), Eq(QStringLiteral("now")));
    press(es, Key::c, command);
  }
  EXPECT_THAT(panel.pasteboard.written(), ElementsAre("now", "now"));
}

TEST(ConverterView, CommandWithAnotherKeyIsNoShortcut) {
  PanelWindow panel;
  panel.press(Qt::Key_Period, Qt::MetaModifier);
  panel.press(Qt::Key_Period, Qt::ControlModifier);
  panel.type(QStringLiteral(","));
  EXPECT_THAT(panel.calls, IsEmpty());
  EXPECT_THAT(panel.input().text(), Eq(QStringLiteral(",")));
}

TEST(ConverterView, EscapeDismissesFromEverywhere) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  panel.press(Qt::Key_Escape);
  panel.utc().setFocus();
  panel.press(Qt::Key_Escape);
  EXPECT_THAT(panel.calls, ElementsAre("dismiss", "dismiss"));
}

TEST(ConverterView, TabGoesThroughEverythingAndBack) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  QStringList order;
  for (int i = 0; i < 5; ++i) {
    order << panel.name(*QApplication::focusWidget());
    panel.press(Qt::Key_Tab);
  }
  EXPECT_THAT(order,
              Eq(QStringList{QStringLiteral("Enter timestamp or date..."), QStringLiteral("Clear"),
                             QStringLiteral("UTC"), QStringLiteral("CET"),
                             QStringLiteral("Enter timestamp or date...")}));
}

TEST(ConverterView, ANewFocusTriggerGivesTheFieldTheKeyboard) {
  PanelWindow panel;
  panel.utc().setFocus();
  panel.viewModel.requestFocus();
  EXPECT_TRUE(panel.input().hasFocus());
}

TEST(ConverterView, SelectAllWorksOnTheFieldThatHasTheKeyboard) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  panel.utc().setFocus();
  panel.view.selectAllInput();
  EXPECT_FALSE(panel.input().hasSelectedText());
  panel.viewModel.requestFocus();
  panel.view.selectAllInput();
  EXPECT_THAT(panel.input().selectedText(), Eq(QStringLiteral("now")));
}

TEST(ConverterView, TheSwitchTogglesUtc) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  EXPECT_THAT(panel.rowText(2), Eq("ISO 8601: 2024-01-01T01:00:00+01:00"));
  QTest::mouseClick(&panel.utc(), Qt::LeftButton, {}, panel.utc().rect().center());
  panel.turn();
  EXPECT_TRUE(panel.viewModel.isUTC());
  EXPECT_TRUE(panel.preferences.isUTC());
  EXPECT_TRUE(panel.utc().isChecked());
  EXPECT_THAT(panel.rowText(2), Eq("ISO 8601: 2024-01-01T00:00:00Z"));
  EXPECT_TRUE(panel.input().hasFocus());
  panel.viewModel.setTimezone(TimeZone::find("Asia/Tokyo").value());
  panel.turn();
  EXPECT_FALSE(panel.utc().isChecked());
  EXPECT_THAT(panel.rowText(2), Eq("ISO 8601: 2024-01-01T09:00:00+09:00"));
}

TEST(ConverterView, ATextThatSomebodyElseSetIsShown) {
  PanelWindow panel;
  panel.viewModel.setInput("1700000000");
  panel.turn();
  EXPECT_THAT(panel.input().text(), Eq(QStringLiteral("1700000000")));
  panel.viewModel.clear();
  panel.turn();
  EXPECT_THAT(panel.input().text(), Eq(QString()));
  EXPECT_THAT(panel.labels().size(), Eq(2U));
}

TEST(ConverterView, UndoTakesBackWhatWasTyped) {
  PanelWindow panel;
  panel.type(QStringLiteral("1704067200"));
  panel.press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(panel.viewModel.input(), Eq(""));
  panel.press(Qt::Key_Z, Qt::MetaModifier | Qt::ShiftModifier);
  EXPECT_THAT(panel.viewModel.input(), Eq("1704067200"));
  panel.press(Qt::Key_Z, Qt::MetaModifier);
  EXPECT_THAT(panel.viewModel.input(), Eq(""));
}

TEST(ConverterView, ChangesWithinOneTurnAreDrawnOnce) {
  PanelWindow panel;
  struct Paints : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      count += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int count = 0;
  } paints;
  panel.type(QStringLiteral("now"));
  panel.row(0).installEventFilter(&paints);
  for (int i = 0; i < 20; ++i) panel.viewModel.setInput("now + " + std::to_string(i) + "d");
  EXPECT_THAT(paints.count, Eq(0));
  EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count > 0; }));
  panel.turn();
  EXPECT_THAT(paints.count, Eq(1));
}

TEST(ConverterView, WhileHiddenNothingIsRefreshed) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  EXPECT_THAT(panel.timers.pendingCount(), Eq(2U)) << "for the rows and for the caret";
  panel.view.hide();
  EXPECT_THAT(panel.timers.pendingCount(), Eq(0U));
  panel.clock.advance(std::chrono::seconds(30));
  panel.view.show();
  EXPECT_THAT(panel.rowText(4), Eq("Relative: 30 seconds ago"));  // before it is painted
  panel.timers.advance(1);
  panel.turn();
  EXPECT_THAT(panel.rowText(4), Eq("Relative: 31 seconds ago"));
}

TEST(ConverterView, TheRelativeRowFollowsTheTimer) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  panel.timers.advance(1);
  panel.turn();
  EXPECT_THAT(panel.rowText(4), Eq("Relative: 1 second ago"));
}

TEST(ConverterView, KeysOfOtherWindowsAreLeftAlone) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  QLineEdit other;
  other.show();
  QTest::keyClick(&other, Qt::Key_Down);
  QTest::keyClick(&other, Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(0));
  EXPECT_THAT(panel.calls, IsEmpty());
}

TEST(ConverterView, AHiddenPanelHasNoKeys) {
  PanelWindow panel;
  panel.type(QStringLiteral("now"));
  panel.view.hide();
  QTest::keyClick(&panel.input(), Qt::Key_Down);
  EXPECT_THAT(panel.view.selectedIndex(), Eq(0));
}

}  // namespace
}  // namespace horalo
