#include "app/views/result_row_view.h"

#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/appearance.h"
#include "ui/fonts.h"
#include "ui/pixel_grid.h"
#include "ui/symbols.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr int kPaddingX = 12;
constexpr int kPaddingY = 6;
constexpr int kSpacing = 12;
constexpr int kLabelWidth = 70;
constexpr int kSlotWidth = 60;
constexpr double kRadius = 6;
constexpr double kLineHeight = 20;  // of a text of 14
constexpr double kHighlightOpacity = 0.08;
constexpr double kSelectionOpacity = 0.28;
constexpr double kCheckmarkSize = 12;
// A hand on a touchpad moves this far when it means to stand still.
constexpr double kJitter = 3;

constexpr TextStyle kLabel{.size = 12, .weight = QFont::Medium, .color = ColorRole::secondary};
constexpr TextStyle kValue{.size = 14, .fixed = true};
constexpr TextStyle kSecondaryValue{.size = 14, .color = ColorRole::secondary};

namespace hint {
constexpr TextStyle kCopy{.size = 10, .color = ColorRole::hint};
constexpr TextStyle kReturn{.size = 11, .weight = QFont::Medium, .color = ColorRole::hint};
constexpr double kSpacing = 4;
constexpr double kPaddingX = 5;
constexpr double kPaddingY = 2;
constexpr double kRadius = 4;
constexpr double kOpacity = 0.10;
constexpr double kLineHeight = 13;  // of a text of 11
}  // namespace hint

// Larger texts need a wider column; smaller ones leave it as it is.
double labelWidth() {
  return std::max<double>(kLabelWidth, scaledLength(kLabelWidth));
}

const TextStyle& valueStyle(bool isSecondary) {
  return isSecondary ? kSecondaryValue : kValue;
}

}  // namespace

// Fonts are loaded with the first value, so that an empty panel opens without them.
ResultRowView::ResultRowView(QWidget* parent) : QWidget(parent), labelFont_(fontOf(kLabel)) {
  setMouseTracking(true);
  connect(&Appearance::shared(), &Appearance::changed, this, &ResultRowView::updateLook);
}

int ResultRowView::preferredHeight() {
  return 2 * kPaddingY + qRound(scaledLength(kLineHeight));
}

int ResultRowView::leastHeight() {
  const double fixed = QFontMetricsF(fontOf(kValue)).height();
  const double plain = QFontMetricsF(fontOf(kSecondaryValue)).height();
  return static_cast<int>(std::ceil(std::max(fixed, plain)));
}

void ResultRowView::updateLook() {
  labelFont_ = fontOf(kLabel);
  layOut();
  update();
}

void ResultRowView::render(const Content& content) {
  if (content == content_) return;
  const Content before = std::exchange(content_, content);
  const bool renamed = before.label != content.label || before.value != content.value;
  if (renamed || before.isSecondary != content.isSecondary ||
      before.direction != content.direction) {
    layOut();
  }
  update();
  if (renamed) announceName(this);
  if (before.isSelected != content.isSelected) {
    QAccessible::State changed;
    changed.selected = true;
    announceState(this, changed);
  }
}

void ResultRowView::layOut() {
  value_.setText(content_.value, valueFont(), content_.direction);
  value_.setArea(QRectF(valueLeft(), 0, valueRoom(), height()));
}

QFont ResultRowView::valueFont() const {
  QFont font = fontOf(valueStyle(content_.isSecondary));
  font.setPixelSize(std::min(font.pixelSize(), mostValueSize_));
  return font;
}

double ResultRowView::valueLeft() const {
  return kPaddingX + labelWidth() + kSpacing;
}

double ResultRowView::valueRoom() const {
  return width() - kPaddingX - kSlotWidth - kSpacing - valueLeft();
}

// A text that the desktop enlarges gives that up again before it loses its end.
int ResultRowView::fittingValueSize() const {
  const TextStyle& style = valueStyle(content_.isSecondary);
  const QFont font = fontOf(style);
  const int size = font.pixelSize();
  const int usual = qRound(style.size);
  if (size <= usual) return size;
  const double width = QFontMetricsF(font).horizontalAdvance(content_.value);
  if (width <= valueRoom()) return size;
  return std::max(usual, static_cast<int>(size * valueRoom() / width));
}

