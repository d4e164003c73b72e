#include "app/status_icon.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <optional>

#include "ui/appearance.h"
#include "ui/symbols.h"

namespace horalo {
namespace {

constexpr int kSize = 18;

// The folders in which a bundle, an installation and a build keep resources.
QStringList resourceFolders() {
  const QString program = QCoreApplication::applicationDirPath();
  return {program + QStringLiteral("/../Resources"), program + QStringLiteral("/../share/horalo"),
          program + QStringLiteral("/../../share/horalo"), program + QStringLiteral("/resources")};
}

// The template's image at a scale; null where there is none.
QImage templateImage(int scale) {
  const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
  for (const QString& folder : resourceFolders()) {
    const QImage image(folder + QStringLiteral("/menu-bar-icon") + suffix + QStringLiteral(".png"));
    if (!image.isNull()) return image;
  }
  return {};
}

// A template says where there is ink, whatever its own colour.
QImage tinted(const QImage& image, const QColor& ink, int scale) {
  QImage result(kSize * scale, kSize * scale, QImage::Format_ARGB32_Premultiplied);
  result.fill(Qt::transparent);
  QPainter painter(&result);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(result.rect(), image);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(result.rect(), ink);
  painter.end();
  result.setDevicePixelRatio(scale);
  return result;
}

}  // namespace

QIcon statusIcon(const QColor& ink) {
  QIcon icon;
  for (const int scale : {1, 2, 3}) {
    const QImage image = templateImage(scale);
    icon.addPixmap(QPixmap::fromImage(image.isNull() ? symbolImage(Symbol::clock, kSize, ink, scale)
                                                     : tinted(image, ink, scale)));
  }
  return icon;
}

QColor statusIconInk() {
  const Appearance& appearance = Appearance::shared();
  if (appearance.isDark()) return {0xf2, 0xf2, 0xf4};
  if (appearance.desktopIsDark()) return {0x1b, 0x1c, 0x1e};
  // Many panels are dark on a desktop that says nothing of it: 4:1 on black and on white.
  return {0x80, 0x80, 0x80};
}

}  // namespace horalo
