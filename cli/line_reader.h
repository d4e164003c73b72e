#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace horalo {

// Reads lines from a file descriptor as they come. Lines end at LF alone; a last line without one
// counts too.
class LineReader {
 public:
  // `beforeWaiting` is called each time before the descriptor is read, which may wait for the
  // program at its other end: the moment to hand on what is ready.
  LineReader(int descriptor, std::function<void()> beforeWaiting);

  // The next line without its LF, valid until the next call; nothing at the end or where reading
  // fails.
  std::optional<std::string_view> next();

  // Why reading ended early, as errno has it; 0 where it did not.
  int error() const { return error_; }

 private:
  bool fill();

  int descriptor_;
  std::function<void()> beforeWaiting_;
  std::vector<char> buffer_;
  std::size_t start_ = 0;    // of what has not been given out
  std::size_t end_ = 0;      // of what has been read
  std::size_t scanned_ = 0;  // up to here there is no LF
  bool atEnd_ = false;
  int error_ = 0;
};

}  // namespace horalo
