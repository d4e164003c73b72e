#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QTest>

#include "clipboard/views/conversion_toast_view.h"
#include "clipboard/views/copied_toast_view.h"
#include "clipboard/views/toast_shadow.h"
#include "tests/fakes/manual_timers.h"
#include "ui/appearance.h"
#include "ui/colors.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What a screen reader finds in a window, in order.
std::vector<std::string> labelsOf(QWidget& window) {
  std::vector<std::string> names;
  const std::function<void(QAccessibleInterface*)> visit = [&](QAccessibleInterface* node) {
    if (node->role() == QAccessible::StaticText) {
      names.push_back(node->text(QAccessible::Name).toStdString());
    }
    for (int i = 0; i < node->childCount(); ++i) visit(node->child(i));
  };
  visit(QAccessible::queryAccessibleInterface(&window));
  return names;
}

void setAppearance(bool dark, double textScale = 1, bool reducedMotion = false) {
  DesktopAppearance desktop;
  desktop.dark = dark;
  desktop.textScale = textScale;
  desktop.reducedMotion = reducedMotion;
  Appearance::shared().setDesktop(desktop);
}

// What would be on the screen over nothing, 1 pixel to 1.
QImage picture(QWidget& window) {
  QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  window.render(&image, {}, {}, QWidget::DrawChildren);
  return image;
}

class ToastViewsTest : public testing::Test {
 protected:
  void SetUp() override { setAppearance(false); }

  std::shared_ptr<ConversionToast> toast(const std::string& input = "1704067200") {
    return std::make_shared<ConversionToast>(
        ConversionToast::Texts{input, "Jan 1, 2024 at 9:00:00 AM", "2 years ago"},
        ConversionToast::Callbacks{
            [this] { calls_.emplace_back("copy"); }, [this] { calls_.emplace_back("dismiss"); },
            [this](bool inside) { calls_.emplace_back(inside ? "inside" : "outside"); }},
        timers_);
  }

  void click(QWidget& window, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(&window, button, {}, at);
  }

  ManualTimers timers_;
  std::vector<std::string> calls_;
};

TEST_F(ToastViewsTest, theirTitlesTellThemApart) {
  EXPECT_EQ(ConversionToastView().windowTitle(), QStringLiteral("Horalo Conversion Toast"));
  EXPECT_EQ(CopiedToastView().windowTitle(), QStringLiteral("Horalo Copied Toast"));
}

TEST_F(ToastViewsTest, sayTheirTexts) {
  CopiedToastView copied;
  copied.show();
  EXPECT_THAT(labelsOf(copied), ElementsAre("Copied"));
  ConversionToastView conversion;
  conversion.setToast(toast());
  conversion.show();
  EXPECT_THAT(labelsOf(conversion),
              ElementsAre("Jan 1, 2024 at 9:00:00 AM", "1704067200", "·", "2 years ago"));
}

TEST_F(ToastViewsTest, areAsLargeAsTheirContentAndItsPadding) {
  ConversionToastView view;
  view.setToast(toast());
  const auto label = [&](const QString& text) {
    for (auto* candidate : view.findChildren<TextLabel*>()) {
      if (candidate->text() == text) return candidate;
    }
    return static_cast<TextLabel*>(nullptr);
  };
  auto* const date = label(QStringLiteral("Jan 1, 2024 at 9:00:00 AM"));
  auto* const input = label(QStringLiteral("1704067200"));
  auto* const dot = label(QStringLiteral("·"));
  auto* const relative = label(QStringLiteral("2 years ago"));
  ASSERT_TRUE(date && input && dot && relative);
  const auto place = [&](QWidget* widget) {
    return QRect(widget->mapTo(&view, QPoint(0, 0)), widget->size());
  };
  // 16 around the card and 16 x 10 within it; then 14, the divider, 14 and the slot of 16.
  EXPECT_EQ(place(date).topLeft(), QPoint(32, 26));
  EXPECT_EQ(place(input).topLeft(), QPoint(32, 26 + date->height() + 3));
  EXPECT_EQ(place(dot).left(), place(input).left() + input->sizeHint().width() + 6);
  EXPECT_EQ(place(relative).left(), place(dot).left() + dot->sizeHint().width() + 6);
  const int textWidth =
      std::max(date->sizeHint().width(), input->sizeHint().width() + 6 + dot->sizeHint().width() +
                                             6 + relative->sizeHint().width());
  EXPECT_EQ(view.width(), 32 + textWidth + 14 + 1 + 14 + 16 + 32);
  EXPECT_EQ(view.height(), 26 + date->sizeHint().height() + 3 + input->sizeHint().height() + 26);
}

