#include "ui/form_label.h"

#include "ui/appearance.h"

namespace horalo {

FormLabel::FormLabel(const TextStyle& style, const QString& text, QWidget* parent)
    : QLabel(text, parent), style_(style) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  updateLook();
  connect(&Appearance::shared(), &Appearance::changed, this, &FormLabel::updateLook);
}

void FormLabel::updateLook() {
  setFont(fontOf(style_));
  QPalette own = palette();
  own.setColor(QPalette::WindowText, colorOf(style_));
  setPalette(own);
}

}  // namespace horalo
