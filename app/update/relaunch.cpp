#include "app/update/relaunch.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace horalo {
namespace {

constexpr const char* kLinkVariable = "HORALO_UPDATER_LINK";  // "SOCKET:PROCESS"
// Tells the updater that the old version has ended in good order.
constexpr std::string_view kBecoming = "becoming\n";

std::optional<int> number(std::string_view text) {
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < 0) return std::nullopt;
  return value;
}

}  // namespace

void Relaunch::request(std::filesystem::path program, UpdaterLink link) {
  program_ = std::move(program);
  link_ = std::move(link);
}

int Relaunch::finish(int status) {
  if (program_.empty()) return status;
  const std::string link = std::to_string(link_.socket.get()) + ":" + std::to_string(link_.process);
  send(link_.socket.get(), kBecoming.data(), kBecoming.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  fcntl(link_.socket.get(), F_SETFD, 0);
  setenv(kLinkVariable, link.c_str(), 1);
  execl(program_.c_str(), "horalo", "--background", nullptr);
  return 1;
}

std::optional<UpdaterLink> Relaunch::inherited() {
  const char* const variable = std::getenv(kLinkVariable);
  if (variable == nullptr) return std::nullopt;
  const std::string text = variable;
  unsetenv(kLinkVariable);

  const auto colon = text.find(':');
  if (colon == std::string::npos) return std::nullopt;
  const auto socket = number(std::string_view(text).substr(0, colon));
  const auto process = number(std::string_view(text).substr(colon + 1));
  if (!socket || !process || fcntl(*socket, F_SETFD, FD_CLOEXEC) != 0) return std::nullopt;
  return UpdaterLink{FileDescriptor(*socket), *process};
}

}  // namespace horalo
