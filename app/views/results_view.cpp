#include "app/views/results_view.h"

#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "ui/appearance.h"
#include "ui/colors.h"

namespace horalo {
namespace {

constexpr int kPadding = 8;
constexpr int kSpacing = 2;
constexpr int kRows = static_cast<int>(kRowCount);

QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Numbers and ISO dates read from left to right in every language.
Qt::LayoutDirection directionOf(int index) {
  return index <= static_cast<int>(RowKind::iso8601) ? Qt::LeftToRight : Qt::LayoutDirectionAuto;
}

}  // namespace

ResultsView::ResultsView(QWidget* parent) : QWidget(parent) {
  for (int i = 0; i < kRows; ++i) {
    ResultRowView& row = views_[static_cast<std::size_t>(i)];
    row.setParent(this);
    connect(&row, &ResultRowView::clicked, this,
            [this, i] { Q_EMIT rowClicked(i, values_[static_cast<std::size_t>(i)]); });
    connect(&row, &ResultRowView::pressed, this, [this] {
      clearSelection();
      Q_EMIT selectionStarted();
    });
  }
  connect(&Appearance::shared(), &Appearance::changed, this, &ResultsView::layOut);
}

void ResultsView::render(const std::array<ResultRow, kRowCount>& rows, int selectedIndex,
                         std::optional<int> copiedRowIndex) {
  for (int i = 0; i < kRows; ++i) {
    const auto n = static_cast<std::size_t>(i);
    values_[n] = rows[n].value;
    views_[n].render({.label = toQString(rows[n].label),
                      .value = toQString(rows[n].value),
                      .isSecondary = rows[n].isSecondary,
                      .isSelected = i == selectedIndex,
                      .isCopied = i == copiedRowIndex,
                      .direction = directionOf(i)});
  }
  fitValues();
  if (std::exchange(selectedIndex_, selectedIndex) != selectedIndex) reveal(selectedIndex);
}

QString ResultsView::selectedText() const {
  for (const ResultRowView& row : views_) {
    if (const QString text = row.selectedText(); !text.isEmpty()) return text;
  }
  return {};
}

void ResultsView::clearSelection() {
  for (ResultRowView& row : views_) row.clearSelection();
}

void ResultsView::layOut() {
  const int forRows = height() - 2 * kPadding - (kRows - 1) * kSpacing;
  rowHeight_ = std::clamp(forRows / kRows, ResultRowView::leastHeight(),
                          std::max(ResultRowView::leastHeight(), ResultRowView::preferredHeight()));
  scroll_ = std::clamp(scroll_, 0, overflow());
  for (int i = 0; i < kRows; ++i) {
    views_[static_cast<std::size_t>(i)].setGeometry(kPadding, rowTop(i) - scroll_,
                                                    width() - 2 * kPadding, rowHeight_);
  }
  fitValues();
}

// Digits stand below each other, so the longest value decides for all.
void ResultsView::fitValues() {
  int size = views_.front().fittingValueSize();
  for (const ResultRowView& row : views_) size = std::min(size, row.fittingValueSize());
  for (ResultRowView& row : views_) row.limitValueSize(size);
}

int ResultsView::rowTop(int index) const {
  return kPadding + index * (rowHeight_ + kSpacing);
}

int ResultsView::overflow() const {
  return std::max(0, rowTop(kRows) - kSpacing + kPadding - height());
}

void ResultsView::scrollTo(int offset) {
  const int scroll = std::clamp(offset, 0, overflow());
  if (scroll == scroll_) return;
  scroll_ = scroll;
  layOut();
  update();
}

void ResultsView::reveal(int index) {
  const int top = rowTop(index);
  if (top - kPadding < scroll_) scrollTo(top - kPadding);
  const int bottom = top + rowHeight_ + kPadding;
  if (bottom > scroll_ + height()) scrollTo(bottom - height());
}

void ResultsView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

void ResultsView::wheelEvent(QWheelEvent* event) {
  if (overflow() == 0) return event->ignore();
  const int pixels = event->pixelDelta().isNull() ? event->angleDelta().y() / 120 * rowHeight_
                                                  : event->pixelDelta().y();
  scrollTo(scroll_ - pixels);
}

void ResultsView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  if (overflow() == 0) return;
  // A thin mark at the edge tells that there is more, and where this is.
  constexpr double kThickness = 3;
  constexpr double kInset = 2.5;
  const double share = static_cast<double>(height()) / (height() + overflow());
  const double room = height() - 2 * kInset;
  const double top = kInset + room * (1 - share) * scroll_ / overflow();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(ColorRole::primary, 0.3));
  painter.drawRoundedRect(QRectF(width() - kInset - kThickness, top, kThickness, room * share),
                          kThickness / 2, kThickness / 2);
}

}  // namespace horalo
