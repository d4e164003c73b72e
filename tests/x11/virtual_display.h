#pragma once

#include <string>

#include "tests/x11/child_program.h"

namespace horalo {

// An X server without a screen to look at, on a display number that nobody uses; of this test
// alone.
class VirtualDisplay {
 public:
  // `screen`: width x height x depth.
  explicit VirtualDisplay(const QString& screen = QStringLiteral("1280x800x24"));

  bool isRunning() const { return !name_.isEmpty(); }
  // As DISPLAY has it, ":99"; empty where the server did not start.
  const QString& name() const { return name_; }

  ChildProgram& server() { return server_; }

 private:
  ChildProgram server_;
  QString name_;
};

}  // namespace horalo
