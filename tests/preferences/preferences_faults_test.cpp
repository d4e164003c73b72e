// What happens to processes, and what that does to the file that they share.
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "base/file_descriptor.h"
#include "preferences/file_lock.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/child_process.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using plist::Dictionary;
using plist::Value;
using std::chrono::steady_clock;
using testing::Contains;
using testing::Not;
using testing::StartsWith;

constexpr uid_t kNobody = 65534;

// Runs `test` as a user whom permissions bind, and fails where it fails.
void asOrdinaryUser(const TemporaryFolder& folder, const std::function<void()>& test) {
  ChildProcess child([&] {
    if (geteuid() == 0) {
      for (const auto& entry : fs::recursive_directory_iterator(folder / "")) {
        ASSERT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
      }
      ASSERT_EQ(chown((folder / "").c_str(), kNobody, kNobody), 0);
      ASSERT_EQ(setgroups(0, nullptr), 0);
      ASSERT_EQ(setgid(kNobody), 0);
      ASSERT_EQ(setuid(kNobody), 0);
    }
    test();
  });
  EXPECT_EQ(child.wait(), 0);
}

// Sets values in one process after the other's, as the event loop would.
void setAndWait(PreferencesStore& store, ManualTimers& timers, const Dictionary& changes) {
  store.set(changes);
  while (const auto wait = timers.timeToNext()) {
    std::this_thread::sleep_for(std::chrono::duration<double>(*wait));
    timers.advance(*wait);
  }
}

class PreferencesFaults : public testing::Test {
 protected:
  TemporaryFolder folder_;
  fs::path path_ = folder_ / "p.plist";
  ManualTimers timers_;
};

TEST_F(PreferencesFaults, killedAtAnyMomentTheFileIsWholeAndTheNextStartCanWrite) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> microseconds(0, 15'000);
  constexpr int kRounds = 200;
  const std::string padding(6000, 'x');  // of more than one page
  PreferencesStore(path_, timers_).set({{"a", 0.0}, {"b", 0.0}});

  double last = 0;
  int moved = 0;  // writers that were killed after their first write; a busy machine has fewer
  for (int round = 0; round < kRounds || moved < kRounds / 4; ++round) {
    ChildProcess writer([&] {
      PreferencesStore store(path_, timers_);
      for (double n = last + 1;; ++n) store.set({{"a", n}, {"b", n}, {"padding", padding}});
    });
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    writer.send(SIGKILL);
    EXPECT_EQ(writer.wait(), std::nullopt);

    PreferencesStore store(path_, timers_);
    const auto [state, values] = store.file().read();
    ASSERT_EQ(state, PreferencesFile::State::readable);
    ASSERT_TRUE(values.contains("a") && values.contains("b"));
    EXPECT_EQ(values.at("a"), values.at("b"));
    const double now = values.at("a").number().value_or(-1);
    EXPECT_GE(now, last);
    if (now > last) ++moved;
    last = now;

    store.set({{"started", round}});
    EXPECT_EQ(timers_.pendingCount(), 0U) << "the dead process still holds the lock";
    EXPECT_EQ(PreferencesFile(path_).read().values.at("started"), Value(round));
    EXPECT_THAT(namesIn(path_.parent_path()), Not(Contains(StartsWith(".p.plist.new-"))));
  }
}

TEST_F(PreferencesFaults, writersLoseNothingOfEachOthers) {
  constexpr int kWriters = 3;
  constexpr int kKeys = 100;
  std::vector<std::unique_ptr<ChildProcess>> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(std::make_unique<ChildProcess>([&, writer] {
      PreferencesStore store(path_, timers_);
      for (int key = 0; key < kKeys; ++key) {
        const std::string name = std::to_string(writer) + "." + std::to_string(key);
        setAndWait(store, timers_, {{name, key}});
      }
    }));
  }
  for (const auto& writer : writers) EXPECT_EQ(writer->wait(), 0);
  EXPECT_EQ(PreferencesFile(path_).read().values.size(),
            static_cast<std::size_t>(kWriters * kKeys));
}

