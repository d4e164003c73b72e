#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/divider.h"
#include "ui/focus_ring.h"
#include "ui/switch.h"
#include "ui/symbol_button.h"
#include "ui/text_label.h"

namespace horalo {
namespace {

using testing::Contains;
using testing::Eq;

QAccessibleInterface& accessible(QWidget& widget) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
  if (interface == nullptr) throw std::runtime_error("the widget has no accessible interface");
  return *interface;
}

// The colour in the middle of the knob's place at the right or left end of the track.
QColor knobPlace(Switch& toggle, bool right) {
  const QImage image = toggle.grab().toImage();
  const int end = toggle.width() - kFocusRingMargin;
  return image.pixelColor(right ? end - 7 : end - 26 + 7, toggle.height() / 2);
}

TEST(Switch, TogglesByClickSpaceAndScreenReader) {
  Switch toggle(QStringLiteral("UTC"));
  toggle.resize(toggle.sizeHint());
  toggle.show();
  QSignalSpy clicked(&toggle, &QAbstractButton::clicked);
  QTest::mouseClick(&toggle, Qt::LeftButton);
  EXPECT_TRUE(toggle.isChecked());
  QTest::keyClick(&toggle, Qt::Key_Space);
  EXPECT_FALSE(toggle.isChecked());
  accessible(toggle).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(toggle.isChecked());
  EXPECT_THAT(clicked.count(), Eq(3));
}

TEST(Switch, LeavesArrowsAndReturnToTheWindow) {
  Switch toggle(QStringLiteral("UTC"));
  toggle.show();
  int run = 0;
  for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&toggle, &event);
    EXPECT_FALSE(event.isAccepted()) << key;
    ++run;
  }
  EXPECT_FALSE(toggle.isChecked());
  EXPECT_THAT(run, Eq(4));
}

TEST(Switch, IsACheckBoxToAScreenReader) {
  Switch toggle(QStringLiteral("UTC"));
  QAccessibleInterface& node = accessible(toggle);
  EXPECT_THAT(node.role(), Eq(QAccessible::CheckBox));
  EXPECT_THAT(node.text(QAccessible::Name), Eq(QStringLiteral("UTC")));
  EXPECT_TRUE(node.state().checkable);
  EXPECT_FALSE(node.state().checked);
  toggle.setChecked(true);
  EXPECT_TRUE(node.state().checked);
  EXPECT_THAT(node.actionInterface()->actionNames(),
              Contains(QAccessibleActionInterface::toggleAction()));
}

TEST(Switch, TakesAnAccessibleNameInPlaceOfAText) {
  Switch toggle;
  toggle.setAccessibleName(QStringLiteral("Launch at login"));
  EXPECT_THAT(accessible(toggle).text(QAccessible::Name), Eq(QStringLiteral("Launch at login")));
}

TEST(Switch, SlidesItsKnobAndComesToRest) {
  Appearance::shared().setDesktop({});
  Switch toggle;
  toggle.resize(toggle.sizeHint());
  toggle.show();
  const QColor knob = color(ColorRole::knob);
  EXPECT_THAT(knobPlace(toggle, false), Eq(knob));
  QTest::mouseClick(&toggle, Qt::LeftButton);
  EXPECT_THAT(knobPlace(toggle, false), Eq(knob));  // on its way
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return knobPlace(toggle, true) == knob && knobPlace(toggle, false) == color(ColorRole::accent);
  }));
}

TEST(Switch, JumpsWhereMotionIsReduced) {
  DesktopAppearance still;
  still.reducedMotion = true;
  Appearance::shared().setDesktop(still);
  Switch toggle;
  toggle.resize(toggle.sizeHint());
  toggle.show();
  toggle.setChecked(true);
  EXPECT_THAT(knobPlace(toggle, true), Eq(color(ColorRole::knob)));
  EXPECT_THAT(knobPlace(toggle, false), Eq(color(ColorRole::accent)));
  Appearance::shared().setDesktop({});
}

TEST(Switch, KeepsTheLaidDownSize) {
  Appearance::shared().setDesktop({});
  const QSize alone = Switch().sizeHint() - 2 * QSize(kFocusRingMargin, kFocusRingMargin);
  EXPECT_THAT(alone.width(), Eq(26));
  EXPECT_THAT(alone.height(), testing::Ge(15));
}

TEST(SymbolButton, IsPressedByClickKeysAndScreenReader) {
  SymbolButton button(Symbol::xmarkCircleFill, 16, QStringLiteral("Clear"));
  button.resize(button.sizeHint());
  button.show();
  QSignalSpy clicked(&button, &QAbstractButton::clicked);
  QTest::mouseClick(&button, Qt::LeftButton);
  QTest::keyClick(&button, Qt::Key_Space);
  QTest::keyClick(&button, Qt::Key_Return);
  accessible(button).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_THAT(clicked.count(), Eq(4));
  QTest::keyClick(&button, Qt::Key_Down);
  EXPECT_THAT(clicked.count(), Eq(4));
  EXPECT_THAT(accessible(button).role(), Eq(QAccessible::Button));
  EXPECT_THAT(accessible(button).text(QAccessible::Name), Eq(QStringLiteral("Clear")));
}

TEST(TextLabel, IsALabelWithItsTextForName) {
  TextLabel label({}, QStringLiteral("Could not parse input"));
  EXPECT_THAT(accessible(label).role(), Eq(QAccessible::StaticText));
  EXPECT_THAT(accessible(label).text(QAccessible::Name),
              Eq(QStringLiteral("Could not parse input")));
  label.setText(QStringLiteral("Detected: Now"));
  EXPECT_THAT(accessible(label).text(QAccessible::Name), Eq(QStringLiteral("Detected: Now")));
}

TEST(TextLabel, LetsClicksThrough) {
  struct Behind : QWidget {
    void mousePressEvent(QMouseEvent*) override { ++presses; }
    int presses = 0;
  } behind;
  behind.resize(100, 40);
  TextLabel label({}, QStringLiteral("text"), &behind);
  label.setGeometry(behind.rect());
  behind.show();
  QTest::mousePress(behind.window()->windowHandle(), Qt::LeftButton, {}, {20, 20});
  EXPECT_THAT(behind.presses, Eq(1));
}

TEST(Divider, IsAsThinAsAPixelAndSharp) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    QImage image(qRound(20 * scale), qRound(20 * scale), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawDivider(painter, QRectF(0, 7, 20, 1), Qt::Horizontal);
    painter.end();
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
      const int alpha = image.pixelColor(3, y).alpha();
      EXPECT_TRUE(alpha == 0 || alpha == color(ColorRole::separator).alpha()) << alpha;
      inked += alpha > 0 ? 1 : 0;
    }
    EXPECT_THAT(inked, Eq(static_cast<int>(scale))) << scale;
  }
}

TEST(Divider, IsEquallyThinWhereverItLies) {
  for (const double scale : {1.25, 1.5, 1.75}) {
    QImage image(qRound(20 * scale), qRound(40 * scale), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (int y = 0; y < 40; y += 5) drawDivider(painter, QRectF(0, y, 20, 1), Qt::Horizontal);
    painter.end();
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) inked += image.pixelColor(3, y).alpha() > 0 ? 1 : 0;
    EXPECT_THAT(inked, Eq(8)) << scale;
  }
}

}  // namespace
}  // namespace horalo
