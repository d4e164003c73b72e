#include "app/single_instance.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "app/instance_client.h"
#include "app/instance_socket.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

class SingleInstanceTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  InstanceAddress address_ = instanceAddressIn(folder_.path().toStdString(), "0");
};

TEST_F(SingleInstanceTest, LiesWhereOthersLookForIt) {
  EXPECT_EQ(address_.lockPath, folder_.path().toStdString() + "/horalo-0.lock");
  EXPECT_EQ(address_.socketPath, folder_.path().toStdString() + "/horalo-0.socket");
}

TEST_F(SingleInstanceTest, TheSecondOneFailsAndTheNextSucceeds) {
  EXPECT_FALSE(isRunning(address_));
  {
    const auto first = SingleInstance::acquire(address_);
    ASSERT_TRUE(first);
    EXPECT_TRUE(isRunning(address_));
    EXPECT_FALSE(SingleInstance::acquire(address_));
  }
  EXPECT_FALSE(isRunning(address_));
  EXPECT_FALSE(std::filesystem::exists(address_.socketPath));
  EXPECT_TRUE(SingleInstance::acquire(address_));
}

TEST_F(SingleInstanceTest, TwoDisplaysHaveOneEach) {
  const auto first = SingleInstance::acquire(address_);
  const auto second =
      SingleInstance::acquire(instanceAddressIn(folder_.path().toStdString(), "wayland-0"));
  EXPECT_TRUE(first);
  EXPECT_TRUE(second);
}

TEST_F(SingleInstanceTest, OnlyItsUserMaySpeakToIt) {
  const auto instance = SingleInstance::acquire(address_);
  struct stat status {};
  ASSERT_EQ(stat(address_.socketPath.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  ASSERT_EQ(stat(address_.lockPath.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(SingleInstanceTest, AKilledOneLeavesTheWayFree) {
  const pid_t child = fork();
  if (child == 0) {
    const auto instance = SingleInstance::acquire(address_);
    if (instance) raise(SIGKILL);
    _exit(1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  ASSERT_TRUE(std::filesystem::exists(address_.socketPath));
  EXPECT_FALSE(connectTo(address_.socketPath));

  const auto next = SingleInstance::acquire(address_);
  ASSERT_TRUE(next);
  EXPECT_TRUE(connectTo(address_.socketPath));
}

TEST_F(SingleInstanceTest, ARemovedLockFileIsNoLock) {
  auto first = SingleInstance::acquire(address_);
  std::filesystem::remove(address_.lockPath);
  EXPECT_TRUE(SingleInstance::acquire(address_)) << "the program that holds the old file is lost";
}

TEST_F(SingleInstanceTest, AFolderThatCannotBeWrittenDoesNotStopTheProgram) {
  const auto instance = SingleInstance::acquire(instanceAddressIn("/nonexistent", "0"));
  ASSERT_TRUE(instance);
  EXPECT_LT(instance->socket(), 0);
}

TEST_F(SingleInstanceTest, ALongPathWorksAsWell) {
  const std::string deep = folder_.path().toStdString() + "/" + std::string(200, 'd');
  std::filesystem::create_directory(deep);
  const auto address = instanceAddressIn(deep, "0");
  const auto instance = SingleInstance::acquire(address);
  ASSERT_TRUE(instance);
  EXPECT_GE(instance->socket(), 0);
  EXPECT_TRUE(connectTo(address.socketPath));
}

// Each of twelve processes starts when the pipe closes, and holds what it got until all have tried.
TEST_F(SingleInstanceTest, OfTwelveSimultaneousStartsExactlyOneSucceeds) {
  constexpr int rounds = 20;
  constexpr std::size_t starts = 12;
  for (int round = 0; round < rounds; ++round) {
    std::array<int, 2> go{};
    std::array<int, 2> result{};
    std::array<int, 2> end{};
    ASSERT_EQ(pipe(go.data()) | pipe(result.data()) | pipe(end.data()), 0);
    std::array<pid_t, starts> children{};
    for (auto& child : children) {
      child = fork();
      if (child != 0) continue;
      close(go[1]);
      close(end[1]);
      char byte = 0;
      if (read(go[0], &byte, 1) != 0) _exit(1);
      const auto instance = SingleInstance::acquire(address_);
      byte = instance ? '1' : '0';
      if (write(result[1], &byte, 1) != 1 || read(end[0], &byte, 1) != 0) _exit(1);
      _exit(0);
    }
    close(go[1]);
    std::string results;
    while (results.size() < starts) {
      char byte = 0;
      ASSERT_EQ(read(result[0], &byte, 1), 1);
      results += byte;
    }
    close(end[1]);
    for (const pid_t child : children) {
      int status = -1;
      EXPECT_EQ(waitpid(child, &status, 0), child);
      EXPECT_EQ(status, 0);
    }
    for (const int file : {go[0], result[0], result[1], end[0]}) close(file);
    EXPECT_EQ(std::count(results.begin(), results.end(), '1'), 1) << "round " << round;
  }
}

}  // namespace
}  // namespace horalo
