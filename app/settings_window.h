#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "app/window_backend.h"

namespace horalo {

// The window of the settings: made at first use and kept; closing only orders it out.
class SettingsWindow {
 public:
  using MakeView = std::function<std::unique_ptr<QWidget>()>;

  // `windows` must outlive this object; `makeView` makes what the window shows.
  SettingsWindow(WindowBackend& windows, MakeView makeView);
  ~SettingsWindow();

  // In front, with the keyboard.
  void open();

 private:
  void make();

  WindowBackend& windows_;
  MakeView makeView_;
  std::unique_ptr<QWidget> window_;
};

}  // namespace horalo
