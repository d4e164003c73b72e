// From the exchange to the new version that runs, or back: with scripts in place of the program.
#include "app/update/relaunch.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QEventLoop>
#include <QTimer>
#include <cstring>
#include <string_view>

#include "app/update/bundle_path.h"
#include "app/update/changeover.h"
#include "tests/fakes/child_process.h"
#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// The program: it tells its version in a file, and then does as its version does.
void writeProgram(const fs::path& bundle, const std::string& version, const std::string& script) {
  const fs::path path = bundle / kBundleProgram;
  fs::create_directories(path.parent_path());
  writeText(path, "#!/bin/bash\necho " + version + " $* >> \"$HORALO_TEST_LOG\"\n" + script);
  fs::permissions(path, fs::perms(0755));
}

// What the new version says once it runs well; it has the socket from its predecessor.
const char* const kSaysStarted = "echo started >&${HORALO_UPDATER_LINK%%:*}\nsleep 0.1\n";

class RelaunchTest : public testing::Test {
 protected:
  RelaunchTest() {
    qputenv("HORALO_TEST_LOG", (folder_ / "log").c_str());
    writeProgram(bundle_, "old", "");
    held_ = FileDescriptor(open(bundle_.c_str(), O_RDONLY | O_DIRECTORY));
  }

  // The old version: quits when told to, and becomes what is at the bundle's place then.
  void runOldVersion() {
    close(sockets_[0]);
    char word[20] = {};
    if (recv(sockets_[1], word, sizeof word, 0) <= 0 || std::string(word) != "relaunch\n") _exit(2);
    Relaunch relaunch;
    relaunch.request(bundle_ / kBundleProgram, {FileDescriptor(sockets_[1]), getpid()});
    _exit(relaunch.finish(0));
  }

  // Exchanges the versions and changes over; "succeeded", "rolled back" or "stuck".
  std::string changeOver(const std::string& newScript, std::chrono::milliseconds patience = 60s) {
    auto made = Staging::make(bundle_, 1);
    auto& staging = std::get<Staging>(made);
    writeProgram(staging.path(), "new", newScript);
    EXPECT_EQ(staging.exchange(held_.get()), std::nullopt);
    return changeOver(staging, patience, [this] { runOldVersion(); });
  }

  std::string changeOver(Staging& staging, std::chrono::milliseconds patience,
                         const std::function<void()>& old) {
    // The process at the other end is the one that made the socket, so that has to be the old one.
    int made[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, made), 0);
    ChildProcess program([&] {
      int sockets[2];
      if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) _exit(2);
      sendSocket(made[1], sockets[0]);
      close(made[0]);
      close(made[1]);
      sockets_[0] = sockets[0];
      sockets_[1] = sockets[1];
      old();
    });
    const FileDescriptor ours(receiveSocket(made[0]));
    close(made[0]);
    close(made[1]);
    AgentLink agent(ours.get());
    EXPECT_TRUE(agent.isValid());
    Changeover changeover(agent, staging, bundle_, patience);
    std::string result;
    QEventLoop loop;
    const auto end = [&](const char* how) {
      result = how;
      loop.quit();
    };
    QObject::connect(&changeover, &Changeover::succeeded, &loop, [&] { end("succeeded"); });
    QObject::connect(&changeover, &Changeover::rolledBack, &loop, [&] { end("rolled back"); });
    QObject::connect(&changeover, &Changeover::stuck, &loop, [&] { end("stuck"); });
    QTimer::singleShot(120'000, &loop, &QEventLoop::quit);
    changeover.begin();
    loop.exec();
    return result;
  }

  static void sendSocket(int over, int socket) {
    msghdr message{};
    char byte = 0;
    iovec data{&byte, 1};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof socket)] = {};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof socket);
    std::memcpy(CMSG_DATA(header), &socket, sizeof socket);
    sendmsg(over, &message, 0);
  }

  static int receiveSocket(int over) {
    msghdr message{};
    char byte = 0;
    iovec data{&byte, 1};
    int socket = -1;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof socket)] = {};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    if (recvmsg(over, &message, MSG_CMSG_CLOEXEC) > 0 && CMSG_FIRSTHDR(&message) != nullptr)
      std::memcpy(&socket, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof socket);
    return socket;
  }

  std::string log() const { return textOf(folder_ / "log"); }

  // The log once it ends with a line; programs that were started beside us take their time.
  std::string logOf(std::string_view last) const {
    for (int i = 0; i < 12'000 && !log().ends_with(last); ++i) usleep(5000);
    return log();
  }

  TemporaryFolder folder_;
  fs::path bundle_ = folder_ / "Horalo.app";
  FileDescriptor held_;
  int sockets_[2] = {-1, -1};  // in the old version's process: the updater's end, its own
};

