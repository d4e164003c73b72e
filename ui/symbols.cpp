#include "ui/symbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <map>
#include <tuple>

#include "ui/pixel_grid.h"

// Resources of a static library are linked only where something names them, outside a namespace.
static void loadSymbols() {
  Q_INIT_RESOURCE(symbols);
}

namespace horalo {
namespace {

QString fileName(Symbol symbol) {
  switch (symbol) {
    case Symbol::checkmark:
      return QStringLiteral(":/symbols/checkmark.svg");
    case Symbol::checkmarkCircleFill:
      return QStringLiteral(":/symbols/checkmark.circle.fill.svg");
    case Symbol::clock:
      return QStringLiteral(":/symbols/clock.svg");
    case Symbol::docOnDoc:
      return QStringLiteral(":/symbols/doc.on.doc.svg");
    case Symbol::gear:
      return QStringLiteral(":/symbols/gear.svg");
    case Symbol::globe:
      return QStringLiteral(":/symbols/globe.svg");
    case Symbol::magnifyingglass:
      return QStringLiteral(":/symbols/magnifyingglass.svg");
    case Symbol::questionmarkCircle:
      return QStringLiteral(":/symbols/questionmark.circle.svg");
    case Symbol::xmarkCircleFill:
      return QStringLiteral(":/symbols/xmark.circle.fill.svg");
  }
  return {};
}

QImage draw(Symbol symbol, int pixels, const QColor& color, double scale) {
  static const bool loaded = (loadSymbols(), true);
  Q_UNUSED(loaded);
  QFile file(fileName(symbol));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QSvgRenderer(file.readAll()).render(&painter, QRectF(0, 0, pixels, pixels));
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  painter.end();
  image.setDevicePixelRatio(scale);
  return image;
}

}  // namespace

QImage symbolImage(Symbol symbol, double size, const QColor& color, double scale) {
  // A handful of symbols in a handful of colours and sizes: nothing is ever thrown away.
  using Key = std::tuple<Symbol, int, QRgb, double>;
  static std::map<Key, QImage> drawn;
  const int pixels = std::max(1, static_cast<int>(std::lround(size * scale)));
  const Key key(symbol, pixels, color.rgba(), scale);
  auto found = drawn.find(key);
  if (found == drawn.end()) found = drawn.emplace(key, draw(symbol, pixels, color, scale)).first;
  return found->second;
}

void drawSymbol(QPainter& painter, Symbol symbol, QPointF centre, double size,
                const QColor& color) {
  const double scale = painter.device()->devicePixelRatioF();
  const QImage image = symbolImage(symbol, size, color, scale);
  const double half = image.width() / scale / 2;
  painter.drawImage(snapped(painter, centre - QPointF(half, half)), image);
}

}  // namespace horalo
