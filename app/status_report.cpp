#include "app/status_report.h"

#include <fstream>
#include <string_view>

#include "base/json_text.h"

namespace horalo {
namespace {

// Writes the members of one JSON object in order.
class ObjectWriter {
 public:
  explicit ObjectWriter(std::string& json) : json_(json) { json_ += '{'; }
  ~ObjectWriter() { json_ += '}'; }

  void member(std::string_view name, std::string_view text) {
    begin(name);
    appendJsonString(json_, text);
  }
  void member(std::string_view name, const std::string& text) {
    member(name, std::string_view(text));
  }
  void member(std::string_view name, bool value) {
    begin(name);
    json_ += value ? "true" : "false";
  }
  ObjectWriter object(std::string_view name) {
    begin(name);
    return ObjectWriter(json_);
  }

 private:
  void begin(std::string_view name) {
    if (json_.back() != '{') json_ += ',';
    appendJsonString(json_, name);
    json_ += ':';
  }

  std::string& json_;
};

std::string line(std::string_view name, std::string_view state, std::string_view reason) {
  constexpr std::size_t width = 12;
  std::string text(name);
  text.resize(width, ' ');
  text += state;
  if (!reason.empty()) text.append(": ").append(reason);
  return text + '\n';
}

std::string_view yesNo(bool value, std::string_view yes, std::string_view no) {
  return value ? yes : no;
}

}  // namespace

std::string asJson(const StatusReport& report) {
  std::string json;
  {
    ObjectWriter whole(json);
    whole.member("running", true);
    whole.member("version", report.version);
    whole.member("session", report.session);
    {
      auto hotkey = whole.object("hotkey");
      hotkey.member("backend", report.hotkey.backend);
      hotkey.member("shortcut", report.shortcut);
      hotkey.member("active", report.hotkey.active);
      hotkey.member("reason", report.hotkey.reason);
    }
    {
      auto tray = whole.object("tray");
      tray.member("backend", report.tray.backend);
      tray.member("visible", report.tray.visible);
      tray.member("reason", report.tray.reason);
    }
    {
      auto clipboard = whole.object("clipboard");
      clipboard.member("backend", report.clipboard.backend);
      clipboard.member("watching", report.isWatching);
      clipboard.member("reason", report.clipboard.reason);
    }
    whole.object("panel").member("visible", report.panelIsVisible);
    {
      auto updates = whole.object("updates");
      updates.member("enabled", report.updates.enabled);
      updates.member("reason", report.updates.reason);
    }
    {
      auto timezone = whole.object("timezone");
      timezone.member("id", report.zone);
      timezone.member("tzdata", report.tzdata);
    }
  }
  return json;
}

std::string asText(const StatusReport& report) {
  const auto& [backend, active, reason] = report.hotkey;
  const std::string release =
      report.tzdata.empty() ? "" : " (time-zone files " + report.tzdata + ')';
  return "Horalo " + report.version + " runs.\n" + line("Session", report.session, {}) +
         line("Shortcut",
              report.shortcut + ' ' + std::string(yesNo(active, "works", "does not work")) + " (" +
                  backend + ')',
              reason) +
         line("Tray icon",
              std::string(yesNo(report.tray.visible, "shown", "not shown")) + " (" +
                  report.tray.backend + ')',
              report.tray.reason) +
         line("Clipboard",
              std::string(yesNo(report.isWatching, "watched", "not watched")) + " (" +
                  report.clipboard.backend + ')',
              report.clipboard.reason) +
         line("Panel", yesNo(report.panelIsVisible, "open", "closed"), {}) +
         line("Updates", yesNo(report.updates.enabled, "automatic", "not automatic"),
              report.updates.reason) +
         line("Time zone", report.zone + release, {});
}

std::string timeZoneDataRelease() {
  constexpr std::string_view prefix = "# version ";
  std::ifstream rules("/usr/share/zoneinfo/tzdata.zi");
  std::string first;
  if (std::getline(rules, first) && first.starts_with(prefix)) return first.substr(prefix.size());
  std::ifstream version("/usr/share/zoneinfo/+VERSION");
  return std::getline(version, first) ? first : std::string();
}

}  // namespace horalo
