#include "ui/form_label.h"

#include <gtest/gtest.h>

#include "ui/fonts.h"

namespace horalo {
namespace {

constexpr TextStyle kStyle{.size = kCaptionSize, .color = ColorRole::secondary};

// What the library itself makes of the same text.
std::unique_ptr<QLabel> plainLabel(const FormLabel& label) {
  auto plain = std::make_unique<QLabel>(label.text());
  plain->setTextFormat(Qt::PlainText);
  plain->setWordWrap(true);
  plain->setFont(label.font());
  plain->setContentsMargins(label.contentsMargins());
  return plain;
}

TEST(FormLabel, IsAsHighAsItsLinesAtEveryWidth) {
  int widths = 0;
  for (const char* text : {"Toast position", "Display the Horalo icon in the menu bar.",
                           "Open settings with \u2318, from the converter window."}) {
    for (const int margin : {0, 12}) {
      FormLabel label(kStyle, QString::fromUtf8(text));
      label.setContentsMargins(margin, 0, margin, 0);
      const auto plain = plainLabel(label);
      for (int width = 40; width <= 480; width += 8) {
        const int height = label.heightForWidth(width);
        EXPECT_EQ(height, plain->heightForWidth(width)) << text << " at " << width;
        EXPECT_EQ(label.heightForWidth(width), height) << "asked again";
        ++widths;
      }
    }
  }
  EXPECT_EQ(widths, 3 * 2 * 56);
}

TEST(FormLabel, WishesForOneLineAndNeedsItsLongestWord) {
  const FormLabel label(kStyle, QStringLiteral("Never or always"));
  const FormLabel word(kStyle, QStringLiteral("always"));
  EXPECT_EQ(label.heightForWidth(label.sizeHint().width()), label.sizeHint().height());
  EXPECT_GT(label.heightForWidth(label.sizeHint().width() - 4), label.sizeHint().height());
  EXPECT_EQ(label.minimumSizeHint(), word.sizeHint());
}

TEST(FormLabel, FollowsItsTextAndItsFont) {
  FormLabel label(kStyle, QStringLiteral("short"));
  const QSize before = label.sizeHint();
  label.setText(QStringLiteral("not so short"));
  const QSize longer = label.sizeHint();
  EXPECT_GT(longer.width(), before.width());
  EXPECT_EQ(longer.height(), before.height());
  QFont font = label.font();
  font.setPixelSize(2 * font.pixelSize());
  label.setFont(font);
  EXPECT_GT(label.sizeHint().height(), longer.height());
  EXPECT_GT(label.heightForWidth(longer.width()), label.sizeHint().height());
}

}  // namespace
}  // namespace horalo
