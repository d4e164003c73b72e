#include "ui/appearance.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "ui/standard_palette.h"

namespace horalo {
namespace {

// Texts larger than this no longer fit windows of a fixed size.
constexpr double kLargestTextScale = 3;
constexpr double kSmallestTextScale = 0.5;

bool isDarkPalette() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::WindowText).lightness() >
         palette.color(QPalette::Window).lightness();
}

// A highlight that is merely the widget style's own says nothing about the desktop.
std::optional<std::uint32_t> paletteAccent() {
  const QColor highlight = QGuiApplication::palette().color(QPalette::Highlight);
  if (highlight == QApplication::style()->standardPalette().color(QPalette::Highlight)) {
    return std::nullopt;
  }
  return highlight.rgb() & 0xFFFFFFU;
}

}  // namespace

Appearance& Appearance::shared() {
  // Lives as long as the application, so that it is rebuilt where a test makes another one.
  static Appearance* shared = nullptr;
  if (shared == nullptr) {
    shared = new Appearance();
    shared->setParent(qApp);
    connect(shared, &QObject::destroyed, [] { shared = nullptr; });
  }
  return *shared;
}

Appearance::Appearance() {
  update();
  qApp->installEventFilter(this);
}

void Appearance::setDesktop(const DesktopAppearance& desktop) {
  const bool toldAnew =
      desktop.reducedMotion != desktop_.reducedMotion || desktop.dark != desktop_.dark;
  desktop_ = desktop;
  if (update() || toldAnew) Q_EMIT changed();
}

bool Appearance::update() {
  std::optional<std::uint32_t> accent = desktop_.accent;
  if (!paletteIsOurs_) {
    paletteIsDark_ = isDarkPalette();
    if (!accent) accent = paletteAccent();
  }
  const bool dark = desktop_.dark.value_or(paletteIsDark_);
  const double scale = std::isfinite(desktop_.textScale) && desktop_.textScale > 0
                           ? std::clamp(desktop_.textScale, kSmallestTextScale, kLargestTextScale)
                           : 1.0;
  if (dark == dark_ && accent == accent_ && scale == textScale_) return false;
  dark_ = dark;
  accent_ = accent;
  textScale_ = scale;
  dressStandardWidgets();
  return true;
}

void Appearance::dressStandardWidgets() {
  const bool lend = dark_ != paletteIsDark_;
  if (!lend && !paletteIsOurs_) return;
  paletteIsOurs_ = lend;
  QApplication::setPalette(lend ? standardPalette() : QPalette());
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
  // Every event of the program comes by here: look at its type first.
  switch (event->type()) {
    case QEvent::ApplicationPaletteChange:
      if (watched == qApp && !paletteIsOurs_ && update()) Q_EMIT changed();
      break;
    case QEvent::ApplicationFontChange:
      if (watched == qApp) Q_EMIT changed();  // every text is laid out anew
      break;
    default:
      break;
  }
  return false;
}

}  // namespace horalo
