#include "clipboard/views/copied_toast_view.h"

#include <QHBoxLayout>

#include "clipboard/views/toast_symbol.h"
#include "ui/text_label.h"

namespace horalo {
namespace {

constexpr ToastStyle kStyle{
    .radius = 0, .outlineOpacity = 0.1, .outlineWidth = 1, .shadow = {0.15, 8, 4}};
constexpr int kSpacing = 8;
constexpr int kPaddingX = 16;
constexpr int kPaddingY = 10;
constexpr ToastSymbol::Look kMark{Symbol::checkmarkCircleFill, 17, ColorRole::green};
constexpr TextStyle kText{.size = 14, .weight = QFont::Medium};

}  // namespace

CopiedToastView::CopiedToastView() : ToastView(kStyle, QStringLiteral("Horalo Copied Toast")) {
  constexpr int kOuter = ToastCard::kPadding;
  auto* const layout = new QHBoxLayout(&card());
  layout->setContentsMargins(kOuter + kPaddingX, kOuter + kPaddingY, kOuter + kPaddingX,
                             kOuter + kPaddingY);
  layout->setSpacing(kSpacing);
  layout->addWidget(new ToastSymbol(kMark, 0, &card()));
  layout->addWidget(new TextLabel(kText, QStringLiteral("Copied"), &card()));
  fitContent();
}

}  // namespace horalo
