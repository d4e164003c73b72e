#include "preferences/preferences.h"

#include <cmath>

#include "preferences/preferences_store.h"

namespace horalo {
namespace {

namespace key {
constexpr auto launchAtLogin = "launchAtLogin";
constexpr auto showMenuBarIcon = "showMenuBarIcon";
constexpr auto closeWindowAfterCopy = "closeWindowAfterCopy";
constexpr auto autoPasteFromClipboard = "autoPasteFromClipboard";
constexpr auto clipboardMonitorEnabled = "clipboardMonitorEnabled";
constexpr auto toastPosition = "toastPosition";
constexpr auto autoClearDelay = "autoClearDelay";
constexpr auto updateCheckInterval = "updateCheckInterval";
constexpr auto isUTC = "isUTC";
constexpr auto panelPositionX = "panelPositionX";
constexpr auto panelPositionY = "panelPositionY";
constexpr auto hotkeyConfiguration = "hotkeyConfiguration";
}  // namespace key

bool boolean(const PreferencesStore& store, const char* key, bool otherwise) {
  const auto value = store.value(key);
  return value ? value->boolean().value_or(otherwise) : otherwise;
}

double number(const PreferencesStore& store, const char* key, double otherwise) {
  const auto value = store.value(key);
  return value ? value->number().value_or(otherwise) : otherwise;
}

std::optional<double> coordinate(const plist::Dictionary& values, const char* key) {
  const auto found = values.find(key);
  if (found == values.end()) return std::nullopt;
  const auto number = found->second.number();
  return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace

bool Preferences::launchAtLogin() const {
  return boolean(store_, key::launchAtLogin, false);
}

bool Preferences::showMenuBarIcon() const {
  return boolean(store_, key::showMenuBarIcon, true);
}

bool Preferences::closeWindowAfterCopy() const {
  return boolean(store_, key::closeWindowAfterCopy, true);
}

bool Preferences::autoPasteFromClipboard() const {
  return boolean(store_, key::autoPasteFromClipboard, false);
}

bool Preferences::clipboardMonitorEnabled() const {
  return boolean(store_, key::clipboardMonitorEnabled, false);
}

std::string Preferences::toastPosition() const {
  const auto value = store_.value(key::toastPosition);
  const auto* text = value ? value->string() : nullptr;
  return text != nullptr ? *text : "bottomCenter";
}

double Preferences::autoClearDelay() const {
  return number(store_, key::autoClearDelay, 60);
}

double Preferences::updateCheckInterval() const {
  return number(store_, key::updateCheckInterval, 0);
}

double Preferences::shownUpdateCheckInterval() const {
  return number(store_, key::updateCheckInterval, 86400);
}

bool Preferences::isUTC() const {
  return boolean(store_, key::isUTC, false);
}

std::optional<Point> Preferences::panelPosition() const {
  const auto values = store_.values();
  const auto x = coordinate(values, key::panelPositionX);
  const auto y = coordinate(values, key::panelPositionY);
  if (!x || !y) return std::nullopt;
  return Point{*x, *y};
}

std::optional<std::string> Preferences::hotkeyConfiguration() const {
  const auto value = store_.value(key::hotkeyConfiguration);
  const auto* bytes = value ? value->data() : nullptr;
  if (bytes == nullptr) return std::nullopt;
  return *bytes;
}

void Preferences::setLaunchAtLogin(bool value) {
  store_.set({{key::launchAtLogin, value}});
}

void Preferences::setShowMenuBarIcon(bool value) {
  store_.set({{key::showMenuBarIcon, value}});
}

void Preferences::setCloseWindowAfterCopy(bool value) {
  store_.set({{key::closeWindowAfterCopy, value}});
}

void Preferences::setAutoPasteFromClipboard(bool value) {
  store_.set({{key::autoPasteFromClipboard, value}});
}

void Preferences::setClipboardMonitorEnabled(bool value) {
  store_.set({{key::clipboardMonitorEnabled, value}});
}

void Preferences::setToastPosition(std::string_view value) {
  store_.set({{key::toastPosition, std::string(value)}});
}

void Preferences::setAutoClearDelay(double seconds) {
  store_.set({{key::autoClearDelay, seconds}});
}

void Preferences::setUpdateCheckInterval(double seconds) {
  store_.set({{key::updateCheckInterval, seconds}});
}

void Preferences::setIsUTC(bool value) {
  store_.set({{key::isUTC, value}});
}

void Preferences::setPanelPosition(Point origin) {
  store_.set({{key::panelPositionX, origin.x}, {key::panelPositionY, origin.y}});
}

void Preferences::setHotkeyConfiguration(std::string_view bytes) {
  store_.set({{key::hotkeyConfiguration, plist::Data{std::string(bytes)}}});
}

}  // namespace horalo
