#include "clipboard/clipboard_monitor.h"

#include <utility>

#include "clipboard/copied_timestamp.h"
#include "engine/text_matching.h"

namespace horalo {

ClipboardMonitor::ClipboardMonitor(const Environment& environment)
    : environment_(environment),
      timer_(environment.timers.make()),
      lastChangeCount_(environment.pasteboard.changeCount()) {}

ClipboardMonitor::~ClipboardMonitor() {
  stop();
}

void ClipboardMonitor::start() {
  timer_->stop();
  lastChangeCount_ = environment_.pasteboard.changeCount();
  environment_.pasteboard.onChange([this] {
    if (!timer_->isActive()) timer_->startOnce(kInterval, [this] { checkClipboard(); });
  });
}

void ClipboardMonitor::stop() {
  environment_.pasteboard.onChange(nullptr);
  timer_->stop();
  read_.reset();
}

void ClipboardMonitor::checkClipboard() {
  const std::int64_t changeCount = environment_.pasteboard.changeCount();
  if (changeCount == lastChangeCount_) return;
  lastChangeCount_ = changeCount;
  if (std::exchange(suppressNextChange_, false)) return;
  // A text that is still under way belongs to a change before, and nobody waits for it any more.
  read_ = environment_.pasteboard.read({}, [this](const std::optional<std::string>& text) {
    const auto done = std::move(read_);
    examine(text);
  });
}

void ClipboardMonitor::examine(const std::optional<std::string>& text) {
  if (!text) return;
  const std::string_view input = trimmed(*text);
  auto parsed = copiedTimestamp(input, environment_.parser);
  if (!parsed || !detected_) return;
  const bool inUtc = environment_.preferences.isUTC();
  detected_(std::string(input), {parsed->date, std::move(parsed->source),
                                 inUtc ? TimeZone::utc() : environment_.zones.current()});
}

}  // namespace horalo
