#include "cli/help.h"

#include <algorithm>
#include <array>

namespace horalo {

std::string_view generalHelp() {
  return R"(Horalo converts between Unix timestamps and dates.

Usage: horalo                     start Horalo, or show its panel if it already runs
       horalo --background        start Horalo without showing anything
       horalo convert [TEXT...]   convert texts here in the terminal
       horalo COMMAND             ask the running Horalo

Commands to the running Horalo:
  toggle         open the panel, or close it
  show           open the panel
  hide           close the panel
  settings       open the settings window
  check-updates  look for a new version
  quit           end Horalo
  status         what works here and what does not, with reasons

Options:
  --help         this text; horalo COMMAND --help tells more about one command
  --version      the version

Example: horalo convert 1704067200
)";
}

std::string_view convertHelp() {
  return R"(Usage: horalo convert [--zone ZONE] [--now INSTANT] [--only ROW] [--json] [TEXT...]

Converts a text to Unix seconds, Unix milliseconds, ISO 8601, a date in your language and a relative
phrase. The words of TEXT are joined by blanks into one text; without TEXT every line of standard
input is one text.

  horalo convert 1704067200
  horalo convert next monday
  horalo convert 2024-01-31 + 1 month
  horalo convert < timestamps.txt

Texts: Unix seconds and milliseconds, ISO 8601, dates such as 2024-01-05 10:00, 01/05/2024,
Jan 05, 2024 or 05 Jan 2024, now, today, yesterday, tomorrow, 3 days ago, next friday, now + 2h.

Options:
  --zone ZONE    the zone to show: an IANA name, UTC or local (default: local)
                   horalo convert --zone Asia/Tokyo 1704067200
  --now INSTANT  the ISO 8601 instant to take for the current one
                   horalo convert --now 2024-01-01T00:00:00Z 3 days ago
  --only ROW     print that value alone, a line a text: unix-s, unix-ms, iso, formatted or relative
                   horalo convert --only iso 1704067200
  --json         print one JSON object a text
                   horalo convert --json now
  --help         this text
                   horalo convert --help
  --             what follows is text, whatever it looks like
                   horalo convert -- --help

Exit status: 0; 1 when a text could not be parsed; 2 for wrong usage.
)";
}

std::string agentCommandHelp(std::string_view command) {
  struct Entry {
    std::string_view command;
    std::string_view text;
  };
  constexpr std::array entries{
      Entry{"toggle", "Opens the converter panel of the running Horalo, or closes it.\n"},
      Entry{"show",
            "Opens the converter panel of the running Horalo, and returns when it is there.\n"},
      Entry{"hide", "Closes the converter panel of the running Horalo.\n"},
      Entry{"settings", "Opens the settings window of the running Horalo.\n"},
      Entry{"check-updates", "Has the running Horalo look for a new version.\n"},
      Entry{"quit", "Ends the running Horalo, and returns when it has ended.\n"},
      Entry{"status",
            "Tells what works in this session and what does not, with reasons.\n\n"
            "Options:\n"
            "  --json         as one JSON object\n"},
  };
  const auto* const entry = std::find_if(entries.begin(), entries.end(),
                                         [&](const Entry& e) { return e.command == command; });
  if (entry == entries.end()) return {};
  const std::string_view options = command == "status" ? " [--json]" : "";
  return "Usage: horalo " + std::string(command) + std::string(options) + "\n\n" +
         std::string(entry->text) +
         "\nExit status: 0; 1 when it does not answer; 2 for wrong usage; 3 when none runs.\n";
}

}  // namespace horalo
