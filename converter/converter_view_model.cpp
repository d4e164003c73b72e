#include "converter/converter_view_model.h"

#include <string_view>
#include <utility>

#include "engine/text_matching.h"

namespace horalo {
namespace {

constexpr double kNear = 60;  // seconds from now within which each second shows
constexpr double kNearInterval = 1;
constexpr double kFarInterval = 10;

}  // namespace

ConverterViewModel::ConverterViewModel(const Environment& environment, QObject* parent)
    : QObject(parent),
      environment_(environment),
      isUTC_(environment.preferences.isUTC()),
      selectedTimezone_(environment.zones.current()),
      focusTrigger_(QUuid::createUuid()),
      refreshTimer_(environment.timers.make()) {}

ConverterViewModel::~ConverterViewModel() = default;

TimeZone ConverterViewModel::currentTimezone() const {
  return isUTC_ ? TimeZone::utc() : selectedTimezone_;
}

void ConverterViewModel::setInput(const std::string& input) {
  if (input == input_) return;
  Q_EMIT willChange();
  input_ = input;
  convert();
  Q_EMIT inputChanged();
}

void ConverterViewModel::convert() {
  const std::string_view text = trimmed(input_);
  if (text.empty()) {
    publish(std::nullopt, std::nullopt);
  } else if (auto parsed = environment_.parser.parse(text)) {
    publish(ConversionResult{parsed->date, std::move(parsed->source), currentTimezone()},
            std::nullopt);
  } else {
    publish(std::nullopt, "Could not parse input");
  }
}

void ConverterViewModel::clear() {
  Q_EMIT willChange();
  input_.clear();
  publish(std::nullopt, std::nullopt);
  Q_EMIT inputChanged();
}

void ConverterViewModel::toggleUTC() {
  Q_EMIT willChange();
  isUTC_ = !isUTC_;
  environment_.preferences.setIsUTC(isUTC_);
  if (result_) convert();
}

void ConverterViewModel::setTimezone(const TimeZone& zone) {
  Q_EMIT willChange();
  selectedTimezone_ = zone;
  isUTC_ = false;
  environment_.preferences.setIsUTC(false);
  if (result_) convert();
}

void ConverterViewModel::requestFocus() {
  Q_EMIT willChange();
  focusTrigger_ = QUuid::createUuid();
  Q_EMIT focusRequested();
}

void ConverterViewModel::startFresh() {
  Q_EMIT willChange();
  isUTC_ = environment_.preferences.isUTC();
  selectedTimezone_ = environment_.zones.current();
}

void ConverterViewModel::setResting(bool resting) {
  if (resting == resting_) return;
  resting_ = resting;
  refreshTimer_->stop();
  if (!resting_) refreshResult();
  scheduleNextRefresh();
}

void ConverterViewModel::publish(std::optional<ConversionResult> result,
                                 std::optional<std::string> errorMessage) {
  Q_EMIT willChange();
  result_ = std::move(result);
  errorMessage_ = std::move(errorMessage);
  refreshTimer_->stop();
  scheduleNextRefresh();
}

void ConverterViewModel::scheduleNextRefresh() {
  if (!result_ || resting_) return;
  const double distance = distanceInSeconds(result_->date, environment_.clock.now());
  refreshTimer_->startOnce(distance < kNear ? kNearInterval : kFarInterval, [this] {
    refreshResult();
    scheduleNextRefresh();
  });
}

void ConverterViewModel::refreshResult() {
  if (!result_) return;
  Q_EMIT willChange();
  result_->timezone = currentTimezone();
}

}  // namespace horalo
