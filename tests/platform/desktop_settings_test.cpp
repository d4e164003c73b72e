#include "platform/dbus/desktop_settings.h"

#include <gtest/gtest.h>

namespace horalo {
namespace {

const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kGnome = QStringLiteral("org.gnome.desktop.interface");

class PortalAppearanceTest : public testing::Test {
 protected:
  DesktopAppearance after(const QString& space, const char* key, const QVariant& value) {
    portal_.set(space, QString::fromLatin1(key), value);
    return portal_.appearance();
  }

  PortalAppearance portal_;
};

TEST_F(PortalAppearanceTest, NothingToldMeansNothing) {
  EXPECT_EQ(portal_.appearance(), DesktopAppearance());
  EXPECT_EQ(after(kAppearance, "contrast", 1U), DesktopAppearance());
  EXPECT_EQ(after(kGnome, "clock-format", QStringLiteral("24h")), DesktopAppearance());
}

TEST_F(PortalAppearanceTest, FollowsTheColourScheme) {
  EXPECT_EQ(after(kAppearance, "color-scheme", 1U).dark, true);
  EXPECT_EQ(after(kAppearance, "color-scheme", 2U).dark, false);
  EXPECT_EQ(after(kAppearance, "color-scheme", 0U).dark, std::nullopt);
  after(kAppearance, "color-scheme", 1U);
  EXPECT_EQ(after(kAppearance, "color-scheme", QStringLiteral("dark")).dark, true);
}

TEST_F(PortalAppearanceTest, PrefersThePortalsReducedMotion) {
  EXPECT_TRUE(after(kGnome, "enable-animations", false).reducedMotion);
  EXPECT_FALSE(after(kAppearance, "reduced-motion", 0U).reducedMotion);
  EXPECT_TRUE(after(kAppearance, "reduced-motion", 1U).reducedMotion);
  EXPECT_TRUE(after(kGnome, "enable-animations", true).reducedMotion);
}

TEST_F(PortalAppearanceTest, KeepsTheTextScaleWithinReason) {
  EXPECT_EQ(after(kGnome, "text-scaling-factor", 1.25).textScale, 1.25);
  EXPECT_EQ(after(kGnome, "text-scaling-factor", 100.0).textScale, 3.0);
  EXPECT_EQ(after(kGnome, "text-scaling-factor", -1.0).textScale, 1.0);
}

}  // namespace
}  // namespace horalo
