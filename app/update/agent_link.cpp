#include "app/update/agent_link.h"

#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace horalo {
namespace {

constexpr qsizetype kLongestLine = 100;
constexpr int kPatience = 5'000;  // milliseconds

FileDescriptor peerOf(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 || peer.pid <= 0) return {};
  return FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, peer.pid, 0)));
}

}  // namespace

AgentLink::AgentLink(int socket)
    : socket_(socket), process_(peerOf(socket)), messages_(socket, QSocketNotifier::Read) {
  connect(&messages_, &QSocketNotifier::activated, this, [this] { receive(); });
}

void AgentLink::say(const char* line) {
  send(socket_, line, std::strlen(line), MSG_NOSIGNAL | MSG_DONTWAIT);
}

void AgentLink::killAgent() {
  syscall(SYS_pidfd_send_signal, process_.get(), SIGKILL, nullptr, 0);
}

void AgentLink::waitForEnd() const {
  pollfd process{.fd = process_.get(), .events = POLLIN, .revents = 0};
  poll(&process, 1, kPatience);
}

void AgentLink::receive() {
  char bytes[kLongestLine];
  const auto count = recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) {
    messages_.setEnabled(false);
    Q_EMIT lost();
    return;
  }
  received_.append(bytes, count);
  qsizetype end = 0;
  while ((end = received_.indexOf('\n')) >= 0) {
    const QByteArray line = received_.first(end);
    received_.remove(0, end + 1);
    if (line == "show") Q_EMIT show();
    if (line == "becoming") Q_EMIT becoming();
    if (line == "started") Q_EMIT started();
  }
  if (received_.size() > kLongestLine) received_.clear();
}

}  // namespace horalo
