#include "app/settings_window.h"

#include <QKeySequence>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "ui/accessible_node.h"

namespace horalo {
namespace {

constexpr QSize kContentSize(450, 440);

// What a screen reader announces as a window.
class Window final : public QWidget, public AccessibleNode {
 public:
  QAccessible::Role accessibleRole() const override { return QAccessible::Window; }
};

}  // namespace

SettingsWindow::SettingsWindow(WindowBackend& windows, MakeView makeView)
    : windows_(windows), makeView_(std::move(makeView)) {}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::open() {
  if (!window_) make();
  windows_.orderFront(*window_, 0);
}

void SettingsWindow::make() {
  window_ = std::make_unique<Window>();
  windows_.configure(*window_, WindowRole::window);
  window_->setWindowTitle(QStringLiteral("Horalo Settings"));
  window_->setFixedSize(kContentSize);
  auto* layout = new QVBoxLayout(window_.get());
  layout->setContentsMargins({});
  layout->addWidget(makeView_().release());
  auto* close = new QShortcut(QKeySequence::Close, window_.get());
  QObject::connect(close, &QShortcut::activated, window_.get(), &QWidget::close);
  if (const auto screen = windows_.mainScreen()) {
    const Rect& area = screen->visibleFrame;
    windows_.setFrameOrigin(*window_, {area.midX() - kContentSize.width() / 2.0,
                                       area.midY() - kContentSize.height() / 2.0});
  }
}

}  // namespace horalo
