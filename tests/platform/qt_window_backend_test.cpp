#include "platform/qt/qt_window_backend.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace horalo {
namespace {

TEST(QtWindowBackendTest, PutsAWindowsLowerLeftCornerWhereItIsTold) {
  QtWindowBackend backend;
  QWidget panel;
  backend.configure(panel, WindowRole::panel);
  panel.resize(480, 280);
  backend.setFrameOrigin(panel, {100, 200});
  EXPECT_EQ(backend.frame(panel), (Rect{100, 200, 480, 280}));
  const int height = QGuiApplication::primaryScreen()->geometry().height();
  EXPECT_EQ(panel.pos(), QPoint(100, height - 200 - 280));
}

TEST(QtWindowBackendTest, KnowsTheScreen) {
  QtWindowBackend backend;
  const auto screen = backend.mainScreen();
  ASSERT_TRUE(screen);
  const QRect geometry = QGuiApplication::primaryScreen()->geometry();
  EXPECT_EQ(screen->frame, (Rect{0, 0, double(geometry.width()), double(geometry.height())}));
  QWidget window;
  window.move(-5000, -5000);
  ASSERT_TRUE(backend.screenOf(window));
  EXPECT_EQ(backend.screenOf(window)->frame, screen->frame);
}

TEST(QtWindowBackendTest, OnlyPanelsAndOrdinaryWindowsTakeTheKeyboard) {
  QtWindowBackend backend;
  for (const auto& [role, takes] : {std::pair{WindowRole::panel, true},
                                    {WindowRole::window, true},
                                    {WindowRole::toast, false},
                                    {WindowRole::guides, false}}) {
    QWidget window;
    backend.configure(window, role);
    EXPECT_EQ(window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus), !takes);
    EXPECT_EQ(window.testAttribute(Qt::WA_ShowWithoutActivating), !takes);
    EXPECT_EQ(window.windowFlags().testFlag(Qt::WindowTransparentForInput),
              role == WindowRole::guides);
    backend.orderFront(window, 0);
    EXPECT_TRUE(window.isVisible());
  }
}

}  // namespace
}  // namespace horalo
