#pragma once

#include <QMessageBox>
#include <QPointer>

#include "app/window_backend.h"

namespace horalo {

// Says what stands in the way of an update.
class UpdateAlert {
 public:
  // `windows` must outlive this object.
  explicit UpdateAlert(WindowBackend& windows) : windows_(windows) {}
  ~UpdateAlert() { delete window_; }

  // In front, with the keyboard; one window however often it is asked for.
  void show(const QString& message, const QString& information);

 private:
  WindowBackend& windows_;
  QPointer<QMessageBox> window_;
};

}  // namespace horalo
