#include "app/instance_socket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>

namespace horalo {
namespace {

// A socket's address, by way of the open folder where the path itself is too long for one.
class SocketAddress {
 public:
  explicit SocketAddress(const std::string& path) {
    std::string name = path;
    if (name.size() >= sizeof(address_.sun_path)) {
      const auto slash = name.rfind('/');
      folder_ = FileDescriptor(open(name.substr(0, slash).c_str(), O_PATH | O_CLOEXEC));
      name = "/proc/self/fd/" + std::to_string(folder_.get()) + name.substr(slash);
    }
    address_.sun_family = AF_UNIX;
    const auto length = std::min(name.size(), sizeof(address_.sun_path) - 1);
    std::copy_n(name.begin(), length, address_.sun_path);
  }

  const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address_); }
  static constexpr socklen_t size() { return sizeof(sockaddr_un); }

 private:
  FileDescriptor folder_;
  sockaddr_un address_{};
};

FileDescriptor newSocket(int flags) {
  return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

}  // namespace

FileDescriptor listenAt(const std::string& path) {
  unlink(path.c_str());
  FileDescriptor listener = newSocket(SOCK_NONBLOCK);
  const SocketAddress address(path);
  // Nobody may connect between bind and chmod.
  const mode_t before = umask(0177);
  const bool bound = bind(listener.get(), address.get(), SocketAddress::size()) == 0;
  umask(before);
  if (!bound || listen(listener.get(), SOMAXCONN) != 0) return {};
  return listener;
}

FileDescriptor connectTo(const std::string& path) {
  FileDescriptor connection = newSocket(0);
  const SocketAddress address(path);
  if (connect(connection.get(), address.get(), SocketAddress::size()) != 0) return {};
  return connection;
}

}  // namespace horalo
