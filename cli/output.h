#pragma once

#include <string>
#include <string_view>

namespace horalo {

// Collects text for a file descriptor and writes it in large pieces.
class Output {
 public:
  explicit Output(int descriptor) : descriptor_(descriptor) {}
  ~Output() { flush(); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(std::string_view text);
  void write(char c) { write(std::string_view(&c, 1)); }
  // What has not been written yet, for text that is best made in place.
  std::string& pending() { return pending_; }
  void flush();

  // Why writing failed, as errno has it; 0 where it did not. EPIPE where nobody reads any more.
  // What is written after a failure is dropped.
  int error() const { return error_; }

  // Whether both lead to the same place, as on a terminal, so that their order matters.
  bool leadsWhere(const Output& other) const;

 private:
  int descriptor_;
  std::string pending_;
  int error_ = 0;
};

}  // namespace horalo
