#include "app/panel_controller.h"

#include <algorithm>
#include <utility>

#include "engine/text_matching.h"

namespace horalo {
namespace {

constexpr std::size_t kLongestPaste = 100;  // characters
constexpr double kSelectAllDelay = 0.05;    // seconds

std::size_t characterCount(std::string_view text) {
  constexpr auto startsCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

}  // namespace

PanelController::PanelController(Environment environment)
    : environment_(std::move(environment)),
      clearTimer_(environment_.timers.make()),
      selectAllTimer_(environment_.timers.make()) {}

PanelController::~PanelController() = default;

void PanelController::togglePanel(std::uint32_t eventTime) {
  if (isVisible()) {
    panel_->close();
  } else {
    showPanel(eventTime);
  }
}

void PanelController::showPanel(std::uint32_t eventTime) {
  clearTimer_->stop();
  make();
  if (!std::exchange(hasBeenShown_, true)) viewModel_->startFresh();
  // One that is already open gets the keyboard back, and keeps what its user has typed.
  if (!panel_->isVisible()) autoPasteFromClipboardIfEnabled();
  viewModel_->requestFocus();
  viewModel_->setResting(false);
  panel_->show(eventTime);
}

void PanelController::closePanel() {
  if (isVisible()) panel_->close();
}

void PanelController::prepare() {
  make();
  if (!panel_->isVisible()) panel_->prepare();
}

void PanelController::make() {
  if (!viewModel_) {
    viewModel_ = environment_.makeViewModel();
    viewModel_->setResting(true);
    QObject::connect(viewModel_.get(), &ConverterViewModel::inputChanged, viewModel_.get(), [this] {
      pendingPaste_.reset();
      selectAllTimer_->stop();  // what is typed by now is to stay
    });
  }
  if (!panel_) {
    panel_ = environment_.makePanel(*viewModel_);
    panel_->onClose([this] { panelClosed(); });
  }
}

void PanelController::panelClosed() {
  pendingPaste_.reset();
  selectAllTimer_->stop();
  viewModel_->setResting(true);
  scheduleClearIfNeeded();
}

void PanelController::scheduleClearIfNeeded() {
  clearTimer_->stop();
  const double delay = environment_.preferences.autoClearDelay();
  if (!(delay > 0)) return;  // not a number either
  clearTimer_->startOnce(delay, [this] { viewModel_->clear(); });
}

// The panel never waits for the clipboard's owner. An answer counts for the show that asked, while
// nobody has changed the input.
void PanelController::autoPasteFromClipboardIfEnabled() {
  if (!environment_.preferences.autoPasteFromClipboard()) return;
  // A text that its owner called secret was put there for the user to paste.
  const Pasteboard::ReadLimits limits{.secretsAreText = true};
  pendingPaste_ = environment_.pasteboard.read(limits, [this](std::optional<std::string> text) {
    if (text) paste(*text);
  });
}

void PanelController::paste(const std::string& text) {
  const std::string_view value = trimmed(text);
  if (value.empty() || characterCount(value) > kLongestPaste) return;
  if (!environment_.parser.parse(value)) return;
  if (viewModel_->input() != value) {
    viewModel_->setInput(std::string(value));
  } else {
    selectAllTimer_->startOnce(kSelectAllDelay, [this] { panel_->selectAll(); });
  }
}

}  // namespace horalo
