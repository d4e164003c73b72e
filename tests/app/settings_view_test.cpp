#include "app/views/settings_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <map>
#include <memory>
#include <string>

#include "hotkey/hotkey_configuration.h"
#include "hotkey/views/key_recorder_view.h"
#include "preferences/preferences_store.h"
#include "preferences/preferences_watcher.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"
#include "ui/appearance.h"
#include "ui/divider.h"
#include "ui/focus_ring.h"
#include "ui/picker.h"
#include "ui/switch.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::array kAllNotifications{
    notification::hotkeyConfigurationDidChange, notification::menuBarIconVisibilityDidChange,
    notification::updateCheckIntervalDidChange, notification::clipboardMonitorSettingDidChange,
    notification::appDidCopyToClipboard};

class SettingsViewTest : public testing::Test {
 protected:
  SettingsViewTest() {
    for (const std::string_view name : kAllNotifications) {
      notifications_.observe(name, [this, name](const std::any& object) {
        posted_.emplace_back(name);
        object_ = object;
      });
    }
  }

  void open() {
    view_ = std::make_unique<SettingsView>(
        SettingsEnvironment{preferences_, notifications_, loginItem_,
                            [this](bool recording) { recording_.push_back(recording); },
                            [](std::uint32_t scanCode) { return std::optional(scanCode); },
                            [this](std::function<void()> changed) {
                              return std::make_shared<PreferencesWatcher>(store_, timers_,
                                                                          std::move(changed));
                            }},
        QStringLiteral("1.3.0"));
    view_->show();
    QApplication::processEvents();
  }

  template <typename Control>
  Control* named(const char* name) const {
    for (auto* control : view_->findChildren<Control*>()) {
      QAccessibleInterface* node = QAccessible::queryAccessibleInterface(control);
      if (node->text(QAccessible::Name) == QString::fromUtf8(name)) return control;
    }
    ADD_FAILURE() << "no control called " << name;
    return nullptr;
  }

  // The picker of a row, found as a screen reader finds it: by the label that names it.
  Picker* picker(const char* title) const {
    for (auto* label : view_->findChildren<QLabel*>()) {
      if (label->text() == QString::fromUtf8(title)) return qobject_cast<Picker*>(label->buddy());
    }
    return nullptr;
  }

  static void choose(Picker* picker, const char* text) {
    const int index = picker->findText(QString::fromUtf8(text));
    ASSERT_GE(index, 0) << text;
    picker->setCurrentIndex(index);
    Q_EMIT picker->activated(index);
  }

  QStringList visibleTexts() const {
    QStringList texts;
    for (const auto* label : view_->findChildren<QLabel*>()) {
      if (label->isVisible()) texts << label->text();
    }
    return texts;
  }

  TemporaryFolder folder_;
  ManualTimers timers_;
  PreferencesStore store_{folder_.path(QStringLiteral("preferences.plist")).toStdString(), timers_};
  Preferences preferences_{store_};
  NotificationCenter notifications_;
  LoginItem loginItem_{folder_.path(QStringLiteral("autostart/entry.desktop")).toStdString(),
                       "/usr/bin/horalo"};
  std::vector<std::string> posted_;
  std::any object_;
  std::vector<bool> recording_;
  std::unique_ptr<SettingsView> view_;
};

TEST_F(SettingsViewTest, AFreshInstallationShowsTheDefaultsAndStoresNothing) {
  open();
  EXPECT_EQ(view_->size(), QSize(450, 440));
  const std::vector<std::pair<const char*, bool>> switches{
      {"Launch at login", false},
      {"Show menu bar icon", true},
      {"Close after copying", true},
      {"Auto-paste on open", false},
      {"Background clipboard monitoring", false}};
  for (const auto& [name, on] : switches) EXPECT_EQ(named<Switch>(name)->isChecked(), on) << name;
  EXPECT_EQ(picker("Toast position")->currentText(), QStringLiteral("Bottom Center"));
  EXPECT_EQ(picker("Clear input after closing")->currentText(), QStringLiteral("1 minute"));
  EXPECT_EQ(picker("Check for updates")->currentText(), QStringLiteral("Daily"));
  EXPECT_THAT(posted_, IsEmpty());
  EXPECT_TRUE(store_.values().empty());
}

