#include "ui/text_label.h"

#include <QPainter>
#include <cmath>

#include "ui/appearance.h"

namespace horalo {

TextLabel::TextLabel(const TextStyle& style, const QString& text, QWidget* parent)
    : QWidget(parent), style_(style), text_(text), font_(fontOf(style)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  connect(&Appearance::shared(), &Appearance::changed, this, &TextLabel::updateLook);
}

void TextLabel::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  updateGeometry();
  update();
  announceName(this);
}

void TextLabel::setAlignment(Qt::Alignment alignment) {
  alignment_ = alignment;
  update();
}

QSize TextLabel::sizeHint() const {
  const QSizeF size = lineSize(font_, text_);
  return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

void TextLabel::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  drawLine(painter, rect(), alignment_, text_, font_, colorOf(style_));
}

void TextLabel::updateLook() {
  font_ = fontOf(style_);
  updateGeometry();
  update();
}

}  // namespace horalo
