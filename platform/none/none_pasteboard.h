#pragma once

#include <string>
#include <utility>

#include "clipboard/pasteboard.h"

namespace horalo {

// Where the desktop has no clipboard that could be reached: never changes, never has a text.
class NonePasteboard final : public Pasteboard {
 public:
  // `reason`: why, for the user.
  explicit NonePasteboard(std::string reason) : reason_(std::move(reason)) {}

  std::int64_t changeCount() const override { return 0; }
  void onChange(std::function<void()>) override {}
  std::unique_ptr<Read> read(const ReadLimits& limits, Answer answer) override;
  bool write(const std::string&) override { return false; }
  void handOver(double) override {}
  PasteboardStatus status() const override { return {"none", reason_}; }

 private:
  std::string reason_;
};

}  // namespace horalo
