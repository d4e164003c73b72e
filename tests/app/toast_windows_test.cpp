#include "app/toast_windows.h"

#include <gtest/gtest.h>

#include <QApplication>

#include "clipboard/conversion_toast.h"
#include "clipboard/views/conversion_toast_view.h"
#include "clipboard/views/copied_toast_view.h"
#include "tests/fakes/fake_window_backend.h"
#include "tests/fakes/manual_timers.h"
#include "ui/appearance.h"

namespace horalo {
namespace {

class ToastWindowsTest : public testing::Test {
 protected:
  std::shared_ptr<ConversionToast> toast(const std::string& input) {
    return std::make_shared<ConversionToast>(
        ConversionToast::Texts{input, "Jan 1, 2024 at 9:00:00 AM", "2 years ago"},
        ConversionToast::Callbacks{[] {}, [] {}, {}}, timers_);
  }

  // The widget that a window made last; every test makes one.
  QWidget& widget() const {
    EXPECT_EQ(backend_.roles.size(), 1U);
    return *const_cast<QWidget*>(backend_.roles.begin()->first);
  }

  ManualTimers timers_;
  FakeWindowBackend backend_;
};

TEST_F(ToastWindowsTest, theConversionToastTakesThePointerAndNotTheKeyboard) {
  const auto window = makeConversionToastWindow(backend_);
  EXPECT_EQ(backend_.roles.begin()->second, WindowRole::toast);
}

TEST_F(ToastWindowsTest, thePointerGoesThroughTheCopiedToast) {
  const auto window = makeCopiedToastWindow(backend_);
  EXPECT_EQ(backend_.roles.begin()->second, WindowRole::guides);
  EXPECT_GT(window->fittingSize().width, 32);
}

TEST_F(ToastWindowsTest, growWithTheirTextAndStandWhereTheyAreTold) {
  const auto window = makeConversionToastWindow(backend_);
  window->setToast(toast("1"));
  const Size small = window->fittingSize();
  window->setToast(toast(std::string(100, '1')));
  EXPECT_GT(window->fittingSize().width, small.width + 100);
  EXPECT_EQ(window->fittingSize().height, small.height);
  window->setFrameOrigin({12, 65});
  EXPECT_EQ(backend_.origins.at(&widget()), (Point{12, 65}));
}

TEST_F(ToastWindowsTest, comeToTheFrontAndAreOrderedOut) {
  const auto window = makeCopiedToastWindow(backend_);
  window->setAlpha(0);
  window->orderFront();
  EXPECT_TRUE(widget().isVisible());
  EXPECT_EQ(backend_.timesInFront.at(&widget()), 1);
  window->animateAlpha(0, 0.2);
  EXPECT_TRUE(widget().isVisible());
  window->orderOut();
  EXPECT_FALSE(widget().isVisible());
}

TEST_F(ToastWindowsTest, followACompositorThatComesOrGoesBetweenTwoShows) {
  backend_.composited = false;
  const auto window = makeCopiedToastWindow(backend_);
  window->orderFront();
  EXPECT_FALSE(backend_.shapes.at(&widget()).isEmpty());
  backend_.composited = true;
  window->orderFront();
  EXPECT_TRUE(backend_.shapes.at(&widget()).isEmpty());
}

TEST_F(ToastWindowsTest, followACompositorThatComesOrGoesWhileTheyAreShown) {
  const auto conversion = makeConversionToastWindow(backend_);
  conversion->setToast(toast("1"));
  conversion->orderFront();
  const auto copied = makeCopiedToastWindow(backend_);
  copied->orderFront();
  ASSERT_EQ(backend_.roles.size(), 2U);
  for (const bool composited : {false, true}) {
    backend_.setComposited(composited);
    for (const auto& [window, role] : backend_.roles) {
      EXPECT_EQ(backend_.shapes.at(window).isEmpty(), composited)
          << window->windowTitle().toStdString();
    }
  }
}

TEST_F(ToastWindowsTest, areCutAnewToEachContent) {
  backend_.composited = false;
  const auto window = makeConversionToastWindow(backend_);
  window->setToast(toast("1"));
  window->orderFront();
  const QRect small = backend_.shapes.at(&widget()).boundingRect();
  EXPECT_EQ(small, widget().rect().adjusted(16, 16, -16, -16));
  window->setToast(toast(std::string(100, '1')));
  EXPECT_GT(backend_.shapes.at(&widget()).boundingRect().width(), small.width() + 100);
}

TEST_F(ToastWindowsTest, tellWhetherMotionIsWanted) {
  const auto window = makeCopiedToastWindow(backend_);
  DesktopAppearance still;
  still.reducedMotion = true;
  Appearance::shared().setDesktop(still);
  EXPECT_TRUE(window->reducesMotion());
  Appearance::shared().setDesktop({});
  EXPECT_FALSE(window->reducesMotion());
}

}  // namespace
}  // namespace horalo
