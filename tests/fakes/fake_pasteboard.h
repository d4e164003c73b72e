#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "clipboard/pasteboard.h"

namespace horalo {

// A clipboard in memory. Reads wait until the test answers them.
class FakePasteboard final : public Pasteboard {
 public:
  // Another program copies a text, or something that is none.
  void copy(std::optional<std::string> text) {
    content_ = std::move(text);
    grow();
  }

  // Answers the reads under way with what is on the clipboard; the number of them.
  std::size_t answerReads() {
    const std::deque<std::weak_ptr<Answer>> waiting = std::exchange(waiting_, {});
    std::size_t answered = 0;
    for (const auto& weak : waiting) {
      const auto answer = weak.lock();
      if (!answer) continue;
      ++answered;
      (*answer)(content_);
    }
    return answered;
  }

  // The reads under way that nobody gave up.
  std::size_t readsUnderWay() const {
    std::size_t count = 0;
    for (const auto& answer : waiting_) count += answer.expired() ? 0U : 1U;
    return count;
  }

  const std::optional<std::string>& content() const { return content_; }
  const std::vector<std::string>& written() const { return written_; }
  const std::vector<ReadLimits>& readLimits() const { return readLimits_; }  // of every read so far
  std::optional<double> handedOver() const { return handedOver_; }
  void setRefusesWrites(bool refuses) { refusesWrites_ = refuses; }
  void setStatus(PasteboardStatus status) { status_ = std::move(status); }
  // Called before a write takes effect.
  void setBeforeWrite(std::function<void()> action) { beforeWrite_ = std::move(action); }

  std::int64_t changeCount() const override { return changeCount_; }
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

  std::unique_ptr<Read> read(const ReadLimits& limits, Answer answer) override {
    readLimits_.push_back(limits);
    auto shared = std::make_shared<Answer>(std::move(answer));
    waiting_.push_back(shared);
    return std::make_unique<FakeRead>(std::move(shared));
  }

  bool write(const std::string& text) override {
    if (beforeWrite_) beforeWrite_();
    if (refusesWrites_) return false;
    written_.push_back(text);
    content_ = text;
    grow();
    return true;
  }

  void handOver(double seconds) override { handedOver_ = seconds; }
  PasteboardStatus status() const override { return status_; }

 private:
  struct FakeRead final : Read {
    explicit FakeRead(std::shared_ptr<Answer> answer) : answer_(std::move(answer)) {}
    std::shared_ptr<Answer> answer_;  // gone with the read, which gives it up
  };

  void grow() {
    ++changeCount_;
    if (changed_) changed_();
  }

  std::optional<std::string> content_;
  std::int64_t changeCount_ = 0;
  std::function<void()> changed_;
  std::function<void()> beforeWrite_;
  std::deque<std::weak_ptr<Answer>> waiting_;
  std::vector<std::string> written_;
  std::vector<ReadLimits> readLimits_;
  std::optional<double> handedOver_;
  PasteboardStatus status_{"x11", ""};
  bool refusesWrites_ = false;
};

}  // namespace horalo