TEST_F(SettingsViewTest, EverySwitchStoresItsValueAndAnnouncesItOnce) {
  open();
  struct Row {
    const char* title;
    bool (Preferences::*stored)() const;
    std::vector<std::string> posts;
  };
  const std::vector<Row> rows{
      {"Launch at login", &Preferences::launchAtLogin, {}},
      {"Show menu bar icon", &Preferences::showMenuBarIcon, {"menuBarIconVisibilityDidChange"}},
      {"Close after copying", &Preferences::closeWindowAfterCopy, {}},
      {"Auto-paste on open", &Preferences::autoPasteFromClipboard, {}},
      {"Background clipboard monitoring",
       &Preferences::clipboardMonitorEnabled,
       {"clipboardMonitorSettingDidChange"}}};
  for (const Row& row : rows) {
    auto* control = named<Switch>(row.title);
    const bool before = (preferences_.*row.stored)();
    for (const bool wanted : {!before, before}) {
      posted_.clear();
      control->click();
      EXPECT_EQ((preferences_.*row.stored)(), wanted) << row.title;
      EXPECT_EQ(posted_, row.posts) << row.title;
    }
  }
}

TEST_F(SettingsViewTest, LaunchAtLoginWritesAndRemovesTheEntry) {
  open();
  named<Switch>("Launch at login")->click();
  EXPECT_TRUE(loginItem_.isEnabled());
  named<Switch>("Launch at login")->click();
  EXPECT_FALSE(loginItem_.isEnabled());
}

TEST_F(SettingsViewTest, ToastPositionsAreStoredByTheirNames) {
  open();
  const std::vector<std::pair<const char*, const char*>> positions{
      {"Top Left", "topLeft"},           {"Top Center", "topCenter"},
      {"Top Right", "topRight"},         {"Bottom Left", "bottomLeft"},
      {"Bottom Center", "bottomCenter"}, {"Bottom Right", "bottomRight"}};
  Picker* control = picker("Toast position");
  ASSERT_EQ(control->count(), 6);
  for (int i = 0; i < control->count(); ++i) {
    const auto& [label, stored] = positions[static_cast<std::size_t>(i)];
    EXPECT_EQ(control->itemText(i), QString::fromUtf8(label));
    choose(control, label);
    EXPECT_EQ(preferences_.toastPosition(), stored);
  }
  EXPECT_THAT(posted_, IsEmpty());
}

TEST_F(SettingsViewTest, IntervalsAreStoredInSeconds) {
  open();
  Picker* clear = picker("Clear input after closing");
  const std::vector<std::pair<const char*, double>> delays{
      {"Never", -1}, {"30 seconds", 30}, {"1 minute", 60}, {"5 minutes", 300}, {"15 minutes", 900}};
  ASSERT_EQ(clear->count(), static_cast<int>(delays.size()));
  for (const auto& [label, seconds] : delays) {
    choose(clear, label);
    EXPECT_EQ(preferences_.autoClearDelay(), seconds);
  }
  EXPECT_THAT(posted_, IsEmpty());

  Picker* updates = picker("Check for updates");
  const std::vector<std::pair<const char*, double>> intervals{
      {"Manual only", 0}, {"Daily", 86400}, {"Weekly", 604800}, {"Monthly", 2592000}};
  ASSERT_EQ(updates->count(), static_cast<int>(intervals.size()));
  for (const auto& [label, seconds] : intervals) {
    posted_.clear();
    choose(updates, label);
    EXPECT_EQ(preferences_.updateCheckInterval(), seconds);
    EXPECT_THAT(posted_, ElementsAre("updateCheckIntervalDidChange"));
  }
}

TEST_F(SettingsViewTest, ChoosingWhatIsShownStoresItAllTheSame) {
  open();
  EXPECT_EQ(preferences_.updateCheckInterval(), 0);
  choose(picker("Check for updates"), "Daily");
  EXPECT_EQ(preferences_.updateCheckInterval(), 86400);
  EXPECT_THAT(posted_, ElementsAre("updateCheckIntervalDidChange"));
}

TEST_F(SettingsViewTest, AHiddenIconIsExplained) {
  const QString hint =
      QStringLiteral("Menu bar icon hidden. Open settings with ⌘, from the converter window.");
  open();
  EXPECT_FALSE(visibleTexts().contains(hint));
  named<Switch>("Show menu bar icon")->click();
  EXPECT_TRUE(visibleTexts().contains(hint));
  named<Switch>("Show menu bar icon")->click();
  EXPECT_FALSE(visibleTexts().contains(hint));
}

TEST_F(SettingsViewTest, FollowsWhatIsStoredWithoutAnnouncingIt) {
  open();
  preferences_.setAutoPasteFromClipboard(true);
  preferences_.setToastPosition("topRight");
  preferences_.setAutoClearDelay(300);
  HotkeyConfiguration{40, 0x100000}.save(preferences_);
  view_->general().refresh();
  EXPECT_TRUE(named<Switch>("Auto-paste on open")->isChecked());
  EXPECT_EQ(picker("Toast position")->currentText(), QStringLiteral("Top Right"));
  EXPECT_EQ(picker("Clear input after closing")->currentText(), QStringLiteral("5 minutes"));
  EXPECT_EQ(view_->findChild<KeyRecorderView*>()->accessibleDescription(), QStringLiteral("⌘K"));
  EXPECT_THAT(posted_, IsEmpty());
}

