#include "app/update/staging.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <random>
#include <thread>

#include "app/update/folder_writer.h"
#include "app/update/installation.h"
#include "app/update/leftovers.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/child_process.h"
#include "tests/fakes/files.h"
#include "tests/fakes/small_disk.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kRoom = 1 << 20;

FileDescriptor openFolder(const fs::path& path) {
  return FileDescriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

std::string messageOf(const Outcome<Staging>& staging) {
  const auto* const problem = std::get_if<Problem>(&staging);
  return problem != nullptr ? problem->message.toStdString() : "";
}

// A bundle in a folder of its own, in which every file tells its version.
class StagingTest : public testing::Test {
 protected:
  StagingTest() { write(bundle_, "1"); }

  static void write(const fs::path& bundle, const std::string& version, int files = 20) {
    for (int i = 0; i < files; ++i) {
      const fs::path folder = bundle / ("d" + std::to_string(i % 5));
      fs::create_directories(folder);
      writeText(folder / std::to_string(i), version);
    }
  }

  // The version that all files tell; "broken" where they do not agree or some are missing.
  static std::string versionOf(const fs::path& bundle, int files = 20) {
    const std::string version = textOf(bundle / "d0/0");
    for (int i = 0; i < files; ++i) {
      if (textOf(bundle / ("d" + std::to_string(i % 5)) / std::to_string(i)) != version)
        return "broken";
    }
    return version.empty() ? "broken" : version;
  }

  static void fill(const Staging& staging, const std::string& version) {
    FolderWriter writer(staging.folder());
    for (int i = 0; i < 20; ++i) {
      const auto file =
          writer.makeFile("d" + std::to_string(i % 5) + "/" + std::to_string(i), false);
      EXPECT_TRUE(writeAll(file.get(), version));
    }
  }

  TemporaryFolder folder_;
  fs::path bundle_ = folder_ / "Horalo.app";
};

TEST_F(StagingTest, isForNobodyElseAndGoesAway) {
  {
    const auto made = Staging::make(bundle_, kRoom);
    const auto& staging = std::get<Staging>(made);
    EXPECT_TRUE(isLeftover(staging.path().filename().string(), bundle_));
    EXPECT_EQ(fs::status(staging.path()).permissions(), fs::perms::owner_all);
    fill(staging, "2");
    sweepLeftovers(bundle_);
    EXPECT_TRUE(exists(staging.path())) << "it is no leftover yet";
  }
  EXPECT_EQ(namesIn(folder_ / ""), std::vector<std::string>{"Horalo.app"});
}

TEST_F(StagingTest, exchangesAndReturns) {
  const FileDescriptor held = openFolder(bundle_);
  auto made = Staging::make(bundle_, kRoom);
  auto& staging = std::get<Staging>(made);
  fill(staging, "2");
  EXPECT_EQ(staging.exchange(held.get()), std::nullopt);
  EXPECT_EQ(versionOf(bundle_), "2");
  EXPECT_EQ(versionOf(staging.path()), "1");
  EXPECT_TRUE(staging.exchangeBack());
  EXPECT_EQ(versionOf(bundle_), "1");
  EXPECT_FALSE(staging.exchangeBack());
}

TEST_F(StagingTest, keepsTheOldVersionUntilItIsSwept) {
  const FileDescriptor held = openFolder(bundle_);
  {
    auto made = Staging::make(bundle_, kRoom);
    fill(std::get<Staging>(made), "2");
    EXPECT_EQ(std::get<Staging>(made).exchange(held.get()), std::nullopt);
  }
  EXPECT_TRUE(hasLeftovers(bundle_));
  ASSERT_EQ(flock(held.get(), LOCK_SH), 0);
  sweepLeftovers(bundle_);
  EXPECT_TRUE(hasLeftovers(bundle_)) << "somebody runs from it";
  ASSERT_EQ(flock(held.get(), LOCK_UN), 0);
  sweepLeftovers(bundle_);
  EXPECT_FALSE(hasLeftovers(bundle_));
  EXPECT_EQ(versionOf(bundle_), "2");
}

TEST_F(StagingTest, sweepsNothingElse) {
  for (const char* name : {".Horalo.app", ".Other.app.abcdef", ".Horalo.app.abcdefg", "kept"})
    fs::create_directories(folder_ / name);
  fs::create_directory_symlink(folder_ / "kept", folder_ / ".Horalo.app.linked");
  writeText(folder_ / ".Horalo.app.afile1", "x");
  write(folder_ / ".Horalo.app.abc123", "0");
  sweepLeftovers(bundle_);
  EXPECT_FALSE(exists(folder_ / ".Horalo.app.abc123"));
  EXPECT_EQ(namesIn(folder_ / "").size(), 7U);
  EXPECT_EQ(versionOf(bundle_), "1");
}

TEST_F(StagingTest, knowsWhetherTheNewVersionIsInUse) {
  const FileDescriptor held = openFolder(bundle_);
  auto made = Staging::make(bundle_, kRoom);
  auto& staging = std::get<Staging>(made);
  ASSERT_EQ(staging.exchange(held.get()), std::nullopt);
  EXPECT_FALSE(staging.isInUse());
  const FileDescriptor user = openFolder(bundle_);
  ASSERT_EQ(flock(user.get(), LOCK_SH), 0);
  EXPECT_TRUE(staging.isInUse());
}

TEST_F(StagingTest, exchangesNothingThatSomebodyPutInBetween) {
  const FileDescriptor held = openFolder(bundle_);
  auto made = Staging::make(bundle_, kRoom);
  auto& staging = std::get<Staging>(made);
  fill(staging, "2");
  fs::rename(staging.path(), folder_ / "aside");
  write(staging.path(), "evil");
  EXPECT_NE(staging.exchange(held.get()), std::nullopt);
  EXPECT_EQ(versionOf(bundle_), "1");

  fs::rename(bundle_, folder_ / "old");
  write(bundle_, "other");
  EXPECT_NE(staging.exchange(held.get()), std::nullopt);
  EXPECT_EQ(versionOf(bundle_), "other");
}

TEST_F(StagingTest, isRefusedWhereNobodyMayWrite) {
  const std::string refused = problem::notWritable({}).message.toStdString();
  EXPECT_EQ(messageOf(Staging::make("/proc/self/Horalo.app", kRoom)), refused);
  EXPECT_EQ(messageOf(Staging::make(folder_ / "none/Horalo.app", kRoom)), refused);
  ChildProcess user([&] {
    fs::permissions(folder_ / "", fs::perms(0555));
    if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
    EXPECT_EQ(messageOf(Staging::make(bundle_, kRoom)), refused);
  });
  EXPECT_EQ(user.wait(), 0);
  fs::permissions(folder_ / "", fs::perms(0755));
}

TEST_F(StagingTest, isRefusedWhereThereIsNoRoom) {
  EXPECT_EQ(messageOf(Staging::make(bundle_, std::int64_t{1} << 60)),
            problem::noSpace({}).message.toStdString());
  EXPECT_EQ(namesIn(folder_ / "").size(), 1U);
}

// Everything after the signature, on a disk that fills up in the middle of it.
TEST_F(StagingTest, leavesTheBundleWholeOnAFullDisk) {
  ChildProcess child([&] {
    if (!mountSmallDisk(folder_ / "", "4m")) _exit(kNoNamespaces);
    write(bundle_, "1");
    const TestKey key;
    TestBundle newer;
    newer.keys = {key.publicText()};
    std::mt19937 random(1);  // so that it does not compress
    std::string big(8 << 20, '\0');
    for (char& c : big) c = static_cast<char>(random());
    auto entries = newer.entries();
    entries.push_back({"Horalo.app/big", 0100000, 0644, big, "", false});
    InstallationOrder order{makeTar(entries, Compression::none), {}, {}, "", key.keys()};
    order.item.archiveLength = order.archive.size();
    order.item.archiveSignature = key.sign(order.archive);
    {
      const FileDescriptor held = openFolder(bundle_);
      auto made = Staging::make(bundle_, 1 << 20);  // a feed that promised less
      const auto problem = install(order, std::get<Staging>(made), held.get());
      EXPECT_EQ(problem.value().message, problem::noSpace({}).message);
    }
    EXPECT_EQ(versionOf(bundle_), "1");
    EXPECT_EQ(namesIn(folder_ / "").size(), 1U);
    EXPECT_EQ(messageOf(Staging::make(bundle_, 8 << 20)),
              problem::noSpace({}).message.toStdString());
  });
  const auto status = child.wait();
  if (status == kNoNamespaces) {
    GTEST_SKIP() << "not run: this system lets nobody mount a file system in a user namespace";
  }
  EXPECT_EQ(status, 0);
}

// Somebody reads the bundle all the time while it is exchanged.
TEST_F(StagingTest, isNeverHalfThere) {
  std::atomic<bool> stop = false;
  std::atomic<int> misses = 0;
  std::atomic<int> reads = 0;
  std::thread reader([&] {
    while (!stop) {
      const FileDescriptor folder = openFolder(bundle_);
      if (!folder) ++misses;
      ++reads;
    }
  });
  for (int i = 0; i < 50 || reads < 1000; ++i) {
    const FileDescriptor held = openFolder(bundle_);
    auto made = Staging::make(bundle_, kRoom);
    EXPECT_EQ(std::get<Staging>(made).exchange(held.get()), std::nullopt);
  }
  stop = true;
  reader.join();
  EXPECT_EQ(misses, 0);
}

}  // namespace
}  // namespace horalo
