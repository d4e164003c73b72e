#pragma once

#include <QByteArray>
#include <QString>
#include <string>
#include <vector>

#include "app/update/bundle_info.h"
#include "app/update/signature.h"

namespace horalo {

// A key pair of a test's own.
class TestKey {
 public:
  TestKey();

  const std::string& publicText() const { return publicText_; }
  std::string sign(QByteArrayView message) const;
  UpdateKeys keys() const;

 private:
  QByteArray secret_;
  std::string publicText_;
};

// One entry of an archive, as hostile as a test wants it.
struct TarEntry {
  std::string path;
  unsigned type = 0100000;  // of the file, as in st_mode
  unsigned permissions = 0644;
  std::string content;
  std::string linkTo;  // the target of a link
  bool hard = false;   // that the link is a hard one
};

enum class Compression { none, gzip, bzip2, xz, zstd };

QByteArray compressed(const QByteArray& content, Compression compression);

// A tar archive without what fills its last record up.
QByteArray makeTar(const std::vector<TarEntry>& entries, Compression compression = Compression::xz);

struct TestBundle {
  std::string identifier = "org.horalo.Horalo";
  std::string version = "2.0";
  std::vector<std::string> keys;
  std::string feedUrl = "https://example.org/feed";
  std::string program = "#!/bin/sh\n";

  std::string info() const;  // its Info.plist
  std::vector<TarEntry> entries() const;
};

// What a feed says about one version; an empty text leaves its element or attribute out.
struct TestItem {
  std::string version = "2.0";
  std::string url;
  std::string length;
  std::string signature;
  std::string more;       // further elements
  std::string enclosure;  // further attributes
};

QByteArray makeFeed(const std::vector<TestItem>& items,
                    const std::string& published = "Fri, 05 Jan 2024 10:00:00 +0000");

// The feed with its signature behind it.
QByteArray signedFeed(const QByteArray& feed, const TestKey& key);

}  // namespace horalo