TEST_F(PreferencesFaults, aStoppedHolderOfTheLockHoldsNobodyUp) {
  ChildProcess holder([&] {
    const FileLock lock(path_.string() + ".lock");
    if (lock.state() == FileLock::State::ours) raise(SIGSTOP);
  });
  holder.waitUntilStopped();
  ASSERT_EQ(FileLock(path_.string() + ".lock").state(), FileLock::State::taken);

  PreferencesStore store(path_, timers_);
  const auto start = steady_clock::now();
  store.set({{"a", 1}});
  EXPECT_EQ(store.value("a"), Value(1));
  EXPECT_LT(steady_clock::now() - start, 500ms);
  EXPECT_FALSE(exists(path_));
  timers_.advance(1.01);
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));

  holder.send(SIGCONT);
  EXPECT_EQ(holder.wait(), 0);
  store.set({{"b", 2}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}, {"b", 2}}));
}

// The old file stays as it is, the new value counts for this run, and is written once it can be.
TEST_F(PreferencesFaults, aFolderThatIsReadOnly) {
  PreferencesStore(path_, timers_).set({{"a", 1}});
  fs::remove(path_.string() + ".lock");
  asOrdinaryUser(folder_, [&] {
    const std::string before = textOf(path_);
    chmod((folder_ / "").c_str(), 0555);
    PreferencesStore store(path_, timers_);
    store.set({{"a", 2}});
    EXPECT_EQ(store.value("a"), Value(2));
    EXPECT_EQ(textOf(path_), before);
    EXPECT_EQ(namesIn(folder_ / ""), std::vector<std::string>{"p.plist"});
    EXPECT_EQ(timers_.pendingCount(), 0U);

    chmod((folder_ / "").c_str(), 0755);
    store.set({{"b", 1}});
    EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 2}, {"b", 1}}));
  });
}

TEST_F(PreferencesFaults, aFileThatIsReadOnlyOrMayNotBeRead) {
  PreferencesStore(path_, timers_).set({{"a", 1}});
  asOrdinaryUser(folder_, [&] {
    for (const mode_t mode : {0444U, 0U}) {
      chmod(path_.c_str(), mode);
      {
        PreferencesStore store(path_, timers_);
        EXPECT_EQ(store.value("a"), mode == 0 ? std::nullopt : std::optional<Value>(1));
        store.set({{"a", 2}});
        EXPECT_EQ(store.value("a"), Value(2));
        EXPECT_EQ(store.values(), (Dictionary{{"a", 2}}));
      }
      chmod(path_.c_str(), 0600);
      EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 1}}));
      EXPECT_FALSE(exists(folder_ / "p.plist.corrupt"));
    }
  });
}

TEST_F(PreferencesFaults, aBrokenFileThatCannotBeKeptAsideIsLeftAlone) {
  writeText(path_, "broken");
  asOrdinaryUser(folder_, [&] {
    chmod((folder_ / "").c_str(), 0555);
    PreferencesStore store(path_, timers_);
    store.set({{"a", 2}});
    EXPECT_EQ(store.value("a"), Value(2));
    EXPECT_EQ(textOf(path_), "broken");
    chmod((folder_ / "").c_str(), 0755);
    store.flush();
    EXPECT_EQ(textOf(folder_ / "p.plist.corrupt"), "broken");
    EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 2}}));
  });
}

TEST_F(PreferencesFaults, aFolderThatCannotBeMade) {
  writeText(folder_ / "file", "x");
  for (const fs::path& path : {folder_ / "file/horalo/p.plist", fs::path("/proc/none/p.plist")}) {
    PreferencesStore store(path, timers_);
    EXPECT_EQ(store.values(), Dictionary{});
    store.set({{"a", 1}});
    EXPECT_EQ(store.value("a"), Value(1));
    EXPECT_EQ(timers_.pendingCount(), 0U);
  }
  EXPECT_EQ(textOf(folder_ / "file"), "x");
}

TEST_F(PreferencesFaults, noFileDescriptorsLeft) {
  PreferencesStore(path_, timers_).set({{"a", 1}});
  PreferencesStore store(path_, timers_);
  std::vector<FileDescriptor> all;
  for (FileDescriptor next(dup(0)); next; next = FileDescriptor(dup(0))) {
    all.push_back(std::move(next));
  }
  EXPECT_EQ(store.value("a"), std::nullopt);
  store.set({{"a", 2}});
  EXPECT_EQ(store.value("a"), Value(2));
  all.clear();
  store.set({{"b", 3}});
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"a", 2}, {"b", 3}}));
}

}  // namespace
}  // namespace horalo
