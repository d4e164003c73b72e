#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/product_version.h"
#include "base/utf8.h"
#include "cli/agent_commands.h"
#include "cli/convert_command.h"
#include "cli/help.h"
#include "cli/output.h"

namespace {

using Words = std::vector<std::string_view>;

constexpr int kSuccess = 0;
constexpr int kWrongUsage = 2;

struct Command {
  std::string_view name;
  int (*run)(std::string_view name, const Words& words);  // gives the exit status
};

int convert(std::string_view, const Words& words) {
  return horalo::runConvert(words);
}

constexpr std::array kCommands{
    Command{"convert", convert},
    Command{"toggle", horalo::runAgentCommand},
    Command{"show", horalo::runAgentCommand},
    Command{"hide", horalo::runAgentCommand},
    Command{"settings", horalo::runAgentCommand},
    Command{"check-updates", horalo::runAgentCommand},
    Command{"quit", horalo::runAgentCommand},
    Command{"status", horalo::runAgentCommand},
};

int print(std::string_view text) {
  horalo::Output(STDOUT_FILENO).write(text);
  return kSuccess;
}

int printVersion() {
  return print("horalo " + std::string(horalo::productVersion()) + "\n");
}

int wrongUsage(std::string_view word) {
  const bool isOption = word.starts_with('-');
  horalo::Output(STDERR_FILENO)
      .write(std::string("horalo: unknown ") + (isOption ? "option" : "command") + " \"" +
             horalo::printable(word, 80) + "\"; see horalo --help\n");
  return kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  const Words words(argv + 1, argv + argc);
  if (words.empty()) return horalo::startAgent(false);
  if (words[0] == "--background" && words.size() == 1) return horalo::startAgent(true);
  if (words[0] == "--help" || words[0] == "-h") return print(horalo::generalHelp());
  if (words[0] == "--version") return printVersion();
  const auto* const command = std::find_if(kCommands.begin(), kCommands.end(),
                                           [&](const Command& c) { return c.name == words[0]; });
  if (command == kCommands.end()) return wrongUsage(words[0]);
  return command->run(command->name, Words(words.begin() + 1, words.end()));
}
