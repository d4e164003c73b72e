#include "app/update/tar_bytes.h"

#include <archive.h>

namespace horalo {
namespace {

constexpr std::size_t kBlock = 128 * 1024;

}  // namespace

TarBytes::TarBytes(QByteArrayView packed)
    : packed_(packed), reader_(archive_read_new(), archive_read_free), block_(kBlock) {
  archive* const reader = reader_.get();
  // A decompressor that the library would have to run as a program is none for us.
  const bool isOpen =
      reader != nullptr && archive_read_support_format_raw(reader) == ARCHIVE_OK &&
      archive_read_support_filter_gzip(reader) == ARCHIVE_OK &&
      archive_read_support_filter_xz(reader) == ARCHIVE_OK &&
      archive_read_support_filter_zstd(reader) == ARCHIVE_OK &&
      archive_read_open_memory(reader, packed.data(), static_cast<std::size_t>(packed.size())) ==
          ARCHIVE_OK;
  archive_entry* whole = nullptr;
  isReady_ = isOpen && archive_read_next_header(reader, &whole) == ARCHIVE_OK;
}

std::optional<std::span<const char>> TarBytes::next() {
  if (!isReady_) return std::nullopt;
  const la_ssize_t count = archive_read_data(reader_.get(), block_.data(), block_.size());
  if (count < 0) {
    isReady_ = false;
    return std::nullopt;
  }
  const std::span<const char> bytes(block_.data(), static_cast<std::size_t>(count));
  if (!bytes.empty()) last_ = bytes;  // at the end it is still there
  given_ += count;
  return bytes;
}

std::optional<std::span<const char>> TarBytes::unread(std::int64_t taken) const {
  const std::int64_t count = given_ - taken;
  if (count < 0 || count > static_cast<std::int64_t>(last_.size())) return std::nullopt;
  return last_.last(static_cast<std::size_t>(count));
}

bool TarBytes::hasMore() const {
  return archive_filter_bytes(reader_.get(), -1) != packed_.size();
}

}  // namespace horalo
