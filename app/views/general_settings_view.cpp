#include "app/views/general_settings_view.h"

#include <QApplication>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "app/views/settings_row.h"
#include "app/views/settings_section.h"
#include "clipboard/toast_position.h"
#include "hotkey/hotkey_configuration.h"
#include "ui/picker.h"
#include "ui/scroll_bar.h"
#include "ui/switch.h"

namespace horalo {
namespace {

constexpr QMargins kFormMargins(18, 8, 18 - SlimScrollBar::kWidth, 8);
constexpr int kSectionGap = 10;
// How much of the form stays visible around the row that has the keyboard.
constexpr int kFocusMargin = 8;

int indexOfData(const QComboBox& picker, const QVariant& data) {
  for (int i = 0; i < picker.count(); ++i) {
    if (picker.itemData(i) == data) return i;
  }
  return -1;
}

}  // namespace

GeneralSettingsView::GeneralSettingsView(const SettingsEnvironment& environment, QWidget* parent)
    : QScrollArea(parent), environment_(environment), form_(new QWidget) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Always there, so that the form is as wide with it as without.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setVerticalScrollBar(new SlimScrollBar);
  setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(form_);
  layout->setContentsMargins(kFormMargins);
  layout->setSpacing(kSectionGap);

  Preferences& preferences = environment_.preferences;
  NotificationCenter& notifications = environment_.notifications;

  appSection_ = addSection();
  appSection_->addRow(makeSwitchRow(
      QStringLiteral("Launch at login"),
      QStringLiteral("Start Horalo automatically when you log in."),
      [&preferences] { return preferences.launchAtLogin(); },
      [this](bool on) {
        environment_.preferences.setLaunchAtLogin(on);
        environment_.loginItem.setEnabled(on);
      }));
  appSection_->addRow(makeSwitchRow(
      QStringLiteral("Show menu bar icon"),
      QStringLiteral("Display the Horalo icon in the menu bar for quick access."),
      [&preferences] { return preferences.showMenuBarIcon(); },
      [this](bool on) {
        environment_.preferences.setShowMenuBarIcon(on);
        environment_.notifications.post(notification::menuBarIconVisibilityDidChange);
        showHiddenIconHint();
      }));
  appSection_->addRow(makeSwitchRow(
      QStringLiteral("Close after copying"),
      QStringLiteral("Dismiss the converter window when you copy a result."),
      [&preferences] { return preferences.closeWindowAfterCopy(); },
      [&preferences](bool on) { preferences.setCloseWindowAfterCopy(on); }));
  appSection_->addRow(makeShortcutRow());

  SettingsSection* clipboard = addSection(QStringLiteral("Clipboard"));
  clipboard->addRow(makeSwitchRow(
      QStringLiteral("Auto-paste on open"),
      QStringLiteral("Automatically paste clipboard contents into the converter when opened."),
      [&preferences] { return preferences.autoPasteFromClipboard(); },
      [&preferences](bool on) { preferences.setAutoPasteFromClipboard(on); }));
  clipboard->addRow(makeSwitchRow(
      QStringLiteral("Background clipboard monitoring"),
      QStringLiteral("Show a notification toast whenever you copy a Unix timestamp or date."),
      [&preferences] { return preferences.clipboardMonitorEnabled(); },
      [&preferences, &notifications](bool on) {
        preferences.setClipboardMonitorEnabled(on);
        notifications.post(notification::clipboardMonitorSettingDidChange);
      }));
  clipboard->addRow(makeToastPositionRow());

  addSection()->addRow(makeIntervalRow(
      QStringLiteral("Clear input after closing"),
      QStringLiteral("Reset the converter input after the window has been closed for this long."),
      {{QStringLiteral("Never"), -1},
       {QStringLiteral("30 seconds"), 30},
       {QStringLiteral("1 minute"), 60},
       {QStringLiteral("5 minutes"), 300},
       {QStringLiteral("15 minutes"), 900}},
      [&preferences] { return preferences.autoClearDelay(); },
      [&preferences](double seconds) { preferences.setAutoClearDelay(seconds); }));

