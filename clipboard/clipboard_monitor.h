#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/timers.h"
#include "clipboard/pasteboard.h"
#include "engine/conversion_result.h"
#include "engine/current_zone.h"
#include "engine/timestamp_parser.h"
#include "preferences/preferences.h"

namespace horalo {

// Notices when another program copies a Unix timestamp. Looks at the clipboard at most once in
// kInterval and only when it changed: a look comes that long after the first change since the last
// one, so that several copies in a row are one change, of the last content.
class ClipboardMonitor {
 public:
  static constexpr double kInterval = 0.3;  // seconds

  // What the monitor needs; all must outlive it.
  struct Environment {
    Pasteboard& pasteboard;
    Timers& timers;
    const TimestampParser& parser;
    const ZoneSource& zones;
    const Preferences& preferences;
  };

  // `input` is the copied text, trimmed.
  using TimestampDetected =
      std::function<void(const std::string& input, const ConversionResult& result)>;

  explicit ClipboardMonitor(const Environment& environment);
  ~ClipboardMonitor();
  ClipboardMonitor(const ClipboardMonitor&) = delete;
  ClipboardMonitor& operator=(const ClipboardMonitor&) = delete;

  void onTimestampDetected(TimestampDetected detected) { detected_ = std::move(detected); }

  // Begins to watch, or begins anew: what is on the clipboard by then is never reported.
  void start();
  void stop();

  // The next change that is looked at is the program's own copy, and is not reported.
  void suppressNextChange() { suppressNextChange_ = true; }

  // The pasteboard's count when it was last looked at.
  std::int64_t lastChangeCount() const { return lastChangeCount_; }

 private:
  void checkClipboard();
  void examine(const std::optional<std::string>& text);

  Environment environment_;
  std::unique_ptr<Timer> timer_;
  std::int64_t lastChangeCount_;
  bool suppressNextChange_ = false;
  TimestampDetected detected_;
  std::unique_ptr<Pasteboard::Read> read_;  // of the last change, while its text is fetched
};

}  // namespace horalo
