#include "cli/line_reader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace horalo {
namespace {

constexpr std::size_t kUsualSize = 262'144;

}  // namespace

LineReader::LineReader(int descriptor, std::function<void()> beforeWaiting)
    : descriptor_(descriptor), beforeWaiting_(std::move(beforeWaiting)), buffer_(kUsualSize) {}

std::optional<std::string_view> LineReader::next() {
  while (true) {
    const char* const data = buffer_.data();
    if (const void* found = std::memchr(data + scanned_, '\n', end_ - scanned_)) {
      const auto lineEnd = static_cast<std::size_t>(static_cast<const char*>(found) - data);
      const std::string_view line(data + start_, lineEnd - start_);
      start_ = scanned_ = lineEnd + 1;
      return line;
    }
    scanned_ = end_;
    if (atEnd_ || !fill()) break;
  }
  if (start_ == end_) return std::nullopt;
  const std::string_view last(buffer_.data() + start_, end_ - start_);
  start_ = end_;
  return last;
}

bool LineReader::fill() {
  // What is left of the last line moves to the front, which makes room without end for a file of
  // short lines; only a line longer than the buffer makes it grow.
  if (start_ > 0) {
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(start_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
  }
  end_ -= start_;
  scanned_ -= start_;
  start_ = 0;
  if (end_ == 0 && buffer_.size() > kUsualSize) buffer_ = std::vector<char>(kUsualSize);
  if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);

  beforeWaiting_();
  while (true) {
    const ssize_t count = ::read(descriptor_, buffer_.data() + end_, buffer_.size() - end_);
    if (count > 0) {
      end_ += static_cast<std::size_t>(count);
      return true;
    }
    if (count < 0 && errno == EINTR) continue;
    error_ = count < 0 ? errno : 0;
    atEnd_ = true;
    return false;
  }
}

}  // namespace horalo
