#include "app/update/archive.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>

#include "app/update/folder_writer.h"
#include "tests/app/update/test_release.h"
#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kFile = 0100000;
constexpr unsigned kFolder = 0040000;

// Unpacks into "in" of a folder of its own, in which "beside" must stay as it was.
class Unpacked {
 public:
  explicit Unpacked(QByteArrayView archive, ArchiveLimits limits = {}) {
    fs::create_directory(folder_ / "in");
    writeText(folder_ / "beside", "untouched");
    const FileDescriptor in(open((folder_ / "in").c_str(), O_RDONLY | O_DIRECTORY));
    result_ = unpackArchive(archive, in.get(), limits);
    EXPECT_EQ(textOf(folder_ / "beside"), "untouched");
    EXPECT_EQ(namesIn(folder_ / "").size(), 2U) << "something was written outside";
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / "in")) {
      EXPECT_TRUE(entry.symlink_status().type() == fs::file_type::regular ||
                  entry.symlink_status().type() == fs::file_type::directory)
          << entry.path();
      EXPECT_EQ(entry.status().permissions() & (fs::perms::set_uid | fs::perms::set_gid),
                fs::perms::none);
    }
  }

  // Empty where it worked.
  std::string failure() const {
    const auto* const failure = std::get_if<UnpackFailure>(&result_);
    return failure != nullptr ? failure->reason : "";
  }
  const UnpackedBundle& bundle() const { return std::get<UnpackedBundle>(result_); }
  fs::path path(const char* name) const { return folder_ / "in" / name; }

 private:
  TemporaryFolder folder_;
  std::variant<UnpackedBundle, UnpackFailure> result_;
};

std::vector<TarEntry> goodEntries() {
  return TestBundle{}.entries();
}

TarEntry file(const std::string& path, const std::string& content = "x") {
  return {path, kFile, 0644, content, "", false};
}

std::vector<TarEntry> goodAnd(const TarEntry& entry) {
  auto entries = goodEntries();
  entries.push_back(entry);
  return entries;
}

TEST(Archive, unpacksABundleInEveryCompression) {
  for (const auto compression :
       {Compression::none, Compression::gzip, Compression::xz, Compression::zstd}) {
    const Unpacked unpacked(makeTar(goodEntries(), compression));
    ASSERT_EQ(unpacked.failure(), "") << static_cast<int>(compression);
    EXPECT_EQ(unpacked.bundle().info.toStdString(), TestBundle{}.info());
    EXPECT_TRUE(unpacked.bundle().hasProgram);
    EXPECT_EQ(textOf(unpacked.path("Contents/Info.plist")), TestBundle{}.info());
    EXPECT_EQ(textOf(unpacked.path("Contents/Linux/horalo")), TestBundle{}.program);
    struct stat is {};
    ASSERT_EQ(stat(unpacked.path("Contents/Linux/horalo").c_str(), &is), 0);
    EXPECT_EQ(is.st_mode & 07777U, 0755U);
    ASSERT_EQ(stat(unpacked.path("Contents/Info.plist").c_str(), &is), 0);
    EXPECT_EQ(is.st_mode & 07777U, 0644U);
  }
}

TEST(Archive, tellsWhetherTheProgramIsThere) {
  auto entries = goodEntries();
  entries[2].permissions = 0644;
  EXPECT_FALSE(Unpacked(makeTar(entries)).bundle().hasProgram);
  entries.pop_back();
  EXPECT_FALSE(Unpacked(makeTar(entries)).bundle().hasProgram);
}

