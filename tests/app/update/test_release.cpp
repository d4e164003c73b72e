#include "tests/app/update/test_release.h"

#include <archive.h>
#include <archive_entry.h>
#include <gtest/gtest.h>
#include <sodium.h>

#include "preferences/property_list.h"

namespace horalo {
namespace {

std::string base64(const unsigned char* bytes, std::size_t size) {
  return QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size))
      .toBase64()
      .toStdString();
}

la_ssize_t append(archive*, void* bytes, const void* block, std::size_t size) {
  static_cast<QByteArray*>(bytes)->append(static_cast<const char*>(block),
                                          static_cast<qsizetype>(size));
  return static_cast<la_ssize_t>(size);
}

void setCompression(archive* writer, Compression compression) {
  switch (compression) {
    case Compression::none:
      return;
    case Compression::gzip:
      archive_write_add_filter_gzip(writer);
      return;
    case Compression::bzip2:
      archive_write_add_filter_bzip2(writer);
      return;
    case Compression::xz:
      archive_write_add_filter_xz(writer);
      return;
    case Compression::zstd:
      archive_write_add_filter_zstd(writer);
      return;
  }
}

std::string element(const std::string& name, const std::string& text) {
  return text.empty() ? "" : "<" + name + ">" + text + "</" + name + ">";
}

std::string attribute(const std::string& name, const std::string& text) {
  return text.empty() ? "" : " " + name + "=\"" + text + "\"";
}

}  // namespace

TestKey::TestKey() : secret_(crypto_sign_SECRETKEYBYTES, '\0') {
  EXPECT_GE(sodium_init(), 0);
  unsigned char key[crypto_sign_PUBLICKEYBYTES];
  crypto_sign_keypair(key, reinterpret_cast<unsigned char*>(secret_.data()));
  publicText_ = base64(key, sizeof key);
}

std::string TestKey::sign(QByteArrayView message) const {
  unsigned char signature[crypto_sign_BYTES];
  crypto_sign_detached(signature, nullptr, reinterpret_cast<const unsigned char*>(message.data()),
                       static_cast<unsigned long long>(message.size()),
                       reinterpret_cast<const unsigned char*>(secret_.data()));
  return base64(signature, sizeof signature);
}

UpdateKeys TestKey::keys() const {
  const std::string_view text = publicText_;
  return UpdateKeys::parse({&text, 1}).value();
}

QByteArray compressed(const QByteArray& content, Compression compression) {
  if (compression == Compression::none) return content;
  QByteArray bytes;
  archive* const writer = archive_write_new();
  archive_write_set_format_raw(writer);
  archive_write_set_bytes_in_last_block(writer, 1);
  setCompression(writer, compression);
  EXPECT_EQ(archive_write_open(writer, &bytes, nullptr, append, nullptr), ARCHIVE_OK);
  archive_entry* const header = archive_entry_new();
  archive_entry_set_filetype(header, AE_IFREG);
  EXPECT_EQ(archive_write_header(writer, header), ARCHIVE_OK) << archive_error_string(writer);
  EXPECT_EQ(archive_write_data(writer, content.data(), static_cast<std::size_t>(content.size())),
            content.size());
  archive_entry_free(header);
  EXPECT_EQ(archive_write_close(writer), ARCHIVE_OK);
  archive_write_free(writer);
  return bytes;
}

QByteArray makeTar(const std::vector<TarEntry>& entries, Compression compression) {
  QByteArray bytes;
  archive* const writer = archive_write_new();
  archive_write_set_format_pax_restricted(writer);
  archive_write_set_bytes_in_last_block(writer, 1);
  EXPECT_EQ(archive_write_open(writer, &bytes, nullptr, append, nullptr), ARCHIVE_OK);
  for (const TarEntry& entry : entries) {
    archive_entry* const header = archive_entry_new();
    archive_entry_set_pathname(header, entry.path.c_str());
    archive_entry_set_mode(header, entry.type | entry.permissions);
    archive_entry_set_size(header, static_cast<la_int64_t>(entry.content.size()));
    if (entry.hard) {
      archive_entry_set_hardlink(header, entry.linkTo.c_str());
    } else if (!entry.linkTo.empty()) {
      archive_entry_set_symlink(header, entry.linkTo.c_str());
    }
    // A warning for a name that is no text.
    EXPECT_GE(archive_write_header(writer, header), ARCHIVE_WARN) << archive_error_string(writer);
    archive_write_data(writer, entry.content.data(), entry.content.size());
    archive_entry_free(header);
  }
  EXPECT_EQ(archive_write_close(writer), ARCHIVE_OK);
  archive_write_free(writer);
  return compressed(bytes, compression);
}

std::string TestBundle::info() const {
  plist::Dictionary dictionary{{"CFBundleIdentifier", identifier},
                               {"CFBundleShortVersionString", version},
                               {"CFBundleVersion", version},
                               {"SUFeedURL", feedUrl}};
  if (!keys.empty()) dictionary.insert({"SUPublicEDKey", plist::Array(keys.begin(), keys.end())});
  return plist::write(dictionary).toStdString();
}

std::vector<TarEntry> TestBundle::entries() const {
  return {{"Horalo.app/", 0040000, 0755, "", "", false},
          {"Horalo.app/Contents/Info.plist", 0100000, 0644, info(), "", false},
          {"Horalo.app/Contents/Linux/horalo", 0100000, 0755, program, "", false}};
}

QByteArray makeFeed(const std::vector<TestItem>& items, const std::string& published) {
  std::string feed =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      "<rss version=\"2.0\""
      " xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel>\n" +
      element("pubDate", published);
  for (const TestItem& item : items) {
    feed += "<item>" + element("sparkle:version", item.version) + item.more + "<enclosure" +
            attribute("url", item.url) + attribute("length", item.length) +
            attribute("sparkle:edSignature", item.signature) + " " + item.enclosure + "/></item>\n";
  }
  return QByteArray::fromStdString(feed + "</channel></rss>\n");
}

QByteArray signedFeed(const QByteArray& feed, const TestKey& key) {
  return feed +
         "<!-- sparkle-signatures:\nedSignature: " + QByteArray::fromStdString(key.sign(feed)) +
         "\nlength: " + QByteArray::number(feed.size()) + "\n-->\n";
}

}  // namespace horalo
