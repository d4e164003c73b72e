#include "app/update/update_state.h"

#include <algorithm>
#include <cmath>

#include "base/user_folders.h"

namespace horalo {
namespace {

constexpr const char* kLastCheck = "lastCheck";
constexpr const char* kFailures = "failures";
constexpr const char* kHighestVersion = "highestVersion";
constexpr const char* kSkippedVersion = "skippedVersion";
constexpr const char* kRolloutGroup = "rolloutGroup";
constexpr int kMostFailures = 1000;  // more would only make a longer file

}  // namespace

std::filesystem::path UpdateState::defaultPath() {
  const auto folder = userStateFolder();
  return folder.empty() ? folder : folder / "horalo" / "updates.plist";
}

std::optional<double> UpdateState::lastCheck() const {
  return number(kLastCheck);
}

int UpdateState::failures() const {
  const auto count = number(kFailures);
  return count && *count >= 0 && *count <= kMostFailures ? static_cast<int>(*count) : 0;
}

void UpdateState::setLastCheck(double secondsSinceEpoch, int failures) {
  store_.set({{kLastCheck, secondsSinceEpoch}, {kFailures, std::min(failures, kMostFailures)}});
}

void UpdateState::setFailures(int failures) {
  store_.set({{kFailures, std::min(failures, kMostFailures)}});
}

std::string UpdateState::highestVersion() const {
  return text(kHighestVersion);
}

void UpdateState::setHighestVersion(const std::string& version) {
  store_.set({{kHighestVersion, version}});
}

std::string UpdateState::skippedVersion() const {
  return text(kSkippedVersion);
}

void UpdateState::setSkippedVersion(const std::string& version) {
  store_.set({{kSkippedVersion, version}});
}

std::optional<int> UpdateState::rolloutGroup() const {
  const auto group = number(kRolloutGroup);
  if (!group || *group < 0 || *group > 6) return std::nullopt;
  return static_cast<int>(*group);
}

void UpdateState::setRolloutGroup(int group) {
  store_.set({{kRolloutGroup, group}});
}

std::string UpdateState::text(std::string_view key) const {
  const auto value = store_.value(key);
  const std::string* const text = value ? value->string() : nullptr;
  return text != nullptr ? *text : std::string();
}

std::optional<double> UpdateState::number(std::string_view key) const {
  const auto value = store_.value(key);
  const auto number = value ? value->number() : std::nullopt;
  return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace horalo
