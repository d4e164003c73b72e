// A disk with no room to spare: a small file system in memory, which a process may mount for itself
// in a user namespace of its own.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "base/file_descriptor.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/child_process.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/small_disk.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using plist::Dictionary;
using plist::Value;

constexpr std::size_t kPage = 4096;

// Fills the disk but for so many pages.
void fill(const fs::path& folder, std::size_t freePages) {
  const FileDescriptor filler(
      open((folder / "filler").c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600));
  const std::string page(kPage, 'f');
  off_t size = 0;
  while (write(filler.get(), page.data(), page.size()) == static_cast<ssize_t>(kPage)) {
    size += static_cast<off_t>(kPage);
  }
  ASSERT_EQ(ftruncate(filler.get(), size - static_cast<off_t>(freePages * kPage)), 0);
  struct statvfs status {};
  ASSERT_EQ(statvfs(folder.c_str(), &status), 0);
  ASSERT_EQ(status.f_bavail * status.f_bsize, freePages * kPage);
}

// One write on a disk with `freePages` pages left. Returns whether it went through.
bool writeOnFullDisk(const fs::path& disk, std::size_t size, std::size_t freePages) {
  const fs::path path = disk / "p.plist";
  for (const auto& name : namesIn(disk)) fs::remove(disk / name);
  ManualTimers timers;
  const Dictionary before{{"isUTC", false}, {"padding", std::string(size, 'x')}};
  const Dictionary after{{"isUTC", true}, {"padding", std::string(size, 'x')}};
  {
    PreferencesStore store(path, timers);
    store.set(before);
    EXPECT_EQ(PreferencesFile(path).read().values, before);
    fill(disk, freePages);

    store.set({{"isUTC", true}});
    EXPECT_EQ(store.values(), after) << "the value counts in any case";
  }  // tries once more
  const bool written = PreferencesFile(path).read().values == after;
  if (!written) {
    EXPECT_EQ(PreferencesFile(path).read().values, before) << "neither old nor new";
  }
  EXPECT_EQ(namesIn(disk).size(), 3U) << "beside the file, its lock and the filler";

  PreferencesStore store(path, timers);
  store.set({{"isUTC", true}});
  fs::remove(disk / "filler");
  store.set({{"room", 1}});
  const auto values = PreferencesFile(path).read().values;
  EXPECT_EQ(values.at("isUTC"), Value(true)) << "tried again with the next write";
  EXPECT_EQ(values.at("room"), Value(1));
  return written;
}

TEST(FullDisk, theOldFileStaysOrTheNewOneIsWhole) {
  const TemporaryFolder folder;
  ChildProcess child([&] {
    if (!mountSmallDisk(folder / "", "256k")) _exit(kNoNamespaces);
    int cases = 0;
    for (const std::size_t size : {100U, 5'000U, 16'000U, 17'000U, 40'000U}) {
      for (const std::size_t freePages : {0U, 1U, 2U, 3U, 6U, 12U}) {
        SCOPED_TRACE(std::to_string(size) + " bytes, free pages: " + std::to_string(freePages));
        const std::size_t needed = (size + 400 + kPage - 1) / kPage;  // with the elements around
        EXPECT_EQ(writeOnFullDisk(folder / "", size, freePages), freePages >= needed);
        ++cases;
      }
    }
    EXPECT_EQ(cases, 30);
  });
  const auto status = child.wait();
  if (status == kNoNamespaces) {
    GTEST_SKIP() << "not run: this system lets nobody mount a file system in a user namespace";
  }
  EXPECT_EQ(status, 0);
}

TEST(FullDisk, theFirstFileOfAllIsWrittenOnceThereIsRoom) {
  const TemporaryFolder folder;
  ChildProcess child([&] {
    if (!mountSmallDisk(folder / "", "256k")) _exit(kNoNamespaces);
    fill(folder / "", 0);
    ManualTimers timers;
    PreferencesStore store(folder / "horalo/p.plist", timers);
    store.set({{"a", 1}});
    EXPECT_EQ(store.value("a"), Value(1));
    EXPECT_FALSE(exists(folder / "horalo/p.plist"));
    fs::remove(folder / "filler");
    store.flush();
    EXPECT_EQ(PreferencesFile(folder / "horalo/p.plist").read().values, (Dictionary{{"a", 1}}));
  });
  const auto status = child.wait();
  if (status == kNoNamespaces) {
    GTEST_SKIP() << "not run: this system lets nobody mount a file system in a user namespace";
  }
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace horalo
