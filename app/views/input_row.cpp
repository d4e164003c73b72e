#include "app/views/input_row.h"

#include <QPainter>
#include <utility>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

constexpr int kPaddingX = 16;
constexpr int kPaddingY = 14;
constexpr int kSpacing = 12;
constexpr double kLineHeight = 26;  // of a text of 20
constexpr double kGlassSize = 18;
constexpr double kClearSize = 16;

}  // namespace

InputRow::InputRow(ConverterInput::Environment environment, QWidget* parent)
    : QWidget(parent),
      input_(std::move(environment), this),
      clear_(Symbol::xmarkCircleFill, kClearSize, QStringLiteral("Clear"), this) {
  clear_.hide();
  connect(&input_, &QLineEdit::textChanged, this,
          [this](const QString& text) { Q_EMIT textChanged(text.toStdString()); });
  connect(&input_, &QLineEdit::returnPressed, this, &InputRow::submitted);
  connect(&clear_, &QAbstractButton::clicked, this, [this] {
    input_.setFocus(Qt::OtherFocusReason);  // the button is about to go
    Q_EMIT clearPressed();
  });
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    layOut();
    update();
  });
}

void InputRow::render(const std::string& text) {
  if (input_.text().toStdString() != text) input_.setText(QString::fromStdString(text));
  if (clear_.isHidden() != text.empty()) {
    clear_.setVisible(!text.empty());
    layOut();
  }
}

QSize InputRow::sizeHint() const {
  return {width(), 2 * kPaddingY + qRound(scaledLength(kLineHeight))};
}

void InputRow::layOut() {
  const QSize button = clear_.sizeHint();
  const int buttonLeft = width() - kPaddingX + kFocusRingMargin - button.width();
  clear_.setGeometry(QRect(QPoint(buttonLeft, (height() - button.height()) / 2), button));

  const int left = kPaddingX + qRound(scaledLength(kGlassSize)) + kSpacing;
  const int right =
      clear_.isHidden() ? width() - kPaddingX : buttonLeft + kFocusRingMargin - kSpacing;
  // A margin of its own on both sides makes room for what the caret draws around the text.
  QRect field(left - ConverterInput::kTextInset, 0, right - left + 2 * ConverterInput::kTextInset,
              height());
  input_.setGeometry(field);
  const double offCentre = height() / 2.0 - input_.textCentre();
  input_.setGeometry(field.translated(0, qRound(offCentre)));
}

void InputRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

void InputRow::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  const double size = scaledLength(kGlassSize);
  drawSymbol(painter, Symbol::magnifyingglass, QPointF(kPaddingX + size / 2, height() / 2.0), size,
             color(ColorRole::secondary));
}

}  // namespace horalo
