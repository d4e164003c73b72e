#include "app/instance_client.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/syscall.h>

#include <thread>

#include "app/instance_protocol.h"
#include "app/instance_socket.h"
#include "base/file_descriptor.h"

namespace horalo {
namespace {

using Outcome = InstanceReply::Outcome;
using std::chrono::milliseconds;

// The end of a wait.
class Deadline {
 public:
  explicit Deadline(milliseconds limit) : end_(std::chrono::steady_clock::now() + limit) {}
  bool isOver() const { return left().count() <= 0; }

  // Whether something can be read from `file` before the end.
  bool waitFor(int file) const {
    pollfd wanted{file, POLLIN, 0};
    const auto wait = std::max(left(), milliseconds(0));
    return poll(&wanted, 1, static_cast<int>(wait.count())) == 1;
  }

 private:
  milliseconds left() const {
    return std::chrono::ceil<milliseconds>(end_ - std::chrono::steady_clock::now());
  }

  std::chrono::steady_clock::time_point end_;
};

// Between taking the lock and listening a program needs a moment, and so does one that is ending.
FileDescriptor connectWhenListening(const InstanceAddress& address, const Deadline& deadline) {
  while (true) {
    FileDescriptor connection = connectTo(address.socketPath);
    if (connection || deadline.isOver() || !isRunning(address)) return connection;
    std::this_thread::sleep_for(milliseconds(2));
  }
}

InstanceReply exchange(const FileDescriptor& connection, std::string_view command,
                       const Deadline& deadline) {
  const std::string line = std::string(command) + '\n';
  if (send(connection.get(), line.data(), line.size(), MSG_NOSIGNAL) < 0) {
    return {Outcome::noAnswer, {}};
  }
  std::string answer;
  while (deadline.waitFor(connection.get())) {
    char piece[1024];
    const auto count = recv(connection.get(), piece, sizeof(piece), 0);
    if (count > 0) {
      answer.append(piece, static_cast<std::size_t>(count));
      continue;
    }
    if (!answer.starts_with(protocol::ok)) break;
    return {Outcome::answered, answer.substr(protocol::ok.size())};
  }
  return {Outcome::noAnswer, {}};
}

// A handle of the process at the other end that becomes readable when it has ended.
FileDescriptor processAt(const FileDescriptor& connection) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  if (getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return {};
  return FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, peer.pid, 0)));
}

}  // namespace

bool isRunning(const InstanceAddress& address) {
  const FileDescriptor lock(open(address.lockPath.c_str(), O_RDWR | O_CLOEXEC));
  return lock && flock(lock.get(), LOCK_SH | LOCK_NB) != 0;
}

InstanceReply ask(const InstanceAddress& address, std::string_view command, milliseconds limit) {
  const Deadline deadline(limit);
  const FileDescriptor connection = connectWhenListening(address, deadline);
  if (connection) return exchange(connection, command, deadline);
  return {isRunning(address) ? Outcome::noAnswer : Outcome::notRunning, {}};
}

InstanceReply askToQuit(const InstanceAddress& address, milliseconds limit) {
  const Deadline deadline(limit);
  const FileDescriptor connection = connectWhenListening(address, deadline);
  if (!connection) return {isRunning(address) ? Outcome::noAnswer : Outcome::notRunning, {}};
  const FileDescriptor process = processAt(connection);
  InstanceReply reply = exchange(connection, "quit", deadline);
  if (reply.outcome == Outcome::answered && !deadline.waitFor(process.get())) {
    reply.outcome = Outcome::noAnswer;
  }
  return reply;
}

}  // namespace horalo
