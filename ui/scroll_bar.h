#pragma once

#include <QScrollBar>

namespace horalo {

// A slim vertical scroll bar: a handle without a track, fainter while nobody touches it.
class SlimScrollBar : public QScrollBar {
  Q_OBJECT
 public:
  static constexpr int kWidth = 10;

  explicit SlimScrollBar(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
};

}  // namespace horalo