TEST_F(ToastViewsTest, aLongTextStaysOnOneLine) {
  ConversionToastView view;
  view.setToast(toast());
  const QSize usual = view.size();
  view.setToast(toast("1700000000." + std::string(89, '0')));
  EXPECT_EQ(view.height(), usual.height());
  EXPECT_GT(view.width(), usual.width() + 200);
  for (const auto* label : view.findChildren<TextLabel*>()) {
    EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
  }
  view.setToast(toast());
  EXPECT_EQ(view.size(), usual);
}

TEST_F(ToastViewsTest, aClickCopiesOnceAnywhereInTheWindow) {
  ConversionToastView view;
  for (const QPoint at : {QPoint(0, 0), QPoint(40, 40), QPoint(2, 60)}) {
    calls_.clear();
    view.setToast(toast());
    view.show();
    click(view, at);
    click(view, at);
    timers_.advance(0.6);
    click(view, at);
    timers_.advance(1);
    EXPECT_THAT(calls_, ElementsAre("copy", "dismiss"));
  }
}

TEST_F(ToastViewsTest, onlyAWholeClickOfTheFirstButtonCopies) {
  ConversionToastView view;
  view.setToast(toast());
  view.show();
  click(view, {40, 40}, Qt::RightButton);
  click(view, {40, 40}, Qt::MiddleButton);
  QTest::mousePress(&view, Qt::LeftButton, {}, {40, 40});
  QTest::mouseRelease(&view, Qt::LeftButton, {}, {40, -40});
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(ToastViewsTest, tellsOfThePointerComingAndGoing) {
  ConversionToastView view;
  const auto shown = toast();
  view.setToast(shown);
  view.show();
  QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
  QApplication::sendEvent(&view, &enter);
  EXPECT_TRUE(shown->isHovered());
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&view, &leave);
  EXPECT_FALSE(shown->isHovered());
  EXPECT_THAT(calls_, ElementsAre("inside", "outside"));
}

TEST_F(ToastViewsTest, aToastThatReplacesAHoveredOneIsHovered) {
  ConversionToastView view;
  view.setToast(toast("1"));
  view.show();
  view.setAttribute(Qt::WA_UnderMouse);
  QCoreApplication::processEvents();
  calls_.clear();
  const auto next = toast("2");
  view.setToast(next);
  EXPECT_FALSE(next->isHovered());
  QCoreApplication::processEvents();
  EXPECT_TRUE(next->isHovered());
  EXPECT_THAT(calls_, ElementsAre("inside"));
}

TEST_F(ToastViewsTest, theCopySymbolTurnsIntoAGreenCheckMark) {
  ConversionToastView view;
  view.setBackdrop(Backdrop::translucent);
  view.setToast(toast());
  view.show();
  const auto greens = [&] {
    const QImage image = picture(view);
    const QColor green = color(ColorRole::green);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = image.width() - 32 - 16; x < image.width() - 32; ++x) {
        const QColor pixel = image.pixelColor(x, y);
        if (pixel.green() > pixel.red() + 40 && pixel.green() > pixel.blue() + 20) ++count;
      }
    }
    return green.isValid() ? count : -1;
  };
  EXPECT_EQ(greens(), 0);
  click(view, {40, 40});
  EXPECT_TRUE(QTest::qWaitFor([&] { return greens() > 10; }));
  view.setToast(toast());
  EXPECT_EQ(greens(), 0);
}

TEST_F(ToastViewsTest, theCheckMarkComesAtOnceWithReducedMotion) {
  setAppearance(false, 1, true);
  ConversionToastView view;
  view.setBackdrop(Backdrop::translucent);
  view.setToast(toast());
  view.show();
  const QImage before = picture(view);
  click(view, {40, 40});
  const QImage after = picture(view);
  EXPECT_NE(before, after);
  QTest::qWait(200);
  EXPECT_EQ(picture(view), after);
}

TEST_F(ToastViewsTest, lieOnACardWithASoftShadow) {
  ConversionToastView view;
  view.setBackdrop(Backdrop::translucent);
  view.setToast(toast());
  view.show();
  const QImage image = picture(view);
  const int middle = image.width() / 2;
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_GE(image.pixelColor(middle, 40).alpha(), 245);
  // Below the card it is darker than above, and it fades out within the padding.
  const int below = image.pixelColor(middle, image.height() - 14).alpha();
  const int above = image.pixelColor(middle, 13).alpha();
  EXPECT_GT(below, above);
  EXPECT_GT(below, 10);
  EXPECT_LT(below, 40);
  EXPECT_LT(image.pixelColor(middle, image.height() - 1).alpha(), 8);
  EXPECT_LT(image.pixelColor(middle, 0).alpha(), 3);
  EXPECT_LT(image.pixelColor(0, image.height() / 2).alpha(), 4);
}