TEST(Archive, refusesWhatDoesNotBelongIntoABundle) {
  const std::string deep = [] {
    std::string path = "Horalo.app";
    for (int i = 0; i < 30; ++i) path += "/d";
    return path;
  }();
  const std::string top = "Horalo.app/";
  const std::map<std::string, TarEntry> entries = {
      {"up", file(top + "../evil")},
      {"far up", file("../../evil")},
      {"up behind", file(top + "Contents/../../../evil")},
      {"up alone", file("..")},
      {"here", file(top + "./evil")},
      {"absolute", file("/evil")},
      {"absolute in temporary", file("/tmp/horalo-evil")},
      {"two slashes", file(top + "/evil")},
      {"empty", file("")},
      {"another folder", file("Other.app/evil")},
      {"no folder", file("evil")},
      {"a newline", file(top + "a\nb")},
      {"a control", file(top + "a\x1b[31m")},
      {"a blank", file(top + "a b")},
      {"a backslash", file(top + "..\\evil")},
      {"right to left", file(top + "a\xe2\x80\xae")},
      {"no UTF-8", file(top + "a\xff")},
      {"a long name", file(top + std::string(201, 'a'))},
      {"thirty levels", file(deep)},
      {"the same again", file(top + "Contents/Info.plist", "again")},
      {"the same in capitals", file(top + "Contents/INFO.PLIST", "again")},
      {"the folder again", {"Horalo.app/", kFolder, 0755, "", "", false}},
      {"a file as folder", file(top + "Contents/Info.plist/evil")},
      {"link to a file", {top + "l", 0120000, 0777, "", "/etc/passwd", false}},
      {"link up", {top + "l", 0120000, 0777, "", "../..", false}},
      {"link in the bundle", {top + "l", 0120000, 0777, "", "Contents", false}},
      {"hard link out", {top + "l", kFile, 0644, "", "/etc/passwd", true}},
      {"hard link in", {top + "l", kFile, 0644, "", top + "Contents/Info.plist", true}},
      {"pipe", {top + "p", 0010000, 0644, "", "", false}},
      {"character device", {top + "c", 0020000, 0644, "", "", false}},
      {"block device", {top + "b", 0060000, 0644, "", "", false}},
      {"set-uid", {top + "s", kFile, 04755, "x", "", false}},
      {"set-gid", {top + "s", kFile, 02755, "x", "", false}},
      {"sticky", {top + "s", kFolder, 01755, "", "", false}}};
  int cases = 0;
  for (const auto& [name, entry] : entries) {
    for (const auto compression : {Compression::none, Compression::xz}) {
      EXPECT_NE(Unpacked(makeTar(goodAnd(entry), compression)).failure(), "") << name;
    }
    ++cases;
  }
  EXPECT_EQ(cases, 34);
}

TEST(Archive, refusesToWriteThroughALinkThatItBrought) {
  auto entries = goodAnd({"Horalo.app/l", 0120000, 0777, "", "..", false});
  entries.push_back(file("Horalo.app/l/beside"));
  EXPECT_NE(Unpacked(makeTar(entries)).failure(), "");
}

TEST(Archive, writesThroughNobodyElsesLinkEither) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "in");
  fs::create_directories(folder / "out");
  fs::create_directory_symlink(folder / "out", folder / "in/Contents");
  const FileDescriptor in(open((folder / "in").c_str(), O_RDONLY | O_DIRECTORY));
  const auto result = unpackArchive(makeTar(goodEntries()), in.get());
  EXPECT_TRUE(std::holds_alternative<UnpackFailure>(result));
  EXPECT_TRUE(fs::is_empty(folder / "out"));
}

