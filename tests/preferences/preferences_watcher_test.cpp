#include "preferences/preferences_watcher.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <filesystem>
#include <fstream>
#include <functional>

#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using plist::Dictionary;

class PreferencesWatcherTest : public testing::Test {
 protected:
  static std::string documentOf(const Dictionary& values) {
    return plist::write(values).toStdString();
  }

  void replace(const Dictionary& values) {
    writeText(folder_ / "new", documentOf(values));
    fs::rename(folder_ / "new", path_);
  }

  std::unique_ptr<PreferencesWatcher> watch() {
    return std::make_unique<PreferencesWatcher>(store_, timers_, [this] { ++told_; });
  }

  // Waits until the system tells of the file, and then lets it settle. A file that is not watched
  // ends in ctest's time limit.
  void settle() {
    while (timers_.pendingCount() == 0)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    timers_.advance(0.05);
    EXPECT_EQ(timers_.pendingCount(), 0U);
  }

  TemporaryFolder folder_;
  fs::path path_ = folder_ / "config/p.plist";
  ManualTimers timers_;
  PreferencesStore store_{path_, timers_};
  int told_ = 0;
};

TEST_F(PreferencesWatcherTest, tellsOfEachReplacement) {
  store_.set({{"n", 0}});
  const auto watcher = watch();
  for (int i = 1; i <= 5; ++i) {
    replace({{"n", i}});
    settle();
    EXPECT_EQ(told_, i);
    EXPECT_EQ(store_.value("n"), plist::Value(i));
  }
}

TEST_F(PreferencesWatcherTest, tellsOfWhatIsWrittenIntoTheFile) {
  store_.set({{"n", 0}});
  const auto watcher = watch();
  for (int i = 1; i <= 3; ++i) {
    writeText(path_, documentOf({{"n", i}}));
    settle();
    EXPECT_EQ(told_, i);
  }
  replace({{"n", 4}});
  settle();
  writeText(path_, documentOf({{"n", 5}}));
  settle();
  EXPECT_EQ(told_, 5);
}

TEST_F(PreferencesWatcherTest, tellsOnceOfAFileThatIsEmptiedAndThenFilled) {
  store_.set({{"n", 0}});
  const auto watcher = watch();
  std::ofstream file(path_, std::ios::trunc);
  file.flush();
  while (timers_.pendingCount() == 0)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  file << documentOf({{"n", 1}});
  file.close();
  settle();
  EXPECT_EQ(told_, 1);
  EXPECT_EQ(store_.value("n"), plist::Value(1));
}

TEST_F(PreferencesWatcherTest, tellsOfAFileThatComesAndGoes) {
  const auto watcher = watch();
  EXPECT_TRUE(fs::is_directory(path_.parent_path()));
  replace({{"n", 1}});
  settle();
  EXPECT_EQ(told_, 1);
  fs::remove(path_);
  settle();
  EXPECT_EQ(told_, 2);
}

TEST_F(PreferencesWatcherTest, tellsOfOurOwnWritesToo) {
  const auto watcher = watch();
  store_.set({{"n", 1}});
  settle();
  EXPECT_EQ(told_, 1);
}

TEST_F(PreferencesWatcherTest, isSilentWhereNoValueChanges) {
  store_.set({{"n", 1}});
  const auto watcher = watch();
  writeText(folder_ / "config/neighbour", "x");
  settle();
  replace({{"n", 1}});
  settle();
  EXPECT_EQ(told_, 0);
  replace({{"n", 2}});
  settle();
  EXPECT_EQ(told_, 1) << "and yet it still watches";
}

TEST_F(PreferencesWatcherTest, followsALinkToItsFile) {
  fs::create_directories(folder_ / "config");
  fs::create_directories(folder_ / "dotfiles");
  writeText(folder_ / "dotfiles/real", documentOf({{"n", 0}}));
  fs::create_symlink(folder_ / "dotfiles/real", path_);
  const auto watcher = watch();
  writeText(folder_ / "dotfiles/real", documentOf({{"n", 1}}));
  settle();
  EXPECT_EQ(told_, 1);
  writeText(folder_ / "dotfiles/new", documentOf({{"n", 2}}));
  fs::rename(folder_ / "dotfiles/new", folder_ / "dotfiles/real");
  settle();
  EXPECT_EQ(told_, 2);
}

TEST_F(PreferencesWatcherTest, mayEndWhileItTells) {
  store_.set({{"n", 0}});
  std::unique_ptr<PreferencesWatcher> watcher;
  watcher = std::make_unique<PreferencesWatcher>(store_, timers_, [&] {
    ++told_;
    watcher.reset();
    ++told_;
  });
  replace({{"n", 1}});
  settle();
  EXPECT_EQ(told_, 2);
  replace({{"n", 2}});
  QCoreApplication::processEvents();
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

}  // namespace
}  // namespace horalo
