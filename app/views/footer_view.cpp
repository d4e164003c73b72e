#include "app/views/footer_view.h"

#include "ui/appearance.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

constexpr int kPaddingX = 16;
constexpr int kPaddingY = 10;
constexpr int kSpacing = 16;
constexpr double kLineHeight = 20;
constexpr TextStyle kDetected{.size = kCaptionSize, .color = ColorRole::secondary};

}  // namespace

FooterView::FooterView(ConverterViewModel& viewModel, const Clock& clock, const ZoneSource& zones,
                       QWidget* parent)
    : QWidget(parent),
      viewModel_(viewModel),
      detected_(kDetected, {}, this),
      utc_(QStringLiteral("UTC"), this),
      timezone_(
          clock, zones, [this](const TimeZone& zone) { viewModel_.setTimezone(zone); }, this) {
  detected_.hide();
  // What the click did to the switch does not count, only that there was one.
  connect(&utc_, &QAbstractButton::clicked, this, [this] { viewModel_.toggleUTC(); });
  connect(&Appearance::shared(), &Appearance::changed, this, &FooterView::layOut);
}

void FooterView::render() {
  const auto& result = viewModel_.result();
  if (result) {
    detected_.setText(QStringLiteral("Detected: ") +
                      QString::fromStdString(description(result->source)));
  }
  detected_.setVisible(result.has_value());
  utc_.setChecked(viewModel_.isUTC());
  timezone_.render(viewModel_.selectedTimezone());
  layOut();
}

QSize FooterView::sizeHint() const {
  return {width(), 2 * kPaddingY + qRound(scaledLength(kLineHeight))};
}

void FooterView::layOut() {
  const auto centred = [this](int right, QSize size) {
    size.rheight() += (height() - size.height()) % 2;  // all texts on one line
    return QRect(QPoint(right - size.width(), (height() - size.height()) / 2), size);
  };
  // Controls keep room for the focus ring around them, which does not count as spacing.
  const QRect timezone = centred(width() - kPaddingX + kFocusRingMargin, timezone_.sizeHint());
  const QRect utc = centred(timezone.left() - kSpacing + 2 * kFocusRingMargin, utc_.sizeHint());
  timezone_.setGeometry(timezone);
  utc_.setGeometry(utc);
  const int room = utc.left() + kFocusRingMargin - kSpacing - kPaddingX;
  detected_.setGeometry(kPaddingX, 0, room, height());
}

void FooterView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

}  // namespace horalo
