#include "engine/zone_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "engine/time_zone.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr Instant kNewYear{1'704'067'200, 0};

class ZoneFileTest : public testing::Test {
 protected:
  ZoneFileTest() {
    std::string pattern = (fs::temp_directory_path() / "horalo-zones-XXXXXX").string();
    EXPECT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    file_ = folder_ / "Summer";
  }
  ~ZoneFileTest() override { fs::remove_all(folder_); }

  // As package managers do it.
  void replaceBy(const std::string& identifier) {
    const fs::path next = folder_ / "next";
    fs::copy_file(zoneFilePath(identifier), next);
    fs::rename(next, file_);
  }
  std::int32_t offset() const { return TimeZone::ofFile(file_.string())->offsetAt(kNewYear); }

  fs::path folder_;
  fs::path file_;
};

// The system's time-zone files are updated several times a year.
TEST_F(ZoneFileTest, AZoneIsReadAnewWhenItsFileWasReplaced) {
  replaceBy("Asia/Tokyo");
  EXPECT_EQ(offset(), 32'400);
  const TimeZone before = TimeZone::ofFile(file_.string()).value();
  replaceBy("Asia/Kathmandu");
  EXPECT_EQ(offset(), 20'700);
  EXPECT_EQ(before.offsetAt(kNewYear), 32'400) << "whoever has it keeps it";
  replaceBy("Asia/Tokyo");
  EXPECT_EQ(offset(), 32'400);
  EXPECT_EQ(TimeZone::ofFile(file_.string())->identifier(), file_.string());
}

TEST_F(ZoneFileTest, AZoneIsFoundOnceItsFileIsThere) {
  EXPECT_FALSE(TimeZone::ofFile(file_.string()));
  replaceBy("Asia/Tokyo");
  EXPECT_EQ(offset(), 32'400);
}

TEST_F(ZoneFileTest, AZoneOfTheDatabaseToo) {
  const char* before = std::getenv("TZDIR");
  const std::string folder = before == nullptr ? "" : before;
  replaceBy("Asia/Tokyo");
  setenv("TZDIR", folder_.c_str(), 1);
  EXPECT_EQ(TimeZone::find("Summer")->offsetAt(kNewYear), 32'400);
  unsetenv("TZDIR");
  replaceBy("Asia/Kathmandu");
  setenv("TZDIR", folder_.c_str(), 1);
  EXPECT_EQ(TimeZone::find("Summer")->offsetAt(kNewYear), 20'700);
  EXPECT_EQ(TimeZone::find("Summer")->identifier(), "Summer");
  if (before == nullptr) {
    unsetenv("TZDIR");
  } else {
    setenv("TZDIR", folder.c_str(), 1);
  }
}

TEST_F(ZoneFileTest, NamesStayTheSameWhileTheFileDoes) {
  replaceBy("Asia/Tokyo");
  const auto name = freshZoneName(file_.string());
  EXPECT_TRUE(name);
  EXPECT_EQ(freshZoneName(file_.string()), name);
  replaceBy("Asia/Tokyo");
  EXPECT_NE(freshZoneName(file_.string()), name);
  EXPECT_FALSE(freshZoneName("No/Such_Zone"));
}

TEST_F(ZoneFileTest, VersionsTellWhatWasWritten) {
  EXPECT_FALSE(FileVersion::of(file_.string()).exists());
  std::ofstream(file_) << "one";
  const FileVersion one = FileVersion::of(file_.string());
  EXPECT_TRUE(one.exists());
  EXPECT_EQ(FileVersion::of(file_.string()), one);
  std::ofstream(file_, std::ios::app) << "more";
  EXPECT_NE(FileVersion::of(file_.string()), one);
}

}  // namespace
}  // namespace horalo
