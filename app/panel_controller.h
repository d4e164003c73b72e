#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "app/panel_window.h"
#include "base/timers.h"
#include "clipboard/pasteboard.h"
#include "converter/converter_view_model.h"
#include "engine/timestamp_parser.h"
#include "preferences/preferences.h"

namespace horalo {

// Opens and closes the converter. View model and panel are made at the first show and kept, so that
// the input survives until it is cleared, some time after the panel was closed.
class PanelController {
 public:
  // Everything referred to must outlive the controller.
  struct Environment {
    const TimestampParser& parser;
    Preferences& preferences;
    Pasteboard& pasteboard;
    Timers& timers;
    std::function<std::unique_ptr<ConverterViewModel>()> makeViewModel;
    std::function<std::unique_ptr<PanelWindow>(ConverterViewModel&)> makePanel;
  };

  explicit PanelController(Environment environment);
  ~PanelController();

  bool isVisible() const { return panel_ && panel_->isVisible(); }

  // `eventTime` is that of the key press that asked, 0 where there was none.
  void togglePanel(std::uint32_t eventTime = 0);
  void showPanel(std::uint32_t eventTime = 0);
  void closePanel();

  // Calls `shown` when the panel is on the screen. It must have been shown.
  void whenOnScreen(std::function<void()> shown) { panel_->whenOnScreen(std::move(shown)); }

  // Makes view model and panel before they are asked for, so that the first show is as quick as
  // the later ones.
  void prepare();

 private:
  void make();
  void panelClosed();
  void scheduleClearIfNeeded();
  void autoPasteFromClipboardIfEnabled();
  void paste(const std::string& text);

  Environment environment_;
  std::unique_ptr<ConverterViewModel> viewModel_;
  std::unique_ptr<PanelWindow> panel_;
  bool hasBeenShown_ = false;
  std::unique_ptr<Timer> clearTimer_;
  std::unique_ptr<Timer> selectAllTimer_;
  // The clipboard's text that auto-paste waits for; given up when the panel closes or the input
  // changes.
  std::unique_ptr<Pasteboard::Read> pendingPaste_;
};

}  // namespace horalo
