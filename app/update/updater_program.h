#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <optional>

#include "app/update/agent_link.h"
#include "app/update/changeover.h"
#include "app/update/update_flow.h"
#include "app/update/update_state.h"
#include "app/update/views/update_window.h"
#include "base/clock.h"
#include "base/timers.h"

namespace horalo {

// The program horalo-updater: one check, its window, and what follows from it. Ends the
// application when nothing is left to do.
class UpdaterProgram : public QObject {
  Q_OBJECT
 public:
  // `socket` leads to the program that started this one. `timers` and `clock` must outlive it.
  UpdaterProgram(int socket, Timers& timers, const Clock& clock);
  ~UpdaterProgram() override;

  // False where there is nothing to do: nobody is at the other end of the socket, or nobody asked
  // and another version is in place already.
  bool check(bool askedByUser);

 private:
  void showInFront();
  void agentLost();
  void changeOver();
  void rolledBack();

  AgentLink agent_;
  // The folder of the version that this program belongs to, and where it was installed; empty where
  // another version has taken that place already.
  std::filesystem::path bundle_;
  FileDescriptor held_;
  BundleInfo info_;
  UpdateState state_;
  QNetworkAccessManager network_;
  UpdateFlow flow_;
  UpdateWindow window_;
  std::optional<Changeover> changeover_;
  bool inFront_ = false;
  bool agentIsThere_ = true;
  bool ended_ = false;
};

}  // namespace horalo
