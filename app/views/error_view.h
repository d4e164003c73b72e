#pragma once

#include <QWidget>

#include "ui/text_label.h"

namespace horalo {

// What the panel shows where the input means nothing.
class ErrorView : public QWidget {
  Q_OBJECT
 public:
  explicit ErrorView(QWidget* parent = nullptr);

  // `message` as it stands, in UTF-8.
  void render(const std::string& message);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();

  TextLabel message_;
  QPointF symbolCentre_;
};

}  // namespace horalo
