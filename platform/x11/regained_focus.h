#pragma once

#include <QAbstractNativeEventFilter>

namespace horalo {

// A window that is hidden and shown again within a tenth of a second gets the keyboard back before
// Qt has dealt with the loss of it. Qt then takes the two for no change at all and leaves the
// window without a focused widget: no caret, and nothing happens when the keyboard goes elsewhere.
// For as long as this lives, such a window is told that it is active.
class RegainedFocus final : public QAbstractNativeEventFilter {
 public:
  // Needs a QApplication on X11.
  RegainedFocus();
  ~RegainedFocus() override;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
};

}  // namespace horalo
