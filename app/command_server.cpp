#include "app/command_server.h"

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include "app/instance_protocol.h"

namespace horalo {
namespace {

constexpr std::size_t kMostClients = 64;

bool isOurs(const FileDescriptor& connection) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  return getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         (peer.uid == geteuid() || peer.uid == 0);
}

}  // namespace

struct CommandServer::Client {
  FileDescriptor connection;
  std::unique_ptr<QSocketNotifier> notifier;
  std::string received;
  bool isServed = false;  // its command is being carried out

  ~Client() {
    // This may run inside the notifier's own signal.
    if (!notifier) return;
    notifier->setEnabled(false);
    notifier.release()->deleteLater();
  }
};

CommandServer::CommandServer(int listener, Handler handler)
    : handler_(std::move(handler)), self_(std::make_shared<CommandServer*>(this)) {
  if (listener < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(listener, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { accept(); });
}

CommandServer::~CommandServer() = default;

void CommandServer::accept() {
  FileDescriptor connection(accept4(static_cast<int>(notifier_->socket()), nullptr, nullptr,
                                    SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!connection || !isOurs(connection) || clients_.size() >= kMostClients) return;
  const int number = ++lastClient_;
  auto client = std::make_unique<Client>();
  client->notifier = std::make_unique<QSocketNotifier>(connection.get(), QSocketNotifier::Read);
  client->connection = std::move(connection);
  QObject::connect(client->notifier.get(), &QSocketNotifier::activated, client->notifier.get(),
                   [this, number] { read(number); });
  clients_.emplace(number, std::move(client));
}

void CommandServer::read(int number) {
  Client& client = *clients_.at(number);
  char piece[protocol::longestCommand];
  const auto count = recv(client.connection.get(), piece, sizeof(piece), 0);
  const bool isOver = count <= 0;
  if (!isOver) client.received.append(piece, static_cast<std::size_t>(count));
  const auto end = client.received.find('\n');
  if (isOver || client.isServed || client.received.size() > protocol::longestCommand) {
    clients_.erase(number);
    return;
  }
  if (end == std::string::npos) return;
  client.isServed = true;
  const std::weak_ptr<CommandServer*> self = self_;
  const Answer answerClient = [self, number](const std::string& text) {
    if (const auto server = self.lock()) {
      (*server)->answer(number, std::string(protocol::ok) + text);
    }
  };
  if (!handler_(client.received.substr(0, end), answerClient)) answer(number, protocol::unknown);
}

void CommandServer::answer(int number, std::string_view text) {
  const auto client = clients_.find(number);
  if (client == clients_.end()) return;
  // Answers are far smaller than what the kernel buffers for a socket.
  (void)send(client->second->connection.get(), text.data(), text.size(), MSG_NOSIGNAL);
  clients_.erase(client);
}

}  // namespace horalo
