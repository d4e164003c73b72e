#include "cli/agent_commands.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <string>

#include "app/instance_client.h"
#include "base/utf8.h"
#include "cli/help.h"
#include "cli/output.h"
#include "platform/session.h"

namespace horalo {
namespace {

using Outcome = InstanceReply::Outcome;
using std::chrono::milliseconds;
using namespace std::chrono_literals;

constexpr milliseconds kPatience = 3s;
// A second start ends within a second whatever the first one does.
constexpr milliseconds kStartPatience = 900ms;

enum ExitStatus { success = 0, failure = 1, wrongUsage = 2, notRunning = 3 };

int print(std::string_view text) {
  Output(STDOUT_FILENO).write(text);
  return success;
}

int complain(const std::string& text, ExitStatus status) {
  Output(STDERR_FILENO).write("horalo: " + text + '\n');
  return status;
}

int complainAboutSilence() {
  return complain("the running program does not answer", failure);
}

InstanceReply send(std::string_view command) {
  const auto address = instanceAddress(currentSession().display);
  if (!address) return {};
  return command == "quit" ? askToQuit(*address, kPatience) : ask(*address, command, kPatience);
}

// Beside this command, or in the folder for programs that nobody types.
std::filesystem::path agentProgram() {
  std::error_code ignored;
  const auto folder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
  auto beside = folder / "horalo-agent";
  if (std::filesystem::exists(beside, ignored)) return beside;
  return folder.parent_path() / "lib" / "horalo" / "horalo-agent";
}

}  // namespace

int runAgentCommand(std::string_view command, const std::vector<std::string_view>& words) {
  const std::string_view word = words.empty() ? std::string_view() : words[0];
  if (word == "--help" || word == "-h") return print(agentCommandHelp(command));
  const bool wantsJson = command == "status" && words.size() == 1 && word == "--json";
  if (!words.empty() && !wantsJson) {
    return complain(std::string(command) + " takes no \"" + printable(words.back(), 80) +
                        "\"; see horalo " + std::string(command) + " --help",
                    wrongUsage);
  }
  const InstanceReply reply = send(wantsJson ? "status --json" : command);
  switch (reply.outcome) {
    case Outcome::answered:
      return print(reply.text);
    case Outcome::noAnswer:
      return complainAboutSilence();
    case Outcome::notRunning:
      break;
  }
  if (wantsJson) print("{\"running\":false}\n");
  return complain("not running", notRunning);
}

int startAgent(bool background) {
  if (const auto address = instanceAddress(currentSession().display)) {
    if (background && isRunning(*address)) return success;
    const Outcome outcome =
        background ? Outcome::notRunning : ask(*address, "show", kStartPatience).outcome;
    if (outcome == Outcome::answered) return success;
    if (outcome == Outcome::noAnswer) return complainAboutSilence();
  }
  const auto program = agentProgram();
  execl(program.c_str(), "horalo", background ? "--background" : nullptr, nullptr);
  return complain("cannot start " + program.string() + ": " + std::strerror(errno), failure);
}

}  // namespace horalo
