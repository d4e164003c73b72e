#include "preferences/preferences_store.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "preferences/file_lock.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using plist::Dictionary;
using plist::Value;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

void writeValues(const fs::path& path, const Dictionary& values) {
  writeText(path, plist::write(values).toStdString());
}

mode_t modeOf(const fs::path& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

class PreferencesStoreTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  fs::path path_ = folder_ / "p.plist";
  ManualTimers timers_;
};

TEST_F(PreferencesStoreTest, theFileIsWhereTheDesktopKeepsSettings) {
  setenv("XDG_CONFIG_HOME", "/x/config", 1);
  EXPECT_EQ(PreferencesStore::defaultPath(), "/x/config/horalo/org.horalo.Horalo.plist");
  unsetenv("XDG_CONFIG_HOME");
}

TEST_F(PreferencesStoreTest, valuesOfEveryTypeAreStoredAndReadBack) {
  const Dictionary values{
      {"a", true}, {"b", 1}, {"c", 0.5}, {"d", "text"}, {"e", plist::Data{"bytes"}}};
  PreferencesStore(path_, timers_).set(values);
  const PreferencesStore store(path_, timers_);
  EXPECT_EQ(store.values(), values);
  EXPECT_EQ(store.value("c"), Value(0.5));
  EXPECT_EQ(store.value("f"), std::nullopt);
}

TEST_F(PreferencesStoreTest, isWrittenAtOnceAndLeavesNothingWaiting) {
  PreferencesStore store(path_, timers_);
  store.set({{"a", 1}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));
  EXPECT_EQ(timers_.pendingCount(), 0U);
  EXPECT_THAT(namesIn(path_.parent_path()), UnorderedElementsAre("p.plist", "p.plist.lock"));
}

TEST_F(PreferencesStoreTest, foldersAndFilesAreForTheUserAlone) {
  const fs::path path = folder_ / "new/config/horalo/p.plist";
  umask(0);
  PreferencesStore(path, timers_).set({{"a", 1}});
  umask(022);
  EXPECT_EQ(modeOf(path), 0600U);
  EXPECT_EQ(modeOf(path.string() + ".lock"), 0600U);
  EXPECT_EQ(modeOf(path.parent_path()), 0700U);
  EXPECT_EQ(modeOf(folder_ / "new"), 0700U);

  chmod(path.c_str(), 0666);
  PreferencesStore(path, timers_).set({{"a", 2}});
  EXPECT_EQ(modeOf(path), 0600U);
}

TEST_F(PreferencesStoreTest, readingMakesNothing) {
  const fs::path path = folder_ / "none/p.plist";
  EXPECT_EQ(PreferencesStore(path, timers_).values(), Dictionary{});
  EXPECT_FALSE(exists(path.parent_path()));
}

TEST_F(PreferencesStoreTest, otherPeoplesKeysStay) {
  writeValues(path_, {{"theirs", plist::Array{1, plist::Date{"2024-01-01T00:00:00Z"}}}, {"a", 1}});
  PreferencesStore(path_, timers_).set({{"a", 2}});
  EXPECT_EQ(
      PreferencesFile(path_).read().values,
      (Dictionary{{"theirs", plist::Array{1, plist::Date{"2024-01-01T00:00:00Z"}}}, {"a", 2}}));
}

TEST_F(PreferencesStoreTest, aFileThatNeedsNoChangeIsNotWritten) {
  PreferencesStore store(path_, timers_);
  store.set({{"a", 1}});
  const std::string handwritten =
      "<!-- mine -->" + plist::write({{"a", 1}}).toStdString().substr(39);
  writeText(path_, handwritten);
  ASSERT_EQ(store.values(), (Dictionary{{"a", 1}}));
  store.set({{"a", 1}});
  EXPECT_EQ(textOf(path_), handwritten);
  store.set({{"a", 1.0}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1.0}})) << "another type";
}

TEST_F(PreferencesStoreTest, everyEditFromOutsideIsSeenAtTheNextRead) {
  const PreferencesStore store(path_, timers_);
  int seen = 0;
  for (int i = 0; i < 300; ++i) {
    // Of the same size, and often within one tick of the file system's clock.
    writeValues(path_, {{"n", i % 10}});
    if (store.value("n") == Value(i % 10)) ++seen;
  }
  EXPECT_EQ(seen, 300);
  fs::remove(path_);
  EXPECT_EQ(store.value("n"), std::nullopt);
}

TEST_F(PreferencesStoreTest, anEditFromOutsideAndOneOfOursAreBothKept) {
  PreferencesStore store(path_, timers_);
  store.set({{"ours", 1}, {"theirs", 1}});
  writeValues(path_, {{"ours", 1}, {"theirs", 2}});
  store.set({{"ours", 2}});
  EXPECT_EQ(store.values(), (Dictionary{{"ours", 2}, {"theirs", 2}}));
  EXPECT_EQ(PreferencesFile(path_).read().values, store.values());
}

