#include "app/views/placeholder_view.h"

#include "ui/appearance.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

constexpr int kSpacing = 8;
constexpr TextStyle kTitle{
    .size = kHeadlineSize, .weight = QFont::DemiBold, .color = ColorRole::secondary};
// Stands back behind the title and keeps a contrast of 3:1 over everything that may shine through.
constexpr TextStyle kExamples{.size = kCaptionSize, .color = ColorRole::secondary, .opacity = 0.73};

}  // namespace

PlaceholderView::PlaceholderView(QWidget* parent)
    : QWidget(parent),
      title_(kTitle, QStringLiteral("Type a timestamp or date"), this),
      examples_(kExamples, QStringLiteral("Try: 1704067200, 2024-01-01T00:00:00Z, or \"now\""),
                this) {
  title_.setAlignment(Qt::AlignHCenter);
  examples_.setAlignment(Qt::AlignHCenter);
  connect(&Appearance::shared(), &Appearance::changed, this, &PlaceholderView::layOut);
}

void PlaceholderView::layOut() {
  const int title = title_.sizeHint().height();
  const int examples = examples_.sizeHint().height();
  const int top = (height() - title - kSpacing - examples) / 2;
  title_.setGeometry(0, top, width(), title);
  examples_.setGeometry(0, top + title + kSpacing, width(), examples);
}

void PlaceholderView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

}  // namespace horalo
