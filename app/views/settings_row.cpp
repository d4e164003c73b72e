#include "app/views/settings_row.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/fonts.h"
#include "ui/form_label.h"

namespace horalo {
namespace {

constexpr int kPaddingAboveAndBelow = 7;
constexpr int kLineGap = 1;
constexpr int kGap = 12;
constexpr TextStyle kTitle{.size = 13};
constexpr TextStyle kDescription{.size = kCaptionSize, .color = ColorRole::secondary};

}  // namespace

SettingsRow::SettingsRow(const QString& title, const QString& description, QWidget* control,
                         int ringRoom, QWidget* parent)
    : QWidget(parent) {
  auto* titleLabel = new FormLabel(kTitle, title);
  titleLabel->setBuddy(control);
  // Read out with the control; the shortcut has the text that it shows for it.
  if (control->accessibleDescription().isEmpty()) control->setAccessibleDescription(description);

  auto* texts = new QVBoxLayout;
  texts->setSpacing(kLineGap);
  texts->addWidget(titleLabel);
  texts->addWidget(new FormLabel(kDescription, description));

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, kPaddingAboveAndBelow, kRingRoom - ringRoom, kPaddingAboveAndBelow);
  layout->setSpacing(kGap);
  layout->addLayout(texts, 1);
  layout->addWidget(control, 0, Qt::AlignVCenter);
}

}  // namespace horalo
