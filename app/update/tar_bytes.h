#pragma once

#include <QByteArray>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct archive;

namespace horalo {

// The bytes of a tar archive that is compressed by gzip, xz or zstd, or not at all.
class TarBytes {
 public:
  // `packed` must outlive this object.
  explicit TarBytes(QByteArrayView packed);

  // The next bytes, to be used before the next call; an empty span at the end. Nothing where they
  // cannot be decompressed.
  std::optional<std::span<const char>> next();

  // What next() has given of which no more than the first `taken` bytes, counted over all calls,
  // were of use. Nothing where that is more than its last answer.
  std::optional<std::span<const char>> unread(std::int64_t taken) const;

  // At the end: whether something stands behind what was compressed.
  bool hasMore() const;

 private:
  QByteArrayView packed_;
  std::unique_ptr<archive, int (*)(archive*)> reader_;
  bool isReady_ = false;
  std::vector<char> block_;
  std::span<const char> last_;
  std::int64_t given_ = 0;
};

}  // namespace horalo
