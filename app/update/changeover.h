#pragma once

#include <QObject>
#include <QTimer>
#include <filesystem>

#include "app/update/agent_link.h"
#include "app/update/staging.h"

namespace horalo {

// From the exchange to the new version that runs well, or to the old one that runs again.
class Changeover : public QObject {
  Q_OBJECT
 public:
  // Everything must outlive this object. A new version that says nothing for `patience` has failed.
  Changeover(AgentLink& agent, Staging& staging, std::filesystem::path bundle,
             std::chrono::milliseconds patience = std::chrono::seconds(60));

  // Asks the program to become the new version.
  void begin();

 Q_SIGNALS:
  void succeeded();
  // The old version is back in place and was started, or could not be put back.
  void rolledBack();
  void stuck();

 private:
  void agentLost();
  void rollBack();
  void startProgram();

  AgentLink& agent_;
  Staging& staging_;
  std::filesystem::path bundle_;
  QTimer patience_;
  bool begun_ = false;
  bool becoming_ = false;  // the old version has ended in good order
};

}  // namespace horalo
