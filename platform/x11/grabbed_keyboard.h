#pragma once

#include <QAbstractNativeEventFilter>

namespace horalo {

// A program that holds the keyboard for a while, as a window manager does with the Super key and
// others do while their shortcut is down, does not take it from the window that has it. Qt believes
// so after a tenth of a second. For as long as this lives, Qt does not hear of such grabs; a window
// that loses the keyboard during one is told so as always.
class GrabbedKeyboard final : public QAbstractNativeEventFilter {
 public:
  // Needs a QApplication on X11.
  GrabbedKeyboard();
  ~GrabbedKeyboard() override;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
};

}  // namespace horalo