  addSection()->addRow(makeIntervalRow(
      QStringLiteral("Check for updates"),
      QStringLiteral("How often to check for new versions. You can always check manually from the "
                     "menu bar."),
      {{QStringLiteral("Manual only"), 0},
       {QStringLiteral("Daily"), 86'400},
       {QStringLiteral("Weekly"), 604'800},
       {QStringLiteral("Monthly"), 2'592'000}},
      [&preferences] { return preferences.shownUpdateCheckInterval(); },
      [&preferences, &notifications](double seconds) {
        preferences.setUpdateCheckInterval(seconds);
        notifications.post(notification::updateCheckIntervalDidChange);
      }));

  layout->addStretch(1);
  setWidget(form_);
  // The window's own colour shows through.
  viewport()->setAutoFillBackground(false);
  form_->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { scrollToFocus(now); });
  refresh();
}

void GeneralSettingsView::refresh() {
  for (const auto& refreshOne : refreshers_) refreshOne();
  showHiddenIconHint();
}

void GeneralSettingsView::endRecording() {
  recorder_->endRecording();
}

SettingsSection* GeneralSettingsView::addSection(const QString& header) {
  auto* section = new SettingsSection(header);
  form_->layout()->addWidget(section);
  return section;
}

SettingsRow* GeneralSettingsView::makeSwitchRow(const QString& title, const QString& description,
                                                std::function<bool()> stored,
                                                std::function<void(bool)> changed) {
  auto* control = new Switch;
  control->setAccessibleName(title);
  // clicked() is a person's doing; toggled() would also follow a refresh.
  connect(control, &QAbstractButton::clicked, this, std::move(changed));
  refreshers_.emplace_back(
      [control, stored = std::move(stored)] { control->setChecked(stored()); });
  return new SettingsRow(title, description, control);
}

SettingsRow* GeneralSettingsView::makeToastPositionRow() {
  auto* picker = new Picker;
  for (const ToastPosition position : kToastPositions) {
    picker->addItem(QString::fromUtf8(displayName(position)),
                    QString::fromUtf8(rawValue(position)));
  }
  connect(picker, &QComboBox::activated, this, [this, picker](int index) {
    environment_.preferences.setToastPosition(picker->itemData(index).toString().toStdString());
  });
  refreshers_.emplace_back([this, picker] {
    const ToastPosition stored = toastPosition(environment_.preferences.toastPosition());
    picker->setCurrentIndex(indexOfData(*picker, QString::fromUtf8(rawValue(stored))));
  });
  return new SettingsRow(QStringLiteral("Toast position"),
                         QStringLiteral("Where the notification toast appears on screen."), picker);
}

SettingsRow* GeneralSettingsView::makeIntervalRow(const QString& title, const QString& description,
                                                  const std::vector<Choice>& choices,
                                                  std::function<double()> stored,
                                                  std::function<void(double)> changed) {
  auto* picker = new Picker;
  for (const Choice& choice : choices) picker->addItem(choice.label, choice.seconds);
  connect(picker, &QComboBox::activated, this, [picker, changed = std::move(changed)](int index) {
    changed(picker->itemData(index).toDouble());
  });
  // A stored length that is none of the choices shows as no choice at all.
  refreshers_.emplace_back([picker, stored = std::move(stored)] {
    picker->setCurrentIndex(indexOfData(*picker, stored()));
  });
  return new SettingsRow(title, description, picker);
}

SettingsRow* GeneralSettingsView::makeShortcutRow() {
  recorder_ = new KeyRecorderView(HotkeyConfiguration::load(environment_.preferences),
                                  environment_.keyCodeOf);
  recorder_->onConfigurationChange = [this](const HotkeyConfiguration& configuration) {
    // Stored first: whoever hears of it may read it from the preferences.
    configuration.save(environment_.preferences);
    environment_.notifications.post(notification::hotkeyConfigurationDidChange, configuration);
  };
  recorder_->onRecordingChange = environment_.onRecordingChange;
  refreshers_.emplace_back(
      [this] { recorder_->setConfiguration(HotkeyConfiguration::load(environment_.preferences)); });
  return new SettingsRow(QStringLiteral("Keyboard shortcut"),
                         QStringLiteral("Global hotkey to open the converter."), recorder_, 0);
}

void GeneralSettingsView::showHiddenIconHint() {
  const bool hidden = !environment_.preferences.showMenuBarIcon();
  appSection_->setFooter(
      hidden
          ? QStringLiteral("Menu bar icon hidden. Open settings with ⌘, from the converter window.")
          : QString());
}

void GeneralSettingsView::scrollToFocus(QWidget* now) {
  if (now == nullptr || !form_->isAncestorOf(now)) return;
  QWidget* row = now;
  while (row != form_ && qobject_cast<SettingsRow*>(row) == nullptr) row = row->parentWidget();
  if (row != form_) ensureWidgetVisible(row, 0, kFocusMargin);
  ensureWidgetVisible(now, 0, 0);  // what matters most, where the row is too tall
}

}  // namespace horalo