TEST_F(ToastViewsTest, areOpaqueWithinTheirShapeWithoutACompositor) {
  ConversionToastView conversion;
  conversion.setBackdrop(Backdrop::opaque);
  conversion.setToast(toast());
  CopiedToastView copied;
  copied.setBackdrop(Backdrop::opaque);
  for (ToastView* view : {static_cast<ToastView*>(&conversion), static_cast<ToastView*>(&copied)}) {
    view->setAlpha(0);  // there is no fading either
    const QRegion shape = view->shape();
    EXPECT_EQ(shape.boundingRect(), view->rect().adjusted(16, 16, -16, -16));
    EXPECT_FALSE(shape.contains(QPoint(16, 16)));
    const QImage image = picture(*view);
    const QRect card = shape.boundingRect();
    int pixels = 0;
    for (int y = 0; y < card.height(); ++y) {
      for (int x = 0; x < card.width(); ++x) {
        if (!shape.contains(card.topLeft() + QPoint(x, y))) continue;
        EXPECT_EQ(image.pixelColor(card.topLeft() + QPoint(x, y)).alpha(), 255);
        ++pixels;
      }
    }
    EXPECT_GT(pixels, card.width() * card.height() * 9 / 10);
  }
}

// The window system may round a window's shape up at such scales, and nothing but black would show.
TEST_F(ToastViewsTest, areOpaqueAroundTheirShapeAtOddScales) {
  CopiedToastView view;
  view.setBackdrop(Backdrop::opaque);
  auto* const card = view.findChild<ToastCard*>();
  for (const double scale : {1.25, 1.5, 1.75}) {
    QImage image((QSizeF(card->size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    card->render(&image, {}, {}, {});
    const QRect shape = card->shape().boundingRect();
    const QRect around = QRectF(QPointF(shape.topLeft()) * scale, QSizeF(shape.size()) * scale)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1);
    int translucent = 0;
    for (int y = around.top(); y <= around.bottom(); ++y) {
      for (int x = around.left(); x <= around.right(); ++x) {
        translucent += image.pixelColor(x, y).alpha() < 255 ? 1 : 0;
      }
    }
    EXPECT_EQ(translucent, 0) << scale;
  }
}

TEST_F(ToastViewsTest, haveSharpEdgesAtOddScales) {
  CopiedToastView view;
  view.setBackdrop(Backdrop::translucent);
  auto* const card = view.findChild<ToastCard*>();
  const QRect shape = card->shape().boundingRect();
  for (const double scale : {1.25, 1.5, 1.75}) {
    QImage image((QSizeF(card->size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    card->render(&image, {}, {}, {});
    // From the shadow to the card there is no pixel that is half of each.
    const int column = qRound(shape.center().x() * scale);
    const int edge = qRound((shape.y() + shape.height()) * scale);
    EXPECT_GT(image.pixelColor(column, edge - 1).alpha(), 240) << scale;
    EXPECT_LT(image.pixelColor(column, edge).alpha(), 60) << scale;
  }
}

TEST_F(ToastViewsTest, fadeAsAWhole) {
  CopiedToastView view;
  view.setBackdrop(Backdrop::translucent);
  view.show();
  const auto alpha = [&] { return picture(view).pixelColor(30, view.height() / 2).alpha(); };
  const int full = alpha();
  EXPECT_GE(full, 245);
  view.setAlpha(0);
  EXPECT_EQ(alpha(), 0);
  view.setAlpha(0.5);
  EXPECT_NEAR(alpha(), full / 2, 3);
  view.animateAlpha(1, 0.02);
  EXPECT_TRUE(QTest::qWaitFor([&] { return alpha() == full; }));
  view.animateAlpha(0, 10);
  view.setAlpha(1);
  QTest::qWait(40);
  EXPECT_EQ(alpha(), full);
}

TEST_F(ToastViewsTest, followTheAppearance) {
  CopiedToastView view;
  view.setBackdrop(Backdrop::translucent);
  view.show();
  const auto lightness = [&] {
    return picture(view).pixelColor(30, view.height() / 2).lightness();
  };
  EXPECT_GT(lightness(), 200);
  setAppearance(true);
  EXPECT_LT(lightness(), 80);
  const QSize usual = view.size();
  setAppearance(true, 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.width() > usual.width() * 1.3; }));
}

TEST(ToastShadow, isWhatABlurWouldMake) {
  const QRectF rect(16, 16, 100, 40);
  const QImage shadow = roundedShadow({132, 72}, rect, 10, {0.15, 12, 4}, 2);
  EXPECT_EQ(shadow.size(), QSize(264, 144));
  EXPECT_EQ(shadow.devicePixelRatio(), 2);
  EXPECT_EQ(qAlpha(shadow.pixel(132, 72)), 0) << "the card itself is left out";
  // Where the shadow's straight edge runs, 4 below the card, it is half as deep as it can be.
  EXPECT_NEAR(qAlpha(shadow.pixel(132, 120)), 0.15 * 255 / 2, 1.5);
}

}  // namespace
}  // namespace horalo
