#include "app/views/error_view.h"

#include <QPainter>

#include "ui/appearance.h"
#include "ui/fonts.h"
#include "ui/symbols.h"

namespace horalo {
namespace {

constexpr int kSpacing = 8;
constexpr double kSymbolSize = 32;
constexpr TextStyle kMessage{
    .size = kHeadlineSize, .weight = QFont::DemiBold, .color = ColorRole::secondary};

}  // namespace

ErrorView::ErrorView(QWidget* parent) : QWidget(parent), message_(kMessage, {}, this) {
  message_.setAlignment(Qt::AlignHCenter);
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    layOut();
    update();
  });
}

void ErrorView::render(const std::string& message) {
  message_.setText(QString::fromStdString(message));
}

void ErrorView::layOut() {
  const int symbol = qRound(scaledLength(kSymbolSize));
  const int message = message_.sizeHint().height();
  const int top = (height() - symbol - kSpacing - message) / 2;
  symbolCentre_ = QPointF(width() / 2.0, top + symbol / 2.0);
  message_.setGeometry(0, top + symbol + kSpacing, width(), message);
}

void ErrorView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

void ErrorView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  drawSymbol(painter, Symbol::questionmarkCircle, symbolCentre_, scaledLength(kSymbolSize),
             color(ColorRole::secondary));
}

}  // namespace horalo
