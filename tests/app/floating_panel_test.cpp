#include "app/views/floating_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QWindow>

#include "tests/app/panel_fixture.h"
#include "tests/fakes/fake_window_backend.h"

namespace horalo {
namespace {

using testing::Eq;
using testing::Ge;
using testing::Optional;

constexpr Point kHome{480, 512.5};  // on the desktop of FakeWindowBackend
constexpr QPoint kFooter{240, 262};

struct Panel : PanelFixture {
  Panel() {
    panel.setOnClose([this] { ++closings; });
  }

  void show() {
    panel.place();
    panel.makeKeyAndOrderFront(0);
    panel.activateWindow();
    QCoreApplication::processEvents();
  }
  Point origin() { return backend.origins[&panel]; }
  GuidesWindow* guides() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* guides = qobject_cast<GuidesWindow*>(window);
      if (guides != nullptr && guides->isVisible()) return guides;
    }
    return nullptr;
  }
  // The mouse is pressed over the footer, and moved with the pointer at a place of the screen.
  void press(QPoint at = kFooter) {
    QTest::mousePress(panel.windowHandle(), Qt::LeftButton, {}, at);
  }
  void moveBy(double dx, double dy) {
    backend.pointer.x += dx;
    backend.pointer.y += dy;
    QTest::mouseMove(panel.windowHandle(), kFooter + QPoint(++nudge_ % 2, 0));
  }
  void release(QPoint at = kFooter) {
    QTest::mouseRelease(panel.windowHandle(), Qt::LeftButton, {}, at);
  }

  FakeWindowBackend backend;
  int closings = 0;
  ConverterView* view = new ConverterView(environment(), callbacks());
  FloatingPanel panel{backend, preferences, view};

 private:
  int nudge_ = 0;
};

TEST(FloatingPanel, IsAPanelOfTheLaidDownSize) {
  Panel panel;
  EXPECT_THAT(panel.panel.windowTitle(), Eq(QStringLiteral("Horalo")));
  EXPECT_THAT(panel.panel.size(), Eq(QSize(480, 280)));
  EXPECT_THAT(panel.view->geometry(), Eq(QRect(0, 0, 480, 280)));
  EXPECT_THAT(panel.backend.roles[&panel.panel], Eq(WindowRole::panel));
}

TEST(FloatingPanel, OpensAtHomeUntilItWasLeftElsewhere) {
  Panel panel;
  panel.show();
  EXPECT_THAT(panel.origin(), Eq(kHome));
  panel.preferences.setPanelPosition({-5000, 33});
  panel.show();
  EXPECT_THAT(panel.origin(), Eq(Point{-5000, 33}));
}

TEST(FloatingPanel, StaysWhereItIsWithoutAScreen) {
  Panel panel;
  panel.show();
  panel.backend.screen = std::nullopt;
  panel.preferences.setPanelPosition({1, 2});
  panel.show();
  EXPECT_THAT(panel.origin(), Eq(kHome));
  EXPECT_TRUE(panel.panel.isVisible());
  panel.press();
  EXPECT_THAT(panel.guides(), Eq(nullptr));
  panel.release();
}

TEST(FloatingPanel, ClosingRunsOnClose) {
  Panel panel;
  panel.show();
  EXPECT_THAT(panel.closings, Eq(0));
  panel.panel.close();
  EXPECT_FALSE(panel.panel.isVisible());
  EXPECT_THAT(panel.closings, Ge(1));
}

TEST(FloatingPanel, ClosesWhenItLosesTheKeyboard) {
  Panel panel;
  panel.show();
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !panel.panel.isVisible(); }));
  EXPECT_THAT(panel.closings, Ge(1));
}

TEST(FloatingPanel, RunsOnCloseTwiceWhereClosingTakesTheKeyboardToo) {
  Panel panel;
  panel.show();
  ASSERT_TRUE(panel.panel.isActiveWindow());
  panel.panel.close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return panel.closings == 2; }));
}

TEST(FloatingPanel, ItsOwnMenusDoNotCloseIt) {
  Panel panel;
  panel.show();
  QMenu menu;
  menu.addAction(QStringLiteral("item"));
  menu.popup({0, 0});
  QEvent deactivate(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&panel.panel, &deactivate);
  EXPECT_TRUE(panel.panel.isVisible());
  EXPECT_THAT(panel.closings, Eq(0));
  menu.close();
}

TEST(FloatingPanel, ClosesWithItsMenuWhereAnotherWindowTookTheKeyboardMeanwhile) {
  Panel panel;
  panel.show();
  auto* menu = new QMenu(&panel.panel);
  menu->addAction(QStringLiteral("item"));
  menu->popup({0, 0});
  QApplication::setActiveWindow(nullptr);
  ASSERT_FALSE(panel.panel.isActiveWindow());
  EXPECT_TRUE(panel.panel.isVisible());
  menu->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !panel.panel.isVisible(); }));
  EXPECT_THAT(panel.closings, Ge(1));
}

