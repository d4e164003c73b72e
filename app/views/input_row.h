#pragma once

#include <QWidget>
#include <string>

#include "app/views/converter_input.h"
#include "ui/symbol_button.h"

namespace horalo {

// The panel's first line: a magnifying glass, the field, and while there is text the button that
// clears it.
class InputRow : public QWidget {
  Q_OBJECT
 public:
  explicit InputRow(ConverterInput::Environment environment, QWidget* parent = nullptr);

  ConverterInput& input() { return input_; }

  // Shows `text` (UTF-8); what the person typed stays as it stands where it says the same.
  void render(const std::string& text);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void textChanged(const std::string& text);
  void submitted();
  void clearPressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();

  ConverterInput input_;
  SymbolButton clear_;
};

}  // namespace horalo