TEST_F(SettingsViewTest, AStoredValueThatIsNoChoiceShowsNone) {
  preferences_.setAutoClearDelay(7);
  preferences_.setToastPosition("middle");
  open();
  EXPECT_EQ(picker("Clear input after closing")->currentIndex(), -1);
  EXPECT_EQ(picker("Toast position")->currentText(), QStringLiteral("Bottom Center"));
}

TEST_F(SettingsViewTest, ANewShortcutIsStoredBeforeItIsAnnounced) {
  open();
  HotkeyConfiguration storedAtThePost;
  notifications_.observe(notification::hotkeyConfigurationDidChange, [&](const std::any&) {
    storedAtThePost = HotkeyConfiguration::load(preferences_);
  });
  const HotkeyConfiguration wanted{40, 0x1E0000};
  view_->findChild<KeyRecorderView*>()->onConfigurationChange(wanted);
  EXPECT_EQ(storedAtThePost, wanted);
  EXPECT_THAT(posted_, ElementsAre("hotkeyConfigurationDidChange"));
  EXPECT_EQ(std::any_cast<HotkeyConfiguration>(object_), wanted);
}

TEST_F(SettingsViewTest, ClosingEndsTheRecordingOfAShortcut) {
  open();
  auto* recorder = view_->findChild<KeyRecorderView*>();
  QTest::mouseClick(recorder, Qt::LeftButton);
  EXPECT_THAT(recording_, ElementsAre(true));
  view_->hide();
  EXPECT_THAT(recording_, ElementsAre(true, false));
}

TEST_F(SettingsViewTest, TheKeyboardReachesEveryControlAndBringsItIntoView) {
  open();
  view_->activateWindow();
  int reached = 0;
  for (int i = 0; i < 20 && reached < 9; ++i) {
    QTest::keyClick(view_.get(), Qt::Key_Tab);
    const QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    ++reached;
    const QWidget* row = focus->parentWidget();
    const QRect seen(row->mapTo(&view_->general(), QPoint()), row->size());
    EXPECT_TRUE(view_->general().rect().contains(seen)) << reached;
  }
  EXPECT_EQ(reached, 9);
}

TEST_F(SettingsViewTest, ARowThatIsTooTallShowsItsControl) {
  DesktopAppearance large;
  large.textScale = 3;
  Appearance::shared().setDesktop(large);
  open();
  view_->activateWindow();
  QApplication::processEvents();
  for (int reached = 0; reached < 9; ++reached) {
    QTest::keyClick(view_.get(), Qt::Key_Tab);
    const QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    const QRect seen(focus->mapTo(&view_->general(), QPoint()), focus->size());
    EXPECT_TRUE(view_->general().rect().contains(seen)) << reached;
  }
  Appearance::shared().setDesktop({});
}

TEST_F(SettingsViewTest, ControlsAreDescribedByTheirRows) {
  open();
  EXPECT_EQ(named<Switch>("Launch at login")->accessibleDescription(),
            QStringLiteral("Start Horalo automatically when you log in."));
  EXPECT_EQ(picker("Toast position")->accessibleDescription(),
            QStringLiteral("Where the notification toast appears on screen."));
  EXPECT_EQ(view_->findChild<KeyRecorderView*>()->accessibleDescription(), QStringLiteral("⇧⌘E"));
}

TEST_F(SettingsViewTest, ControlsEndOnOneLine) {
  open();
  const auto right = [&](const QWidget* widget, int margin) {
    return widget->mapTo(view_.get(), QPoint(widget->width() - margin, 0)).x();
  };
  const int edge = right(view_->findChild<KeyRecorderView*>(), 0);
  int compared = 0;
  for (const auto* control : view_->findChildren<Switch*>()) {
    EXPECT_EQ(right(control, kFocusRingMargin), edge);
    ++compared;
  }
  for (const auto* control : view_->findChildren<Picker*>()) {
    EXPECT_EQ(right(control, kFocusRingMargin), edge);
    ++compared;
  }
  for (const auto* line : view_->findChildren<Divider*>()) {
    EXPECT_EQ(right(line, 0), edge);
    ++compared;
  }
  EXPECT_EQ(compared, 5 + 3 + 5);
}

TEST_F(SettingsViewTest, ShowsTheVersion) {
  open();
  named<QWidget>("Version 1.3.0");
}

}  // namespace
}  // namespace horalo
