#include "app/views/floating_panel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <chrono>

#include "ui/material.h"

namespace horalo {
namespace {

constexpr QSize kSize(static_cast<int>(PanelPlacement::kSize.width),
                      static_cast<int>(PanelPlacement::kSize.height));

// How long the keyboard may be on its way back from a menu that has closed.
constexpr std::chrono::milliseconds kKeyboardReturns{150};

}  // namespace

FloatingPanel::FloatingPanel(WindowBackend& backend, Preferences& preferences,
                             ConverterView* contentView)
    : backend_(backend), preferences_(preferences), contentView_(contentView) {
  setWindowTitle(QStringLiteral("Horalo"));
  setLayoutDirection(Qt::LeftToRight);  // the texts are English, whatever the locale
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose, false);
  backend_.configure(*this, WindowRole::panel);
  setFixedSize(kSize);
  contentView_->setParent(this);
  contentView_->setGeometry(rect());
  updateBackdrop();
}

FloatingPanel::~FloatingPanel() = default;

void FloatingPanel::place() {
  const auto screen = backend_.mainScreen();
  if (!screen) return;
  const Point origin = placement_.place(screen->visibleFrame, preferences_.panelPosition());
  backend_.setFrameOrigin(*this, origin);
}

void FloatingPanel::makeKeyAndOrderFront(std::uint32_t eventTime) {
  backend_.orderFront(*this, eventTime);
}

void FloatingPanel::updateBackdrop() {
  const bool composited = backend_.isComposited();
  const bool blurred = composited && backend_.canBlur();
  const double scale = devicePixelRatioF();
  const QRect pixels(0, 0, qRound(width() * scale), qRound(height() * scale));
  backend_.setShape(*this,
                    composited ? QRegion() : roundedMask(pixels, ConverterView::kRadius * scale));
  if (blurred) backend_.setBlurBehind(*this, ConverterView::kRadius);
  contentView_->setBackdrop(blurred      ? Backdrop::blurred
                            : composited ? Backdrop::translucent
                                         : Backdrop::opaque);
}

bool FloatingPanel::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate) resignKey();
  return QWidget::event(event);
}

bool FloatingPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Hide) return false;
  watched->removeEventFilter(this);
  QTimer::singleShot(kKeyboardReturns, this, [this] {
    if (isVisible() && !isActiveWindow()) resignKey();
  });
  return false;
}

void FloatingPanel::close() {
  hide();  // and resigns the keyboard, if the panel has it
  if (onClose_) onClose_();
}

void FloatingPanel::resignKey() {
  // A menu of the panel's own takes the keyboard without taking it away; where another window took
  // it meanwhile, the panel goes when the menu has gone.
  if (QWidget* const popup = QApplication::activePopupWidget()) {
    popup->installEventFilter(this);
    return;
  }
  hide();
  if (onClose_) onClose_();
}

void FloatingPanel::closeEvent(QCloseEvent* event) {
  event->ignore();
  close();
}

void FloatingPanel::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) endDrag();
}

void FloatingPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void FloatingPanel::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  placement_.mouseDown(backend_.pointerLocation(*event), backend_.frame(*this).origin());
  showGuides();
}

void FloatingPanel::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  if (const auto origin = placement_.mouseDragged(backend_.pointerLocation(*event))) {
    backend_.setFrameOrigin(*this, *origin);
  }
}

void FloatingPanel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  endDrag();
  preferences_.setPanelPosition(backend_.frame(*this).origin());
}

void FloatingPanel::endDrag() {
  placement_.mouseUp();
  if (guidesWindow_) guidesWindow_->hide();
}

void FloatingPanel::showGuides() {
  const auto screen = backend_.screenOf(*this);
  if (!screen || !placement_.defaultFrame()) return;
  if (guidesWindow_) guidesWindow_->hide();
  guidesWindow_ =
      std::make_unique<GuidesWindow>(backend_, *placement_.defaultFrame(), screen->frame);
  backend_.orderFront(*guidesWindow_, 0);
}

}  // namespace horalo
