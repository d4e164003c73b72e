#pragma once

#include <optional>

#include "app/instance_address.h"
#include "base/file_descriptor.h"

namespace horalo {

// Being the one program of a session. The kernel's lock decides, so that of any number of
// simultaneous starts exactly one succeeds, and a killed program never stands in the way of the
// next. Commands are taken from the first moment; they wait in the socket until they are read.
class SingleInstance {
 public:
  // Nothing where another program holds the lock. In a folder that cannot be written to there is
  // no lock and no socket, and every start gets a program.
  static std::optional<SingleInstance> acquire(const InstanceAddress& address);

  SingleInstance(SingleInstance&&) = default;
  SingleInstance& operator=(SingleInstance&&) = delete;
  // Takes the socket's file away; the lock's stays, empty, for the next start.
  ~SingleInstance();

  // The listening socket; negative where it could not be made, as on a full disk.
  int socket() const { return socket_.get(); }

 private:
  SingleInstance(InstanceAddress address, FileDescriptor lock, FileDescriptor socket);

  InstanceAddress address_;
  FileDescriptor lock_;
  FileDescriptor socket_;
};

}  // namespace horalo
