#pragma once

#include <QLabel>

#include "ui/text_style.h"

namespace horalo {

// Text in a form, broken into lines where it is wider than its place. Made a buddy of a control, it
// names that control to screen readers.
class FormLabel : public QLabel {
  Q_OBJECT
 public:
  explicit FormLabel(const TextStyle& style, const QString& text = {}, QWidget* parent = nullptr);

 private:
  void updateLook();

  TextStyle style_;
};

}  // namespace horalo