TEST_F(PreferencesStoreTest, linksAreFollowedAndStayLinks) {
  struct Row {
    const char* leadsTo;
    bool exists;
  };
  const std::vector<Row> rows{
      {"other/real.plist", true}, {"other/real.plist", false}, {"ABSOLUTE", true}, {"via", true}};
  for (const Row& row : rows) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "other");
    const fs::path real = folder / "other/real.plist";
    fs::create_symlink("other/real.plist", folder / "via");
    fs::create_symlink(std::string_view(row.leadsTo) == "ABSOLUTE" ? real : fs::path(row.leadsTo),
                       folder / "p.plist");
    if (row.exists) writeValues(real, {{"a", 1}});

    PreferencesStore store(folder / "p.plist", timers_);
    EXPECT_EQ(store.value("a"), row.exists ? std::optional<Value>(1) : std::nullopt);
    store.set({{"b", 2}});
    EXPECT_TRUE(is_symlink(folder / "p.plist"));
    EXPECT_TRUE(is_regular_file(symlink_status(real))) << row.leadsTo;
    EXPECT_EQ(PreferencesFile(real).read().values.at("b"), Value(2));
    EXPECT_THAT(namesIn(folder / "other"), ElementsAre("real.plist"));
  }
  EXPECT_EQ(rows.size(), 4U);
}

TEST_F(PreferencesStoreTest, whileTheLockIsTakenValuesCountAtOnceAndAreWrittenWhenItIsFree) {
  PreferencesStore store(path_, timers_);
  {
    const FileLock taken(path_.string() + ".lock");
    ASSERT_EQ(taken.state(), FileLock::State::ours);
    store.set({{"a", 1}});
    store.set({{"b", 2}});
    EXPECT_EQ(store.values(), (Dictionary{{"a", 1}, {"b", 2}}));
    EXPECT_EQ(store.value("a"), Value(1));
    EXPECT_EQ(timers_.pendingCount(), 1U);
    timers_.advance(0.9);
    EXPECT_FALSE(exists(path_));
    writeValues(path_, {{"a", 0}, {"theirs", 3}});
    EXPECT_EQ(store.values(), (Dictionary{{"a", 1}, {"b", 2}, {"theirs", 3}}));
  }
  timers_.advance(0.05);
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}, {"b", 2}, {"theirs", 3}}));
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(PreferencesStoreTest, aLockThatIsNeverFreeIsWaitedForASecond) {
  PreferencesStore store(path_, timers_);
  const FileLock taken(path_.string() + ".lock");
  store.set({{"a", 1}});
  timers_.advance(0.98);
  EXPECT_FALSE(exists(path_));
  timers_.advance(0.021);
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(PreferencesStoreTest, aLockThatIsPassedOnIsWaitedForLonger) {
  PreferencesStore store(path_, timers_);
  {
    const FileLock taken(path_.string() + ".lock");
    store.set({{"a", 1}});
    timers_.advance(0.9);
    writeValues(path_, {{"theirs", 1}});
    timers_.advance(0.9);
    EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"theirs", 1}}));
  }
  timers_.advance(0.05);
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}, {"theirs", 1}}));
}

TEST_F(PreferencesStoreTest, theEndWaitsBrieflyForALock) {
  using std::chrono::steady_clock;
  const FileLock taken(path_.string() + ".lock");
  const auto start = steady_clock::now();
  {
    PreferencesStore store(path_, timers_);
    store.set({{"a", 1}});
    EXPECT_LT(steady_clock::now() - start, std::chrono::milliseconds(200)) << "set() must not wait";
  }
  EXPECT_LT(steady_clock::now() - start, std::chrono::milliseconds(800));
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(PreferencesStoreTest, aLockFileWithoutAHolderIsNoObstacle) {
  writeText(path_.string() + ".lock", "");
  PreferencesStore(path_, timers_).set({{"a", 1}});
  EXPECT_TRUE(exists(path_));
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(PreferencesStoreTest, aLockThatCannotBeMadeIsDoneWithout) {
  const std::vector<std::function<void(const fs::path&)>> obstacles{
      [](const fs::path& lock) { fs::create_directory(lock); },
      [](const fs::path& lock) { fs::create_symlink("nowhere/at/all", lock); },
      [](const fs::path& lock) { mkfifo(lock.c_str(), 0600); }};
  for (const auto& obstacle : obstacles) {
    const TemporaryFolder folder;
    obstacle(folder / "p.plist.lock");
    PreferencesStore store(folder / "p.plist", timers_);
    store.set({{"a", 1}});
    EXPECT_EQ(timers_.pendingCount(), 0U);
    EXPECT_TRUE(exists(folder / "p.plist"));
  }
}

TEST_F(PreferencesStoreTest, whatAKilledProcessLeftBehindIsSweptAndNothingElse) {
  const std::vector<std::string> others{".p.plist.new-", ".p.plist.new-notours", "p.plist.backup",
                                        ".other.new-abcdef"};
  for (const auto& name : others) writeText(folder_ / name, "x");
  writeText(folder_ / ".p.plist.new-AbC123", "half a fi");
  PreferencesStore(path_, timers_).set({{"a", 1}});
  EXPECT_THAT(
      namesIn(path_.parent_path()),
      UnorderedElementsAre("p.plist", "p.plist.lock", others[0], others[1], others[2], others[3]));
}

TEST_F(PreferencesStoreTest, valuesThatDoNotFitAreKeptForThisRun) {
  PreferencesStore store(path_, timers_);
  store.set({{"a", 1}});
  store.set({{"b", std::string(plist::kLongestDocument, 'x')}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));
  EXPECT_EQ(store.value("b")->string()->size(), static_cast<std::size_t>(plist::kLongestDocument));
  store.set({{"b", "short"}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}, {"b", "short"}}));
}

TEST_F(PreferencesStoreTest, withoutAHomeValuesCountForThisRun) {
  PreferencesStore store({}, timers_);
  store.set({{"a", 1}});
  EXPECT_EQ(store.value("a"), Value(1));
  EXPECT_EQ(store.values(), (Dictionary{{"a", 1}}));
  EXPECT_FALSE(fs::exists(".lock"));
}

}  // namespace
}  // namespace horalo
