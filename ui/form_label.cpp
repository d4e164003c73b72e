#include "ui/form_label.h"

#include <QEvent>
#include <QTextLayout>
#include <cmath>

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

QSize FormLabel::sizeHint() const {
  return withMargins(measures().oneLine);
}

QSize FormLabel::minimumSizeHint() const {
  const Measures& known = measures();
  return withMargins({known.longestWord, known.oneLine.height()});
}

int FormLabel::heightForWidth(int width) const {
  Measures& known = measures();
  if (width >= sizeHint().width()) return sizeHint().height();
  const auto [height, isNew] = known.heights.try_emplace(width);
  if (isNew) height->second = QLabel::heightForWidth(width);
  return height->second;
}

void FormLabel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) measures_.reset();
  QLabel::changeEvent(event);
}

FormLabel::Measures& FormLabel::measures() const {
  if (measures_ && measures_->text == text()) return *measures_;
  ensurePolished();
  QTextLayout layout(text(), font());
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  const auto whole = [](double length) { return static_cast<int>(std::ceil(length)); };
  const double height = line.isValid() ? line.height() : 0;
  measures_ = {
      text(), {whole(layout.maximumWidth()), whole(height)}, whole(layout.minimumWidth()), {}};
  return *measures_;
}

QSize FormLabel::withMargins(QSize size) const {
  const QMargins margins = contentsMargins();
  return {size.width() + margins.left() + margins.right(),
          size.height() + margins.top() + margins.bottom()};
}

}  // namespace horalo
