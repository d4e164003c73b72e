#pragma once

#include <QWidget>

#include "ui/text_label.h"

namespace horalo {

// What the panel shows while nothing is typed.
class PlaceholderView : public QWidget {
  Q_OBJECT
 public:
  explicit PlaceholderView(QWidget* parent = nullptr);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();

  TextLabel title_;
  TextLabel examples_;
};

}  // namespace horalo
