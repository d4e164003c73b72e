// The program's side, with a small script in the updater's place.
#include "app/update/bundle_updater.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QTimer>

#include "app/update/bundle_path.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

class BundleUpdaterTest : public testing::Test {
 protected:
  BundleUpdaterTest() {
    clock_.set({1'700'000'000, 0});
    fs::create_directories(bundle_ / "Contents/Linux");
    setKey("11qYAYKxCrfVS/7TyWQHOg7hcvPapiMlrwIaaPcHURo=");
    qputenv("XDG_STATE_HOME", (folder_ / "state").c_str());
    qputenv("HORALO_TEST_LOG", (folder_ / "log").c_str());
  }
  ~BundleUpdaterTest() override { qunsetenv("XDG_STATE_HOME"); }

  void setKey(const std::string& key) const {
    writeText(bundle_ / kBundleInfo,
              "<plist><dict><key>SUFeedURL</key><string>https://example.org/</string>"
              "<key>SUPublicEDKey</key><string>" +
                  key + "</string></dict></plist>");
  }

  // The script notes its arguments and then does as told.
  void setUpdater(const std::string& script) const {
    const fs::path path = bundle_ / kBundleUpdater;
    writeText(path, "#!/bin/bash\necho \"$*\" >> \"$HORALO_TEST_LOG\"\n" + script);
    fs::permissions(path, fs::perms(0755));
  }

  void makeUpdater() {
    updater_ = std::make_unique<BundleUpdater>(
        bundle_, UpdaterSurroundings{timers_, clock_, relaunch_, [this] { ++quits_; },
                                     [this](const QString& message, const QString&) {
                                       alert_ = message.toStdString();
                                     }});
  }

  std::string log() const { return textOf(folder_ / "log"); }

  // Runs the event loop until something is true.
  template <typename Condition>
  bool until(Condition condition) {
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
      if (condition()) loop.quit();
    });
    look.start(5);
    QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
    loop.exec();
    return condition();
  }

  TemporaryFolder folder_;
  fs::path bundle_ = folder_ / "Horalo.app";
  ManualClock clock_;
  ManualTimers timers_{&clock_};
  Relaunch relaunch_;
  int quits_ = 0;
  std::string alert_;
  std::unique_ptr<BundleUpdater> updater_;
};

TEST_F(BundleUpdaterTest, startsNothingByItself) {
  setUpdater("");
  makeUpdater();
  timers_.advance(30 * 86'400);
  EXPECT_EQ(log(), "");
  EXPECT_EQ(timers_.pendingCount(), 0U) << "no wake-up is left";
}

TEST_F(BundleUpdaterTest, checksWhenTheUserAsksAndAgainAfterwards) {
  setUpdater("");
  makeUpdater();
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\n"; }));
  // Whether the end of the first was noticed by now or not, this is a check of its own.
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\ncheck\n"; }));
}

TEST_F(BundleUpdaterTest, bringsTheRunningCheckToTheFront) {
  setUpdater(
      "read line; echo \"$line\" >> \"$HORALO_TEST_LOG\"; echo shown >&0; read; "
      "echo end >> \"$HORALO_TEST_LOG\"");
  makeUpdater();
  updater_->checkForUpdates();
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\nshow\n"; }));
  updater_.reset();
  EXPECT_TRUE(until([this] { return log() == "check\nshow\nend\n"; })) << "it was one program";
}

TEST_F(BundleUpdaterTest, checksAnewWhereTheRunningCheckWasAboutToEnd) {
  setUpdater("read line; sleep 0.1");
  makeUpdater();
  updater_->checkForUpdates();
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\ncheck\n"; }));
}

TEST_F(BundleUpdaterTest, checksQuietlyWhenACheckIsDue) {
  setUpdater("");
  makeUpdater();
  updater_->setAutomaticallyChecksForUpdates(true);
  updater_->setUpdateCheckInterval(86'400);
  timers_.advance(59);
  EXPECT_EQ(log(), "");
  timers_.advance(1);
  EXPECT_TRUE(until([this] { return log() == "check --quietly\n"; }));
}

TEST_F(BundleUpdaterTest, checksNothingByItselfWhereNoUpdateCouldBeTrusted) {
  setUpdater("");
  setKey("");
  makeUpdater();
  EXPECT_EQ(updater_->obstacle(), "a key of this bundle is not valid");
  updater_->setAutomaticallyChecksForUpdates(true);
  updater_->setUpdateCheckInterval(86'400);
  timers_.advance(30 * 86'400);
  EXPECT_EQ(log(), "");
  EXPECT_EQ(timers_.pendingCount(), 0U);
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\n"; })) << "whoever asks is told why";
}

TEST_F(BundleUpdaterTest, saysThatThereIsNoUpdaterOnlyToWhomAsks) {
  makeUpdater();
  updater_->setAutomaticallyChecksForUpdates(true);
  timers_.advance(86'400);
  EXPECT_EQ(alert_, "");
  updater_->checkForUpdates();
  EXPECT_EQ(alert_, "Updates do not work in this copy of Horalo");
}

TEST_F(BundleUpdaterTest, quitsForTheNewVersion) {
  setUpdater("echo relaunch >&0; read");
  makeUpdater();
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return quits_ == 1; }));
}

TEST_F(BundleUpdaterTest, obeysNoOtherWord) {
  setUpdater("printf 'quit\\n%0500d\\nrelaunch please\\n\\n' 7 >&0");
  makeUpdater();
  updater_->checkForUpdates();
  // A second check begins only after everything that the first said was heard.
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\ncheck\n"; }));
  EXPECT_EQ(quits_, 0);
}

TEST_F(BundleUpdaterTest, holdsItsFolderAgainstSweeping) {
  makeUpdater();
  const FileDescriptor folder(open(bundle_.c_str(), O_RDONLY | O_DIRECTORY));
  EXPECT_NE(flock(folder.get(), LOCK_EX | LOCK_NB), 0);
  updater_.reset();
  EXPECT_EQ(flock(folder.get(), LOCK_EX | LOCK_NB), 0);
}

TEST_F(BundleUpdaterTest, startsItsOwnUpdaterAfterAnotherCopyHasUpdated) {
  setUpdater("");
  makeUpdater();
  fs::rename(bundle_, folder_ / ".Horalo.app.abcdef");
  fs::create_directories(bundle_ / "Contents/Linux");
  setUpdater("echo new >> \"$HORALO_TEST_LOG\"");
  updater_->checkForUpdates();
  EXPECT_TRUE(until([this] { return log() == "check\n"; })) << log();
}

TEST_F(BundleUpdaterTest, sweepsWhatUpdatesLeftOnceItRunsWell) {
  setUpdater("");
  fs::create_directories(folder_ / ".Horalo.app.abcdef");
  makeUpdater();
  timers_.advance(9);
  EXPECT_EQ(log(), "");
  timers_.advance(1);
  EXPECT_TRUE(until([this] { return log() == "sweep\n"; }));
}

}  // namespace
}  // namespace horalo
