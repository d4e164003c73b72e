#include "app/views/settings_section.h"

#include <QPainter>
#include <QVBoxLayout>

#include "app/views/settings_row.h"
#include "ui/divider.h"
#include "ui/fonts.h"
#include "ui/form_label.h"

namespace horalo {
namespace {

constexpr int kSidePadding = 12;
constexpr int kGap = 4;
constexpr double kFormCornerRadius = 12;
constexpr TextStyle kHeader{.size = 11, .weight = QFont::DemiBold, .color = ColorRole::secondary};
constexpr TextStyle kFooter{.size = kCaptionSize, .color = ColorRole::secondary};

// What the rows stand on.
class Background final : public QWidget {
 protected:
  void paintEvent(QPaintEvent* event) override {
    Q_UNUSED(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(ColorRole::section));
    painter.drawRoundedRect(rect(), kFormCornerRadius, kFormCornerRadius);
  }
};

}  // namespace

SettingsSection::SettingsSection(const QString& header, QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kGap);
  if (!header.isEmpty()) {
    auto* label = new FormLabel(kHeader, header);
    label->setContentsMargins(kSidePadding, 0, kSidePadding, 0);
    layout->addWidget(label);
  }
  auto* background = new Background;
  rows_ = new QVBoxLayout(background);
  rows_->setContentsMargins(kSidePadding, 0, kSidePadding - SettingsRow::kRingRoom, 0);
  rows_->setSpacing(0);
  layout->addWidget(background);

  footer_ = new FormLabel(kFooter);
  footer_->setContentsMargins(kSidePadding, 0, kSidePadding, 0);
  footer_->hide();
  layout->addWidget(footer_);
}

void SettingsSection::addRow(SettingsRow* row) {
  if (rows_->count() > 0) {
    auto* line = new QHBoxLayout;
    line->setContentsMargins(0, 0, SettingsRow::kRingRoom, 0);
    line->addWidget(new Divider(Qt::Horizontal));
    rows_->addLayout(line);
  }
  rows_->addWidget(row);
}

void SettingsSection::setFooter(const QString& text) {
  footer_->setText(text);
  footer_->setVisible(!text.isEmpty());
}

}  // namespace horalo
