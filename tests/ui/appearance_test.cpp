#include "ui/appearance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QStyle>
#include <limits>

#include "ui/colors.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

using testing::Eq;
using testing::Ne;
using testing::Optional;

QPalette lightPalette() {
  return QPalette(QColor(0xE0, 0xE0, 0xE0));
}
QPalette darkPalette() {
  return QPalette(QColor(0x20, 0x20, 0x20));
}

class AppearanceTest : public testing::Test {
 protected:
  void SetUp() override {
    QApplication::setPalette(lightPalette());
    Appearance::shared().setDesktop({});
  }
  void TearDown() override {
    Appearance::shared().setDesktop({});
    QApplication::setPalette(QPalette());
  }

  static void tell(std::optional<bool> dark, std::optional<std::uint32_t> accent = std::nullopt,
                   double textScale = 1) {
    DesktopAppearance desktop;
    desktop.dark = dark;
    desktop.accent = accent;
    desktop.textScale = textScale;
    Appearance::shared().setDesktop(desktop);
  }
};

TEST_F(AppearanceTest, GoesByThePaletteWhereTheDesktopTellsNothing) {
  EXPECT_FALSE(Appearance::shared().isDark());
  int changes = 0;
  const auto connection = QObject::connect(&Appearance::shared(), &Appearance::changed, qApp,
                                           [&changes] { ++changes; });
  QApplication::setPalette(darkPalette());
  EXPECT_TRUE(Appearance::shared().isDark());
  EXPECT_THAT(changes, Eq(1));
  QApplication::setPalette(lightPalette());
  EXPECT_FALSE(Appearance::shared().isDark());
  EXPECT_THAT(changes, Eq(2));
  QObject::disconnect(connection);
}

TEST_F(AppearanceTest, TheDesktopsWordCountsMoreThanThePalette) {
  tell(true);
  EXPECT_TRUE(Appearance::shared().isDark());
  EXPECT_THAT(color(ColorRole::material), Eq(QColor(0x27, 0x28, 0x2C)));
  tell(false);
  EXPECT_FALSE(Appearance::shared().isDark());
  EXPECT_THAT(color(ColorRole::material), Eq(QColor(0xF6, 0xF6, 0xF8)));
}

TEST_F(AppearanceTest, LendsMenusColoursWhileThePaletteDisagrees) {
  const auto windowIsDark = [] {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
  };
  tell(true);
  EXPECT_TRUE(windowIsDark());
  tell(false);
  EXPECT_FALSE(windowIsDark());
  tell(true);
  EXPECT_TRUE(windowIsDark());
  tell(std::nullopt);
  EXPECT_FALSE(windowIsDark());
}

TEST_F(AppearanceTest, TheAccentIsTheDesktopsElseThePalettesElseOurs) {
  tell(false, 0xE01B24);
  EXPECT_THAT(color(ColorRole::accent), Eq(QColor(0xE0, 0x1B, 0x24)));

  QPalette purple = lightPalette();
  purple.setColor(QPalette::Highlight, QColor(0x80, 0x10, 0xA0));
  QApplication::setPalette(purple);
  tell(false);
  EXPECT_THAT(color(ColorRole::accent), Eq(QColor(0x80, 0x10, 0xA0)));

  QPalette plain = lightPalette();
  const QPalette ofStyle = QApplication::style()->standardPalette();
  plain.setColor(QPalette::Highlight, ofStyle.color(QPalette::Highlight));
  QApplication::setPalette(plain);
  EXPECT_THAT(Appearance::shared().accent(), Eq(std::nullopt));
  EXPECT_THAT(color(ColorRole::accent), Eq(QColor(0x2F, 0x6F, 0xED)));
  tell(true);
  EXPECT_THAT(color(ColorRole::accent), Eq(QColor(0x5B, 0x93, 0xFF)));
}

TEST_F(AppearanceTest, TextsFollowTheDesktopsFactorWithinReason) {
  struct Case {
    double told;
    double scale;
  };
  const std::vector<Case> cases = {{1, 1},
                                   {1.25, 1.25},
                                   {0.75, 0.75},
                                   {0, 1},
                                   {-2, 1},
                                   {100, 3},
                                   {0.001, 0.5},
                                   {std::numeric_limits<double>::quiet_NaN(), 1},
                                   {std::numeric_limits<double>::infinity(), 1}};
  int run = 0;
  for (const Case& test : cases) {
    tell(false, std::nullopt, test.told);
    EXPECT_THAT(Appearance::shared().textScale(), Eq(test.scale)) << test.told;
    EXPECT_THAT(interfaceFont(20).pixelSize(), Eq(qRound(20 * test.scale)));
    EXPECT_THAT(fixedFont(20).pixelSize(), Eq(qRound(20 * test.scale)));
    ++run;
  }
  EXPECT_THAT(run, Eq(9));
}

TEST_F(AppearanceTest, SaysNothingWhereNothingChanged) {
  tell(false, 0x112233, 1.5);
  QSignalSpy changed(&Appearance::shared(), &Appearance::changed);
  tell(false, 0x112233, 1.5);
  EXPECT_THAT(changed.count(), Eq(0));
  DesktopAppearance still;
  still.dark = false;
  still.accent = 0x112233;
  still.textScale = 1.5;
  still.reducedMotion = true;
  Appearance::shared().setDesktop(still);
  EXPECT_THAT(changed.count(), Eq(1));
  EXPECT_TRUE(Appearance::shared().reducedMotion());
}

TEST_F(AppearanceTest, FontsAreUprightAndOfTheirOwnWeight) {
  EXPECT_THAT(interfaceFont(12, QFont::Medium).weight(), Eq(QFont::Medium));
  EXPECT_THAT(fixedFont(14).weight(), Eq(QFont::Normal));
  EXPECT_FALSE(fixedFont(14).italic());
  EXPECT_THAT(fixedFont(14).family(), Ne(QString()));
}

}  // namespace
}  // namespace horalo
