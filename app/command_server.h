#pragma once

#include <QSocketNotifier>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "base/file_descriptor.h"

namespace horalo {

// Reads commands from the socket of the single instance and answers them. Only programs of the
// same user, or root, are heard. Nothing here waits: a client that says nothing costs nothing.
class CommandServer {
 public:
  // Sends the answer; may be kept and called once, later. It does nothing once the client is gone.
  using Answer = std::function<void(const std::string& text)>;
  // Carries a command out; false where it is none of ours.
  using Handler = std::function<bool(const std::string& command, Answer answer)>;

  // `listener` is a listening socket that outlives this object; negative, nothing is served.
  CommandServer(int listener, Handler handler);
  ~CommandServer();

 private:
  struct Client;

  void accept();
  void read(int number);
  void answer(int number, std::string_view text);

  Handler handler_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::map<int, std::unique_ptr<Client>> clients_;  // by a number that is never used twice
  int lastClient_ = 0;
  std::shared_ptr<CommandServer*> self_;  // what answers hold weakly
};

}  // namespace horalo