TEST(Archive, refusesWhatIsNone) {
  const QByteArray good = makeTar(goodEntries());
  const std::vector<QByteArray> damaged = {"",
                                           "<html><body>Sign in</body></html>",
                                           QByteArray(1000, '\0'),
                                           QByteArray(100'000, 'x'),
                                           good.first(good.size() / 2),
                                           good.chopped(1),
                                           good.sliced(1),
                                           good + "trailing",

                                           makeTar(goodEntries(), Compression::bzip2)};
  for (const QByteArray& bytes : damaged) {
    EXPECT_NE(Unpacked(bytes).failure(), "") << bytes.size();
  }
  const QByteArray gzip = makeTar(goodEntries(), Compression::gzip);
  EXPECT_NE(Unpacked(gzip + "trailing").failure(), "");
}

// Archivers fill the last record of a tar up with zeros, wherever in a block of the compression
// that comes to lie.
TEST(Archive, mayEndInAFullRecord) {
  constexpr qsizetype record = 10'240;
  int cases = 0;
  for (std::size_t size = 50'000; size < 75'000; size += 1024) {
    QByteArray tar =
        makeTar(goodAnd(file("Horalo.app/f", std::string(size, 'f'))), Compression::none);
    tar.append((record - tar.size() % record) % record, '\0');
    for (const auto compression :
         {Compression::none, Compression::gzip, Compression::xz, Compression::zstd}) {
      EXPECT_EQ(Unpacked(compressed(tar, compression)).failure(), "")
          << size << " in compression " << static_cast<int>(compression);
      ++cases;
    }
  }
  EXPECT_EQ(cases, 100);
}

TEST(Archive, endsWithNothingElse) {
  const QByteArray tar = makeTar(goodEntries(), Compression::none);
  const QByteArray fill(5000, '\0');
  for (const auto compression :
       {Compression::none, Compression::gzip, Compression::xz, Compression::zstd}) {
    EXPECT_NE(Unpacked(compressed(tar + fill + 'x', compression)).failure(), "");
    EXPECT_NE(Unpacked(compressed(tar + 'x' + fill, compression)).failure(), "");
    EXPECT_NE(Unpacked(compressed(tar + fill + tar, compression)).failure(), "");
    EXPECT_NE(Unpacked(compressed(tar + QByteArray(50'000'000, '\0'), compression)).failure(), "");
    if (compression == Compression::none) continue;
    EXPECT_NE(Unpacked(compressed(tar + fill, compression) + 'x').failure(), "");
    EXPECT_NE(Unpacked(compressed(tar + fill, compression).chopped(1)).failure(), "");
  }
}

TEST(Archive, findsEveryFlippedBit) {
  const QByteArray good = makeTar(goodEntries());
  int refused = 0;
  for (qsizetype at = 0; at < good.size(); ++at) {
    QByteArray bytes = good;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x10);
    if (!Unpacked(bytes).failure().empty()) ++refused;
  }
  EXPECT_GT(refused, good.size() * 9 / 10) << "of " << good.size();
}

TEST(Archive, hasAnEnd) {
  const ArchiveLimits limits{.entries = 10, .depth = 16, .bytes = 100'000};
  auto entries = goodEntries();
  for (int i = 0; i < 7; ++i) entries.push_back(file("Horalo.app/f" + std::to_string(i)));
  EXPECT_EQ(Unpacked(makeTar(entries), limits).failure(), "");
  entries.push_back(file("Horalo.app/more"));
  EXPECT_NE(Unpacked(makeTar(entries), limits).failure(), "");

  const auto big = [](std::size_t size) {
    return goodAnd(file("Horalo.app/big", std::string(size, '\0')));
  };
  EXPECT_EQ(Unpacked(makeTar(big(90'000)), limits).failure(), "");
  EXPECT_NE(Unpacked(makeTar(big(100'000)), limits).failure(), "");
  EXPECT_NE(Unpacked(makeTar(big(50'000'000)), limits).failure(), "");
}

TEST(FolderWriter, givesEverybodyTheRightToRead) {
  const TemporaryFolder folder;
  const FileDescriptor parent(open((folder / "").c_str(), O_RDONLY | O_DIRECTORY));
  const mode_t before = umask(077);
  FolderWriter writer(parent.get());
  EXPECT_TRUE(writer.makeFolder("a/b"));
  EXPECT_TRUE(writer.makeFile("c/d", true));
  umask(before);
  for (const char* name : {"a", "a/b", "c", "c/d"})
    EXPECT_EQ(fs::status(folder / name).permissions(), fs::perms(0755)) << name;
}

TEST(FolderWriter, removesATreeAndFollowsNoLink) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "tree/a/b/c");
  fs::create_directories(folder / "kept/d");
  writeText(folder / "tree/a/f", "x");
  fs::create_directory_symlink(folder / "kept", folder / "tree/a/link");
  fs::permissions(folder / "tree/a/b", fs::perms::owner_read | fs::perms::owner_exec);
  const FileDescriptor parent(open((folder / "").c_str(), O_RDONLY | O_DIRECTORY));
  EXPECT_TRUE(removeTree(parent.get(), "tree"));
  EXPECT_FALSE(exists(folder / "tree"));
  EXPECT_TRUE(exists(folder / "kept/d"));
  EXPECT_FALSE(removeTree(parent.get(), "none"));
}

}  // namespace
}  // namespace horalo
