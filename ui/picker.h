#pragma once

#include <QComboBox>

namespace horalo {

// A pop-up button with a list of choices, as wide as its longest. The wheel scrolls what the picker
// stands in and changes nothing.
class Picker : public QComboBox {
  Q_OBJECT
 public:
  explicit Picker(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void updateLook();
};

}  // namespace horalo
