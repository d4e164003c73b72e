#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include "base/file_descriptor.h"

namespace horalo {

// The updater's side of the socket to the program that started it; see BundleUpdater for what is
// said. After a relaunch the new version is at the other end, under the same process id.
class AgentLink : public QObject {
  Q_OBJECT
 public:
  // `socket` is open as long as this object lives.
  explicit AgentLink(int socket);

  // Whether there is a program at the other end at all.
  bool isValid() const { return static_cast<bool>(process_); }

  void say(const char* line);
  // Ends the program at the other end, where it does not answer.
  void killAgent();
  // Once it is lost: waits until that program has ended and let go of everything, which a process
  // does piece by piece; not for ever, for it might have closed the socket alone.
  void waitForEnd() const;

 Q_SIGNALS:
  void show();
  void becoming();
  void started();
  // The other end is gone.
  void lost();

 private:
  void receive();

  int socket_;
  FileDescriptor process_;  // which keeps its number from being given to another
  QSocketNotifier messages_;
  QByteArray received_;
};

}  // namespace horalo
