#include "converter/views/timezone_picker_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMenu>
#include <QTest>

#include "tests/fakes/manual_clock.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;

constexpr Instant kWinter{1704067200, 0};
constexpr Instant kSummer{1719792000, 0};

struct Picker {
  explicit Picker(const char* zone = "Europe/Paris", Instant now = kWinter)
      : clock(now), zones(TimeZone::find(zone).value()) {
    view.render(zones.current());
    view.resize(view.sizeHint());
    view.show();
  }

  std::string label() {
    return QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Name).toStdString();
  }
  QMenu* menu() {
    for (QMenu* menu : view.findChildren<QMenu*>()) {
      if (menu->isVisible()) return menu;
    }
    return nullptr;
  }
  // Opens the menu and chooses the item with a title.
  void choose(const QString& title) {
    QTest::mouseClick(&view, Qt::LeftButton);
    ASSERT_NE(menu(), nullptr);
    for (QAction* action : menu()->actions()) {
      if (action->text() == title) action->trigger();
    }
    menu()->close();
  }

  ManualClock clock;
  FixedZone zones;
  std::vector<std::string> chosen;
  TimezonePickerView view{clock, zones,
                          [this](const TimeZone& zone) { chosen.push_back(zone.identifier()); }};
};

TEST(TimezonePickerView, ItsLabelIsTheAbbreviationAtThisMoment) {
  struct Case {
    const char* zone;
    Instant now;
    const char* label;
  };
  const std::vector<Case> cases = {
      {"Europe/Paris", kWinter, "CET"}, {"Europe/Paris", kSummer, "CEST"},
      {"Asia/Tokyo", kWinter, "JST"},   {"UTC", kWinter, "UTC"},
      {"Asia/Dubai", kWinter, "+04"},
  };
  int run = 0;
  for (const Case& test : cases) {
    EXPECT_THAT(Picker(test.zone, test.now).label(), Eq(test.label));
    ++run;
  }
  EXPECT_THAT(run, Eq(5));
}

TEST(TimezonePickerView, OffersTheLocalZoneThenTheCommonOnes) {
  Picker picker;
  QTest::mouseClick(&picker.view, Qt::LeftButton);
  ASSERT_NE(picker.menu(), nullptr);
  std::vector<std::string> titles;
  for (const QAction* action : picker.menu()->actions()) {
    titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    EXPECT_FALSE(action->isCheckable());
  }
  EXPECT_THAT(titles,
              ElementsAre("Local (CET)", "-", "Los Angeles (PT)", "Denver (MT)", "Chicago (CT)",
                          "New York (ET)", "London (GMT)", "Paris (CET)", "Berlin (CET)",
                          "Tokyo (JST)", "Shanghai (CST)", "Singapore (SGT)", "Sydney (AEDT)"));
  picker.menu()->close();
}

TEST(TimezonePickerView, TellsEveryChoiceAlsoOfTheSameZoneAgain) {
  Picker picker;
  picker.choose(QStringLiteral("Tokyo (JST)"));
  picker.choose(QStringLiteral("Tokyo (JST)"));
  picker.choose(QStringLiteral("Local (CET)"));
  EXPECT_THAT(picker.chosen, ElementsAre("Asia/Tokyo", "Asia/Tokyo", "Europe/Paris"));
}

TEST(TimezonePickerView, OpensByKeysAndScreenReader) {
  int run = 0;
  for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    Picker picker;
    QTest::keyClick(&picker.view, key);
    ASSERT_NE(picker.menu(), nullptr) << key;
    picker.menu()->close();
    ++run;
  }
  EXPECT_THAT(run, Eq(3));

  Picker picker;
  QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&picker.view);
  EXPECT_THAT(node->role(), Eq(QAccessible::Button));
  EXPECT_TRUE(node->state().hasPopup);
  node->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  ASSERT_NE(picker.menu(), nullptr);
  picker.menu()->close();
}

TEST(TimezonePickerView, LeavesArrowsAndOtherButtonsAlone) {
  Picker picker;
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QCoreApplication::sendEvent(&picker.view, &down);
  EXPECT_FALSE(down.isAccepted());
  QTest::mouseClick(&picker.view, Qt::RightButton);
  EXPECT_THAT(picker.menu(), Eq(nullptr));
  EXPECT_THAT(picker.chosen, IsEmpty());
}

TEST(TimezonePickerView, ItsMenusAreGoneOnceClosed) {
  Picker picker;
  for (int i = 0; i < 5; ++i) picker.choose(QStringLiteral("Paris (CET)"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return picker.view.findChildren<QMenu*>().isEmpty(); }));
}

TEST(TimezonePickerView, ALongNameIsCutRatherThanPushingOthersAside) {
  Picker usual;
  Picker picker;
  picker.view.render(TimeZone::fromPosixRule("<-03>3").value());
  EXPECT_THAT(picker.label(), Eq("-03"));
  const auto longName =
      TimeZone::fromPosixRule("ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUVWXYZ3");
  ASSERT_TRUE(longName.has_value());
  picker.view.render(*longName);
  EXPECT_THAT(picker.view.sizeHint().width(), testing::Le(200));
  EXPECT_THAT(picker.view.sizeHint().width(), testing::Gt(usual.view.sizeHint().width()));
}

}  // namespace
}  // namespace horalo
