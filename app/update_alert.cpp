#include "app/update_alert.h"

namespace horalo {

void UpdateAlert::show(const QString& message, const QString& information) {
  if (!window_) {
    window_ = new QMessageBox(QMessageBox::Information, QStringLiteral("Horalo Update"), {},
                              QMessageBox::Ok);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->setModal(false);
  }
  window_->setText(message);
  window_->setInformativeText(information);
  windows_.orderFront(*window_, 0);
}

}  // namespace horalo
