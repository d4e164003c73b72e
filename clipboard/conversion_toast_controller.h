#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/geometry.h"
#include "base/timers.h"
#include "clipboard/conversion_toast.h"
#include "clipboard/pasteboard.h"
#include "clipboard/toast_fade.h"
#include "clipboard/toast_window.h"
#include "engine/conversion_result.h"
#include "preferences/notification_center.h"
#include "preferences/preferences.h"

namespace horalo {

// Shows what a copied timestamp means in a corner of the screen, for three seconds or as long as
// the pointer is over it; a click copies the date. A new toast takes the place of the one before.
class ConversionToastController {
 public:
  static constexpr double kShownFor = 3.0;  // seconds
  static constexpr double kSoon = 0.2;

  // What the controller needs; all must outlive it.
  struct Environment {
    Timers& timers;
    Pasteboard& pasteboard;
    NotificationCenter& notifications;
    const Preferences& preferences;
    const RowContext& rows;
    std::function<bool()> isConverterVisible;
    // The part of the main screen that the desktop's panels leave; nothing where there is none.
    std::function<std::optional<Rect>()> visibleFrame;
    std::function<std::unique_ptr<ConversionToastWindow>()> makeWindow;  // at first use
  };

  explicit ConversionToastController(Environment environment);

  // Makes what the first toast needs, so that it comes as soon as those after it; or a little
  // later, once a switch that was just turned has come to rest.
  void prepare();
  void prepareSoon();

  // `input`: what was copied. Nothing happens while the converter is open.
  void showConversionToast(const std::string& input, const ConversionResult& result);
  void scheduleConversionToastDismiss();
  void dismissConversionToast();

 private:
  void makeWindow();
  std::shared_ptr<ConversionToast> makeToast(const std::string& input,
                                             const ConversionResult& result);
  void copy(const std::string& date);

  Environment environment_;
  std::unique_ptr<Timer> dismissTimer_;
  std::unique_ptr<ConversionToastWindow> window_;
  std::unique_ptr<ToastFade> fade_;  // of window_
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace horalo
