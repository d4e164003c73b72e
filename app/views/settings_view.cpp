#include "app/views/settings_view.h"

#include <QPainter>
#include <QVBoxLayout>

#include "app/views/settings_tab.h"
#include "ui/appearance.h"
#include "ui/fonts.h"
#include "ui/text_label.h"

namespace horalo {
namespace {

constexpr TextStyle kVersion{.size = kCaptionSize, .color = ColorRole::secondary};
constexpr int kVersionAbove = 6;
constexpr int kVersionBelow = 9;

}  // namespace

SettingsView::SettingsView(const SettingsEnvironment& environment, const QString& version,
                           QWidget* parent)
    : QWidget(parent), environment_(environment) {
  setFixedSize(kSize);
  setFocusPolicy(Qt::ClickFocus);
  setLayoutDirection(Qt::LeftToRight);  // its texts are English everywhere
  connect(&Appearance::shared(), &Appearance::changed, this, qOverload<>(&QWidget::update));

  general_ = new GeneralSettingsView(environment);
  auto* versionLabel = new TextLabel(kVersion, QStringLiteral("Version ") + version);
  versionLabel->setAlignment(Qt::AlignHCenter);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, kVersionBelow);
  layout->setSpacing(0);
  layout->addWidget(new SettingsTab(Symbol::gear, QStringLiteral("General")));
  layout->addWidget(general_, 1);
  layout->addSpacing(kVersionAbove);
  layout->addWidget(versionLabel);
}

void SettingsView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter(this).fillRect(rect(), color(ColorRole::window));
}

void SettingsView::showEvent(QShowEvent* event) {
  general_->refresh();
  setFocus(Qt::OtherFocusReason);  // no control is chosen before somebody chooses one
  if (environment_.watch) watch_ = environment_.watch([this] { general_->refresh(); });
  QWidget::showEvent(event);
}

void SettingsView::hideEvent(QHideEvent* event) {
  general_->endRecording();
  watch_.reset();
  QWidget::hideEvent(event);
}

}  // namespace horalo
