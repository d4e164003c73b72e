#pragma once

#include <QWidget>
#include <functional>

#include "converter/converter_view_model.h"
#include "converter/views/timezone_picker_view.h"
#include "ui/switch.h"
#include "ui/text_label.h"

namespace horalo {

// The panel's last line: how the input was understood, the UTC switch and the zone menu.
class FooterView : public QWidget {
  Q_OBJECT
 public:
  // All three must outlive the view.
  FooterView(ConverterViewModel& viewModel, const Clock& clock, const ZoneSource& zones,
             QWidget* parent = nullptr);

  void render();

  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();

  ConverterViewModel& viewModel_;
  TextLabel detected_;
  Switch utc_;
  TimezonePickerView timezone_;
};

}  // namespace horalo
