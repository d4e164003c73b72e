#include "clipboard/views/conversion_toast_view.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "ui/divider.h"

namespace horalo {
namespace {

constexpr ToastStyle kStyle{
    .radius = 10, .outlineOpacity = 0.08, .outlineWidth = 0.5, .shadow = {0.15, 12, 4}};
constexpr int kSpacing = 14;
constexpr int kLineSpacing = 3;
constexpr int kWordSpacing = 6;
constexpr int kPaddingX = 16;
constexpr int kPaddingY = 10;
constexpr int kDividerHeight = 24;
constexpr double kSlotWidth = 16;
constexpr double kCopiedChange = 0.15;  // seconds
constexpr ToastSymbol::Look kCopyMark{Symbol::docOnDoc, 14, ColorRole::secondary};
constexpr ToastSymbol::Look kCopiedMark{Symbol::checkmark, 14, ColorRole::green};
constexpr TextStyle kDate{.size = 13, .weight = QFont::Medium};
constexpr TextStyle kDetail{.size = 11, .color = ColorRole::secondary};

}  // namespace

ConversionToastView::ConversionToastView()
    : ToastView(kStyle, QStringLiteral("Horalo Conversion Toast")),
      date_(new TextLabel(kDate, {}, &card())),
      input_(new TextLabel(kDetail, {}, &card())),
      dot_(new TextLabel(kDetail, QStringLiteral("·"), &card())),
      relative_(new TextLabel(kDetail, {}, &card())),
      mark_(new ToastSymbol(kCopyMark, kSlotWidth, &card())) {
  constexpr int kOuter = ToastCard::kPadding;
  auto* const row = new QHBoxLayout(&card());
  row->setContentsMargins(kOuter + kPaddingX, kOuter + kPaddingY, kOuter + kPaddingX,
                          kOuter + kPaddingY);
  row->setSpacing(kSpacing);

  auto* const details = new QHBoxLayout;
  details->setSpacing(kWordSpacing);
  details->addWidget(input_);
  details->addWidget(dot_);
  details->addWidget(relative_);
  details->addStretch(1);

  auto* const texts = new QVBoxLayout;
  texts->setSpacing(kLineSpacing);
  texts->addWidget(date_);
  texts->addLayout(details);
  row->addLayout(texts);

  auto* const divider = new Divider(Qt::Vertical, &card());
  divider->setFixedHeight(kDividerHeight);
  row->addWidget(divider, 0, Qt::AlignVCenter);
  row->addWidget(mark_, 0, Qt::AlignVCenter);
}

void ConversionToastView::setToast(std::shared_ptr<ConversionToast> toast) {
  toast_ = std::move(toast);
  const ConversionToast::Texts& texts = toast_->texts();
  date_->setText(QString::fromStdString(texts.date));
  input_->setText(QString::fromStdString(texts.input));
  relative_->setText(QString::fromStdString(texts.relative));
  mark_->set(kCopyMark);
  fitContent();
  // Where the pointer is over the toast before, no event says that it is over the new one.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (isVisible() && underMouse() && !toast_->isHovered()) setHovered(true);
      },
      Qt::QueuedConnection);
}

void ConversionToastView::enterEvent(QEnterEvent* event) {
  ToastView::enterEvent(event);
  setHovered(true);
}

void ConversionToastView::leaveEvent(QEvent* event) {
  ToastView::leaveEvent(event);
  setHovered(false);
}

void ConversionToastView::setHovered(bool inside) {
  if (toast_) toast_->setHovered(inside);
}

void ConversionToastView::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

void ConversionToastView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) return;
  if (!toast_ || toast_->copied()) return;
  toast_->tap();
  mark_->changeTo(kCopiedMark, kCopiedChange);
}

}  // namespace horalo
