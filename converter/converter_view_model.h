#pragma once

#include <QObject>
#include <QUuid>
#include <memory>
#include <optional>
#include <string>

#include "base/clock.h"
#include "base/timers.h"
#include "engine/conversion_result.h"
#include "engine/current_zone.h"
#include "engine/timestamp_parser.h"
#include "preferences/preferences.h"

namespace horalo {

// The state behind the converter panel: what was typed, the zone in which it is shown, and the
// result or the message. Never has a result and a message at once. While there is a result, it is
// published anew every second if it lies within a minute of now, else every ten.
class ConverterViewModel : public QObject {
  Q_OBJECT
 public:
  // What the state needs; all must outlive it.
  struct Environment {
    const TimestampParser& parser;
    const Clock& clock;
    const ZoneSource& zones;
    Timers& timers;
    Preferences& preferences;
  };

  explicit ConverterViewModel(const Environment& environment, QObject* parent = nullptr);
  ~ConverterViewModel() override;

  const std::string& input() const { return input_; }
  bool isUTC() const { return isUTC_; }
  const TimeZone& selectedTimezone() const { return selectedTimezone_; }
  const std::optional<ConversionResult>& result() const { return result_; }
  const std::optional<std::string>& errorMessage() const { return errorMessage_; }
  // Each new value asks the view to give the input field the keyboard.
  QUuid focusTrigger() const { return focusTrigger_; }
  // The zone in which results are shown.
  TimeZone currentTimezone() const;

  // A different text is converted at once; the same one does nothing.
  void setInput(const std::string& input);
  // Reads the input anew: a result for "now" becomes that of the present moment.
  void convert();
  // Forgets the input and what came of it.
  void clear();
  // These two store the preference "isUTC" and show a result in the new zone. The chosen zone
  // itself is not stored.
  void toggleUTC();
  void setTimezone(const TimeZone& zone);
  void requestFocus();
  // Takes the stored preference and the user's zone as they are now, like a new one; for one that
  // was made some time before it is needed.
  void startFresh();

  // While resting, as when the panel is hidden, nothing is refreshed; waking arms the timer anew
  // and publishes the result once.
  void setResting(bool resting);

 Q_SIGNALS:
  // Sent before a property changes, and before a result is published anew; observers read the new
  // state in the next turn of the event loop.
  void willChange();
  // Sent when the input has changed and its result is there.
  void inputChanged();
  // Sent when there is a new focusTrigger().
  void focusRequested();

 private:
  void publish(std::optional<ConversionResult> result, std::optional<std::string> errorMessage);
  void scheduleNextRefresh();
  void refreshResult();

  Environment environment_;
  std::string input_;
  bool isUTC_ = false;
  TimeZone selectedTimezone_;
  std::optional<ConversionResult> result_;
  std::optional<std::string> errorMessage_;
  QUuid focusTrigger_;
  std::unique_ptr<Timer> refreshTimer_;
  bool resting_ = false;
};

}  // namespace horalo