TEST(FloatingPanel, EscapeThatNobodyTookClosesIt) {
  Panel panel;
  panel.show();
  QTest::keyClick(&panel.panel, Qt::Key_Escape);
  EXPECT_FALSE(panel.panel.isVisible());
  EXPECT_THAT(panel.closings, Ge(1));
}

TEST(FloatingPanel, AWindowManagersCloseIsAClosing) {
  Panel panel;
  panel.show();
  panel.panel.windowHandle()->close();
  QCoreApplication::processEvents();
  EXPECT_FALSE(panel.panel.isVisible());
  EXPECT_THAT(panel.closings, Ge(1));
}

TEST(FloatingPanel, DragsFromHomeWithItsDeadZone) {
  Panel panel;
  panel.show();
  panel.press();
  panel.moveBy(18, 0);
  EXPECT_THAT(panel.origin(), Eq(kHome));
  panel.moveBy(1, 0);
  EXPECT_THAT(panel.origin(), Eq(Point{kHome.x + 19, kHome.y}));
  panel.moveBy(-2, 5);
  EXPECT_THAT(panel.origin(), Eq(kHome));
  panel.release();
  panel.moveBy(100, 0);
  EXPECT_THAT(panel.origin(), Eq(kHome));
}

TEST(FloatingPanel, EveryMouseUpSavesThePosition) {
  Panel panel;
  panel.show();
  EXPECT_THAT(panel.preferences.panelPosition(), Eq(std::nullopt));
  panel.press();
  panel.release();
  EXPECT_THAT(panel.preferences.panelPosition(), Optional(kHome));
  panel.press();
  panel.moveBy(-200, -100);
  panel.release();
  EXPECT_THAT(panel.preferences.panelPosition(), Optional(Point{kHome.x - 200, kHome.y - 100}));
}

TEST(FloatingPanel, GuidesShowWhileTheButtonIsDown) {
  Panel panel;
  panel.show();
  panel.press();
  GuidesWindow* first = panel.guides();
  ASSERT_NE(first, nullptr);
  EXPECT_THAT(panel.backend.timesInFront[first], Eq(1));
  panel.release();
  EXPECT_THAT(panel.guides(), Eq(nullptr));
  panel.press();
  EXPECT_NE(panel.guides(), nullptr);
  panel.panel.close();
  EXPECT_THAT(panel.guides(), Eq(nullptr));
}

TEST(FloatingPanel, OnlyWhatIsNoControlDragsIt) {
  Panel panel;
  panel.viewModel.setInput("1704067200");
  panel.show();
  struct Case {
    const char* what;
    QPoint at;
    bool drags;
  };
  const std::vector<Case> cases = {
      {"magnifying glass", {24, 27}, true},
      {"field", {200, 27}, false},
      {"clear button", {456, 27}, false},
      {"divider", {240, 54}, true},
      {"row", {240, 79}, false},
      {"edge beside a row", {3, 79}, true},
      {"between two rows", {240, 96}, true},
      {"detected", {60, 260}, true},
      {"footer", {240, 262}, true},
      {"switch", {405, 260}, false},
  };
  int run = 0;
  for (const Case& test : cases) {
    panel.press(test.at);
    EXPECT_THAT(panel.guides() != nullptr, Eq(test.drags)) << test.what;
    panel.release({-50, -50});  // elsewhere, so that nothing is pressed
    ++run;
  }
  EXPECT_THAT(run, Eq(10));
  EXPECT_FALSE(panel.viewModel.isUTC());
}

TEST(FloatingPanel, OtherButtonsDoNotDrag) {
  Panel panel;
  panel.show();
  QTest::mousePress(panel.panel.windowHandle(), Qt::RightButton, {}, kFooter);
  EXPECT_THAT(panel.guides(), Eq(nullptr));
  QTest::mouseRelease(panel.panel.windowHandle(), Qt::RightButton, {}, kFooter);
  EXPECT_THAT(panel.preferences.panelPosition(), Eq(std::nullopt));
}

TEST(FloatingPanel, IsCutToShapeWithoutACompositor) {
  Panel panel;
  panel.show();
  const auto shape = [&panel] { return panel.backend.shapes[&panel.panel]; };
  EXPECT_TRUE(shape().isEmpty());
  panel.backend.composited = false;
  panel.panel.updateBackdrop();
  EXPECT_FALSE(shape().contains(QPoint(0, 0)));
  EXPECT_TRUE(shape().contains(QPoint(240, 0)));
  EXPECT_THAT(panel.panel.grab().toImage().pixelColor(240, 200).alpha(), Eq(255));
  panel.backend.composited = true;
  panel.panel.updateBackdrop();
  EXPECT_TRUE(shape().isEmpty());
}

TEST(FloatingPanel, KeepsItsInputBetweenShows) {
  Panel panel;
  panel.viewModel.setInput("now");
  panel.show();
  panel.panel.close();
  panel.show();
  EXPECT_THAT(panel.panel.findChild<QLineEdit*>()->text(), Eq(QStringLiteral("now")));
}

}  // namespace
}  // namespace horalo
