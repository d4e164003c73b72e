#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "engine/current_zone.h"

namespace horalo {
namespace {

constexpr int kNotRun = 77;  // ctest reports the test as skipped

void writeFile(const char* path, const std::string& text) {
  std::ofstream(path) << text << std::flush;
}

// Gives this process an /etc of its own, empty and in memory. Ends it where the kernel grants none.
void takeOwnEtc() {
  const uid_t user = getuid();
  const gid_t group = getgid();
  bool granted = unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
  if (granted) {
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    writeFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    granted = mount("none", "/etc", "tmpfs", 0, nullptr) == 0;
  }
  if (granted) return;
  std::puts("Not run: the kernel grants no user and mount namespaces here.");
  std::exit(kNotRun);
}

void linkLocalTime(const std::string& target) {
  std::filesystem::create_symlink(target, "/etc/localtime.new");
  std::filesystem::rename("/etc/localtime.new", "/etc/localtime");
}

TEST(SystemZone, FollowsTheComputerWhenItsZoneChanges) {
  takeOwnEtc();
  unsetenv("TZ");
  const SystemZone zone;
  EXPECT_EQ(zone.current().identifier(), "UTC");
  for (int round = 0; round < 3; ++round) {
    for (const char* identifier : {"Asia/Tokyo", "Europe/Paris", "America/St_Johns"}) {
      linkLocalTime(std::string("/usr/share/zoneinfo/") + identifier);
      EXPECT_EQ(zone.current().identifier(), identifier);
      EXPECT_EQ(zone.current().identifier(), identifier);
    }
  }
  linkLocalTime("../usr/share/zoneinfo/Asia/Kathmandu");
  EXPECT_EQ(zone.current().offsetAt(Instant{1'704'067'200, 0}), 20'700);
  // A copy of the zone's file, as some systems have it.
  for (const char* identifier : {"Asia/Tokyo", "Europe/Paris"}) {
    std::filesystem::remove("/etc/localtime");
    std::filesystem::copy_file(std::string("/usr/share/zoneinfo/") + identifier, "/etc/localtime");
    writeFile("/etc/timezone", identifier);
    EXPECT_EQ(zone.current().identifier(), identifier);
  }
  // Also one that no name fits, which another program writes over.
  writeFile("/etc/timezone", "Nowhere");
  for (const auto& [identifier, offset] :
       {std::pair("Asia/Tokyo", 32'400), {"Europe/Paris", 3'600}}) {
    using std::filesystem::copy_options;
    std::filesystem::copy_file(std::string("/usr/share/zoneinfo/") + identifier, "/etc/localtime",
                               copy_options::overwrite_existing);
    EXPECT_EQ(zone.current().offsetAt(Instant{1'704'067'200, 0}), offset);
  }
  linkLocalTime("zone");
  for (const char* identifier : {"Asia/Tokyo", "Europe/Paris"}) {
    std::filesystem::remove("/etc/zone");
    std::filesystem::create_symlink(std::string("/usr/share/zoneinfo/") + identifier, "/etc/zone");
    EXPECT_EQ(zone.current().identifier(), identifier);
  }
  linkLocalTime("/usr/share/zoneinfo/Asia/Kathmandu");
  setenv("TZ", "Asia/Tokyo", 1);
  EXPECT_EQ(zone.current().identifier(), "Asia/Tokyo");
  unsetenv("TZ");
  EXPECT_EQ(zone.current().identifier(), "Asia/Kathmandu");
}

}  // namespace
}  // namespace horalo
