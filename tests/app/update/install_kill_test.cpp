// A process that installs one version after the other, and is killed at any moment of it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "app/update/bundle_info.h"
#include "app/update/installation.h"
#include "app/update/leftovers.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/child_process.h"
#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 60;

class InstallKillTest : public testing::Test {
 protected:
  InstallKillTest() {
    for (const TarEntry& entry : bundleOfVersion(1).entries()) write(entry);
    for (const TarEntry& entry : filesOfVersion(1)) write(entry);
  }

  TestBundle bundleOfVersion(int version) const {
    TestBundle bundle;
    bundle.version = std::to_string(version);
    bundle.program = bundle.version;
    bundle.keys = {key_.publicText()};
    return bundle;
  }

  static std::vector<TarEntry> filesOfVersion(int version) {
    std::vector<TarEntry> files;
    for (int i = 0; i < kFiles; ++i) {
      files.push_back({"Horalo.app/Contents/lib/" + std::to_string(i), 0100000, 0644,
                       std::to_string(version) + std::string(10'000, '\n'), "", false});
    }
    return files;
  }

  void write(const TarEntry& entry) const {
    const fs::path path = folder_ / entry.path;
    fs::create_directories(entry.content.empty() ? path : path.parent_path());
    if (!entry.content.empty()) writeText(path, entry.content);
  }

  // What the updater does. False where it fails.
  bool update() const {
    InstallationOrder order{{}, {}, readBundleInfo(bundle_), "", key_.keys()};
    const int next = std::stoi(order.installed.version) + 1;
    auto entries = bundleOfVersion(next).entries();
    for (TarEntry& entry : filesOfVersion(next)) entries.push_back(std::move(entry));
    order.archive = makeTar(entries, Compression::zstd);
    order.item.version = std::to_string(next);
    order.item.archiveLength = order.archive.size();
    order.item.archiveSignature = key_.sign(order.archive);
    const FileDescriptor held(open(bundle_.c_str(), O_RDONLY | O_DIRECTORY));
    auto staging = Staging::make(bundle_, 1);
    if (horalo::install(order, std::get<Staging>(staging), held.get())) return false;
    sweepLeftovers(bundle_);
    return true;
  }

  // The version of the bundle, all of whose files must be of it.
  int wholeVersion() const {
    const std::string version = readBundleInfo(bundle_).version;
    EXPECT_EQ(textOf(bundle_ / "Contents/Linux/horalo"), version);
    for (int i = 0; i < kFiles; ++i) {
      EXPECT_EQ(textOf(bundle_ / "Contents/lib" / std::to_string(i)),
                version + std::string(10'000, '\n'));
    }
    return std::stoi(version);
  }

  void killManyTimes(int times) {
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(update());
    const auto once = std::chrono::steady_clock::now() - begin;
    std::mt19937 random(static_cast<unsigned>(times));
    std::uniform_real_distribution<> updates(0, 3);
    const int first = wholeVersion();
    int version = first;
    int unfinished = 0;
    const auto isEnough = [&](int kills) {
      return kills >= times && version > first && unfinished > 0;
    };
    // On a busy computer an update may take longer now than it did the first time.
    for (int i = 0; !isEnough(i) && i < 20 * times && !HasFailure(); ++i) {
      ChildProcess updater([this] {
        while (update()) {
        }
      });
      // Whenever that is: the moment has no meaning.
      std::this_thread::sleep_for(once * updates(random));
      updater.send(SIGKILL);
      EXPECT_EQ(updater.wait(), std::nullopt) << "it ended before it was killed";
      const int now = wholeVersion();
      EXPECT_GE(now, version);
      version = now;
      if (hasLeftovers(bundle_)) ++unfinished;
    }
    EXPECT_GT(version, first) << "no update ever went through";
    EXPECT_GT(unfinished, 0) << "it was never killed in the middle";
    RecordProperty("versions", version);
    RecordProperty("unfinished", unfinished);
    sweepLeftovers(bundle_);
    EXPECT_EQ(namesIn(folder_ / ""), std::vector<std::string>{"Horalo.app"});
    EXPECT_EQ(wholeVersion(), version);
  }

  TestKey key_;
  TemporaryFolder folder_;
  fs::path bundle_ = folder_ / "Horalo.app";
};

TEST_F(InstallKillTest, leavesOneVersionWhole) {
  killManyTimes(20);
}

TEST_F(InstallKillTest, leavesOneVersionWholeTwoHundredTimes) {
  killManyTimes(200);
}

// Somebody with the same rights who overwrites every file that an update makes, as soon as it is
// there. He can spoil what is unpacked, but not what is checked: that never leaves the memory.
TEST_F(InstallKillTest, checksNothingThatOthersCanChange) {
  TestBundle evil = bundleOfVersion(1);
  evil.identifier = "org.example.Evil";
  const std::string evilInfo = evil.info();
  ChildProcess attacker([&] {
    while (true) {
      for (const auto& name : namesIn(folder_ / "")) {
        if (!isLeftover(name, bundle_)) continue;
        const fs::path info = folder_ / name / "Contents/Info.plist";
        if (exists(info)) writeText(info, evilInfo);
      }
    }
  });
  ChildProcess updater([&] {
    for (int i = 0; i < 30; ++i) {
      // An old version under a new number, which the overwritten file seems to justify or not.
      InstallationOrder order{{}, {}, readBundleInfo(bundle_), "", key_.keys()};
      order.archive = makeTar(bundleOfVersion(1).entries());
      order.item.version = "9";
      order.item.archiveLength = order.archive.size();
      order.item.archiveSignature = key_.sign(order.archive);
      const FileDescriptor held(open(bundle_.c_str(), O_RDONLY | O_DIRECTORY));
      auto staging = Staging::make(bundle_, 1);
      const auto problem = horalo::install(order, std::get<Staging>(staging), held.get());
      ASSERT_TRUE(problem);
      EXPECT_EQ(problem->message, problem::wrongBundle({}).message);
      EXPECT_TRUE(problem->advice.contains(QStringLiteral("its version is another one")));
    }
  });
  EXPECT_EQ(updater.wait(), 0);
  attacker.send(SIGKILL);
  attacker.wait();
  EXPECT_EQ(wholeVersion(), 1);
}

}  // namespace
}  // namespace horalo
