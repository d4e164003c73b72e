#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/file_descriptor.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/files.h"
#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using plist::Dictionary;
using plist::Value;

std::string randomBytes(std::size_t count) {
  std::mt19937 random(20240101);
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

void makeSocket(const fs::path& path) {
  const FileDescriptor socketFile(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.string().copy(address.sun_path, sizeof address.sun_path - 1);
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  ASSERT_EQ(bind(socketFile.get(), generic, sizeof address), 0);
}

// Something under the name of the preferences that is none.
struct Breakage {
  const char* name;
  std::function<void(const fs::path&)> make;
};

void PrintTo(const Breakage& breakage, std::ostream* out) {
  *out << breakage.name;
}

const std::vector<Breakage>& breakages() {
  static const std::string whole = plist::write({{"isUTC", true}, {"other", "text"}}).toStdString();
  static const std::vector<Breakage> all{
      {"empty", [](const fs::path& path) { writeText(path, ""); }},
      {"half", [](const fs::path& path) { writeText(path, whole.substr(0, whole.size() / 2)); }},
      {"lastByteMissing",
       [](const fs::path& path) { writeText(path, whole.substr(0, whole.rfind('>'))); }},
      {"random", [](const fs::path& path) { writeText(path, randomBytes(65536)); }},
      {"nul", [](const fs::path& path) { writeText(path, std::string(4096, '\0')); }},
      {"json", [](const fs::path& path) { writeText(path, "{\"isUTC\": true}"); }},
      {"ini", [](const fs::path& path) { writeText(path, "[General]\nisUTC=true\n"); }},
      {"anArray", [](const fs::path& path) { writeText(path, "<plist><array/></plist>"); }},
      {"binary", [](const fs::path& path) { writeText(path, "bplist00" + randomBytes(100)); }},
      {"deep",
       [](const fs::path& path) {
         std::string text = "<plist><dict><key>isUTC</key>";
         for (int i = 0; i < 100'000; ++i) text += "<array>";
         writeText(path, text);
       }},
      {"tooLong",
       [](const fs::path& path) {
         writeText(path,
                   plist::write({{"isUTC", true}, {"x", std::string(2 << 20, 'x')}}).toStdString());
       }},
      {"hundredMegabytes",
       [](const fs::path& path) {
         writeText(path, whole);
         fs::resize_file(path, 100'000'000);
       }},
      {"folder",
       [](const fs::path& path) {
         fs::create_directory(path);
         writeText(path / "inside", "x");
       }},
      {"pipe", [](const fs::path& path) { mkfifo(path.c_str(), 0600); }},
      {"socket", [](const fs::path& path) { makeSocket(path); }},
      {"linkToItself", [](const fs::path& path) { fs::create_symlink(path.filename(), path); }},
      {"linkToFolder",
       [](const fs::path& path) {
         fs::create_directory(path.parent_path() / "theirs");
         fs::create_symlink("theirs", path);
       }},
      {"linkToDevice", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); }},
  };
  return all;
}

// What can be told of a thing without opening it.
struct Look {
  fs::file_type type;
  std::uintmax_t size;
  friend bool operator==(const Look&, const Look&) = default;
};

Look lookAt(const fs::path& path) {
  const auto type = fs::symlink_status(path).type();
  return {type, type == fs::file_type::regular ? fs::file_size(path) : 0};
}

class BrokenFile : public testing::TestWithParam<Breakage> {
 protected:
  TemporaryFolder folder_;
  fs::path path_ = folder_ / "p.plist";
  ManualTimers timers_;
};

TEST_P(BrokenFile, meansDefaultsAtOnceAndIsKeptAsideByTheNextWrite) {
  GetParam().make(path_);
  const Look before = lookAt(path_);
  const auto start = std::chrono::steady_clock::now();
  PreferencesStore store(path_, timers_);
  EXPECT_EQ(store.values(), Dictionary{});
  EXPECT_EQ(store.value("isUTC"), std::nullopt);
  EXPECT_EQ(lookAt(path_), before) << "reading must leave it alone";
  store.set({{"isUTC", false}});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));

  EXPECT_EQ(lookAt(folder_ / "p.plist.corrupt"), before);
  EXPECT_EQ(PreferencesFile(path_).read().values, (Dictionary{{"isUTC", false}}));
  EXPECT_TRUE(is_regular_file(symlink_status(path_)));
  EXPECT_EQ(timers_.pendingCount(), 0U);

  store.set({{"isUTC", true}});
  EXPECT_FALSE(exists(folder_ / "p.plist.corrupt.1")) << "kept aside once";
}

INSTANTIATE_TEST_SUITE_P(All, BrokenFile, testing::ValuesIn(breakages()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BrokenFiles, areAllTried) {
  EXPECT_EQ(breakages().size(), 18U);
}

TEST(BrokenFiles, areKeptUnderNamesThatAreFree) {
  const TemporaryFolder folder;
  ManualTimers timers;
  writeText(folder / "p.plist.corrupt.2", "mine");
  for (const char* text : {"first", "second", "third"}) {
    writeText(folder / "p.plist", text);
    PreferencesStore(folder / "p.plist", timers).set({{"a", 1}});
  }
  EXPECT_EQ(textOf(folder / "p.plist.corrupt"), "first");
  EXPECT_EQ(textOf(folder / "p.plist.corrupt.1"), "second");
  EXPECT_EQ(textOf(folder / "p.plist.corrupt.2"), "mine");
  EXPECT_EQ(textOf(folder / "p.plist.corrupt.3"), "third");
}

TEST(BrokenFiles, behindALinkAreRenamedWhereTheyAre) {
  const TemporaryFolder folder;
  ManualTimers timers;
  fs::create_directory(folder / "dotfiles");
  writeText(folder / "dotfiles/mine", "broken");
  fs::create_symlink("dotfiles/mine", folder / "p.plist");
  PreferencesStore(folder / "p.plist", timers).set({{"a", 1}});
  EXPECT_TRUE(is_symlink(folder / "p.plist"));
  EXPECT_EQ(fs::file_size(folder / "dotfiles/mine.corrupt"), 6U);
  EXPECT_EQ(PreferencesFile(folder / "dotfiles/mine").read().values, (Dictionary{{"a", 1}}));
}

}  // namespace
}  // namespace horalo