TEST_F(RelaunchTest, becomesTheNewVersion) {
  EXPECT_EQ(changeOver(kSaysStarted), "succeeded");
  EXPECT_EQ(log(), "new --background\n");
  EXPECT_EQ(textOf(bundle_ / kBundleProgram).find("echo new"), 12U);
}

TEST_F(RelaunchTest, goesBackWhereTheNewVersionEndsAtOnce) {
  EXPECT_EQ(changeOver("exit 3"), "rolled back");
  EXPECT_EQ(logOf("old --background\n"), "new --background\nold --background\n");
  EXPECT_EQ(textOf(bundle_ / kBundleProgram).find("echo old"), 12U);
}

TEST_F(RelaunchTest, goesBackWhereTheNewVersionCannotEvenBeStarted) {
  auto made = Staging::make(bundle_, 1);
  auto& staging = std::get<Staging>(made);
  writeProgram(staging.path(), "new", "");
  writeText(staging.path() / kBundleProgram,
            "\x7f"
            "ELF and then nothing");
  EXPECT_EQ(staging.exchange(held_.get()), std::nullopt);
  EXPECT_EQ(changeOver(staging, 60s, [this] { runOldVersion(); }), "rolled back");
  EXPECT_EQ(logOf("old --background\n"), "old --background\n");
}

TEST_F(RelaunchTest, goesBackWhereTheNewVersionHangs) {
  // However long the new version takes to begin with that.
  EXPECT_EQ(changeOver("exec sleep 1000", 3s), "rolled back");
  EXPECT_THAT(logOf("old --background\n"), testing::EndsWith("old --background\n"));
}

// A process that ends lets go of one thing after the other: of its socket, then of its lock.
TEST_F(RelaunchTest, goesBackWhereTheNewVersionEndsSlowly) {
  EXPECT_EQ(changeOver("exec 9< \"${0%/Contents/*}\"; flock --shared 9\n"
                       "eval \"exec ${HORALO_UPDATER_LINK%%:*}>&-\"; sleep 0.3; exit 1"),
            "rolled back");
  EXPECT_EQ(logOf("old --background\n"), "new --background\nold --background\n");
}

TEST_F(RelaunchTest, staysWithANewVersionThatAnotherCopyRuns) {
  auto made = Staging::make(bundle_, 1);
  auto& staging = std::get<Staging>(made);
  writeProgram(staging.path(), "new", "exit 0");
  EXPECT_EQ(staging.exchange(held_.get()), std::nullopt);
  const FileDescriptor other(open(bundle_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  ASSERT_EQ(flock(other.get(), LOCK_SH), 0);
  EXPECT_EQ(changeOver(staging, 60s, [this] { runOldVersion(); }), "succeeded");
}

TEST_F(RelaunchTest, startsTheNewVersionWhereTheOldOneEndsBadly) {
  auto made = Staging::make(bundle_, 1);
  auto& staging = std::get<Staging>(made);
  writeProgram(staging.path(), "new", "");
  EXPECT_EQ(staging.exchange(held_.get()), std::nullopt);
  EXPECT_EQ(changeOver(staging, 60s, [] { _exit(1); }), "succeeded");
  EXPECT_EQ(logOf("new --background\n"), "new --background\n");
}

TEST_F(RelaunchTest, saysSoWhereItCannotGoBack) {
  auto made = Staging::make(bundle_, 1);
  auto& staging = std::get<Staging>(made);
  writeProgram(staging.path(), "new", "exit 1");
  EXPECT_EQ(staging.exchange(held_.get()), std::nullopt);
  fs::remove_all(staging.path());
  EXPECT_EQ(changeOver(staging, 60s, [this] { runOldVersion(); }), "stuck");
}

TEST(Relaunch, isNoneWithoutARequest) {
  EXPECT_EQ(Relaunch().finish(7), 7);
}

TEST(Relaunch, inheritsNothingThatMakesNoSense) {
  EXPECT_FALSE(Relaunch::inherited());
  for (const char* link : {"", "x", "1", ":", "1:", ":1", "-1:5", "999999:5", "1:2:3", "1x:2"}) {
    qputenv("HORALO_UPDATER_LINK", link);
    EXPECT_FALSE(Relaunch::inherited()) << link;
    EXPECT_FALSE(qEnvironmentVariableIsSet("HORALO_UPDATER_LINK")) << link;
  }
}

}  // namespace
}  // namespace horalo
