#include "tests/fakes/manual_timers.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

namespace horalo {
namespace {

using std::chrono::nanoseconds;

constexpr nanoseconds kNever = nanoseconds::max();

// Nanoseconds keep sums of 0.3 s exact; what they cannot hold is never due.
nanoseconds lengthOf(double seconds) {
  if (!(seconds > 0)) return nanoseconds(0);
  if (seconds > 9.0e9) return kNever;
  return nanoseconds(std::llround(seconds * 1e9));
}

}  // namespace

class ManualTimers::Queue {
 public:
  // A moment and, among those of one moment, the order of starting.
  using Ticket = std::pair<nanoseconds, std::uint64_t>;

  Ticket add(nanoseconds length, std::function<void()> action) {
    const nanoseconds due = length > kNever - now_ ? kNever : now_ + length;
    const Ticket ticket{due, ++count_};
    waiting_.emplace(ticket, std::move(action));
    return ticket;
  }

  void remove(const Ticket& ticket) { waiting_.erase(ticket); }

  void advance(nanoseconds length, ManualClock* clock) {
    if (length >= kNever - now_) throw std::out_of_range("time ends after 290 years");
    const nanoseconds end = now_ + length;
    for (int actions = 0; !waiting_.empty() && waiting_.begin()->first.first <= end; ++actions) {
      if (actions == 1'000'000) throw std::logic_error("timers keep each other due for ever");
      moveTo(waiting_.begin()->first.first, clock);
      const auto action = std::move(waiting_.begin()->second);
      waiting_.erase(waiting_.begin());
      action();
    }
    moveTo(end, clock);
  }

  std::size_t size() const { return waiting_.size(); }

  std::optional<double> timeToNext() const {
    if (waiting_.empty()) return std::nullopt;
    const nanoseconds due = waiting_.begin()->first.first;
    if (due == kNever) return std::numeric_limits<double>::infinity();
    return std::chrono::duration<double>(due - now_).count();
  }

 private:
  void moveTo(nanoseconds moment, ManualClock* clock) {
    if (clock != nullptr) clock->advance(moment - now_);
    now_ = moment;
  }

  nanoseconds now_{0};
  std::uint64_t count_ = 0;
  std::map<Ticket, std::function<void()>> waiting_;
};

class ManualTimers::ManualTimer final : public Timer {
 public:
  explicit ManualTimer(std::shared_ptr<Queue> queue) : queue_(std::move(queue)) {}
  ~ManualTimer() override { ManualTimer::stop(); }

  void startOnce(double seconds, std::function<void()> action) override {
    stop();
    ticket_ = queue_->add(lengthOf(seconds), [this, action = std::move(action)] {
      ticket_.reset();
      action();
    });
  }

  void startRepeating(double seconds, std::function<void()> action) override {
    if (!(seconds > 0)) throw std::invalid_argument("a repeating timer needs a length");
    stop();
    repeat(lengthOf(seconds), std::move(action));
  }

  void stop() override {
    if (ticket_) queue_->remove(*ticket_);
    ticket_.reset();
  }

  bool isActive() const override { return ticket_.has_value(); }

 private:
  void repeat(nanoseconds length, std::function<void()> action) {
    ticket_ = queue_->add(length, [this, length, action = std::move(action)] {
      repeat(length, action);
      action();
    });
  }

  std::shared_ptr<Queue> queue_;
  std::optional<Queue::Ticket> ticket_;
};

ManualTimers::ManualTimers(ManualClock* clock) : queue_(std::make_shared<Queue>()), clock_(clock) {}
ManualTimers::~ManualTimers() = default;

std::unique_ptr<Timer> ManualTimers::make() {
  return std::make_unique<ManualTimer>(queue_);
}

void ManualTimers::after(double seconds, std::function<void()> action) {
  queue_->add(lengthOf(seconds), std::move(action));
}

void ManualTimers::advance(double seconds) {
  queue_->advance(lengthOf(seconds), clock_);
}

std::size_t ManualTimers::pendingCount() const {
  return queue_->size();
}

std::optional<double> ManualTimers::timeToNext() const {
  return queue_->timeToNext();
}

}  // namespace horalo
