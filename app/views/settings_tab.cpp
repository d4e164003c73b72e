#include "app/views/settings_tab.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "ui/appearance.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr double kSymbolSize = 20;
constexpr double kAbove = 8;
constexpr double kGap = 3;
constexpr double kBelow = 2;
constexpr TextStyle kTitle{.size = 11, .weight = QFont::Medium, .color = ColorRole::accent};

}  // namespace

SettingsTab::SettingsTab(Symbol symbol, const QString& title, QWidget* parent)
    : QWidget(parent), symbol_(symbol), title_(title) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    updateGeometry();
    update();
  });
}

QSize SettingsTab::sizeHint() const {
  const QFontMetricsF metrics(fontOf(kTitle));
  const double height = kAbove + kSymbolSize + kGap + metrics.height() + kBelow;
  const double width = std::max(kSymbolSize, metrics.horizontalAdvance(title_));
  return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

void SettingsTab::amendAccessibleState(QAccessible::State& state) const {
  state.selectable = true;
  state.selected = true;
}

void SettingsTab::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  drawSymbol(painter, symbol_, QPointF(width() / 2.0, kAbove + kSymbolSize / 2), kSymbolSize,
             color(ColorRole::accent));
  const double top = kAbove + kSymbolSize + kGap;
  drawLine(painter, QRectF(0, top, width(), height() - top - kBelow), Qt::AlignHCenter, title_,
           fontOf(kTitle), colorOf(kTitle));
}

}  // namespace horalo