void ResultRowView::limitValueSize(int most) {
  const int before = valueFont().pixelSize();
  mostValueSize_ = most;
  if (valueFont().pixelSize() == before) return;
  layOut();
  update();
}

void ResultRowView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

QRectF ResultRowView::slotRect() const {
  return QRectF(width() - kPaddingX - kSlotWidth, 0, kSlotWidth, height());
}

void ResultRowView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  if (content_.isSelected) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(ColorRole::primary, kHighlightOpacity));
    painter.drawRoundedRect(rect(), kRadius, kRadius);
  }
  const QRectF label(kPaddingX, 0, labelWidth(), height());
  drawLine(painter, label, Qt::AlignRight, content_.label, labelFont_, colorOf(kLabel));
  value_.draw(painter, colorOf(valueStyle(content_.isSecondary)),
              color(ColorRole::accent, kSelectionOpacity));
  if (content_.isCopied) {
    drawSymbol(painter, Symbol::checkmark, slotRect().center(), scaledLength(kCheckmarkSize),
               color(ColorRole::green));
  } else if (content_.isSelected) {
    paintCopyHint(painter);
  }
}

void ResultRowView::paintCopyHint(QPainter& painter) const {
  const QString copy = QStringLiteral("copy");
  const QString key = QStringLiteral("\u21B5");
  const QFont copyFont = fontOf(hint::kCopy);
  const QFont keyFont = fontOf(hint::kReturn);
  const double copyWidth = QFontMetricsF(copyFont).horizontalAdvance(copy);
  const double keyWidth = QFontMetricsF(keyFont).horizontalAdvance(key);
  const double width = copyWidth + hint::kSpacing + keyWidth + 2 * hint::kPaddingX;
  const double height = scaledLength(hint::kLineHeight) + 2 * hint::kPaddingY;
  const QPointF centre = slotRect().center();
  const QRectF chip =
      snapped(painter, QRectF(centre.x() - width / 2, centre.y() - height / 2, width, height));

  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(ColorRole::primary, hint::kOpacity));
  painter.drawRoundedRect(chip, hint::kRadius, hint::kRadius);
  const QRectF texts = chip.adjusted(hint::kPaddingX, 0, -hint::kPaddingX, 0);
  drawLine(painter, texts, Qt::AlignLeft, copy, copyFont, colorOf(hint::kCopy));
  drawLine(painter, texts, Qt::AlignRight, key, keyFont, colorOf(hint::kReturn));
}

void ResultRowView::clearSelection() {
  if (value_.clear()) update();
}

void ResultRowView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  Q_EMIT pressed();
  pressedAt_ = event->position();
  moved_ = false;
  value_.begin(pressedAt_->x());
}

void ResultRowView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (!pressedAt_) {
    const Qt::CursorShape shape = value_.covers(at) ? Qt::IBeamCursor : Qt::ArrowCursor;
    if (cursor().shape() != shape) setCursor(shape);
    return;
  }
  moved_ = moved_ || (at - *pressedAt_).manhattanLength() > kJitter;
  if (moved_ && value_.extend(at.x())) update();
}

void ResultRowView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressedAt_) return event->ignore();
  pressedAt_.reset();
  if (!moved_) {
    Q_EMIT clicked();
    return;
  }
  // What the mouse selects, the middle button pastes, on desktops that know that.
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (clipboard->supportsSelection() && value_.hasSelection()) {
    clipboard->setText(selectedText(), QClipboard::Selection);
  }
}

void ResultRowView::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second click of two is a click like the first.
  mousePressEvent(event);
}

QString ResultRowView::accessibleText() const {
  return content_.label + QStringLiteral(": ") + content_.value;
}

void ResultRowView::amendAccessibleState(QAccessible::State& state) const {
  state.selectable = true;
  state.selected = content_.isSelected;
}

QStringList ResultRowView::accessibleActions() const {
  return {QAccessibleActionInterface::pressAction()};
}

void ResultRowView::doAccessibleAction(const QString& name) {
  Q_UNUSED(name);
  Q_EMIT clicked();
}

}  // namespace horalo
