#include "hotkey/views/key_recorder_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

#include "hotkey/key.h"
#include "hotkey/views/event_modifiers.h"
#include "ui/appearance.h"
#include "ui/fonts.h"
#include "ui/pixel_grid.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr QSizeF kSize(120, 24);
constexpr double kRadius = 6;
constexpr double kRecordingFill = 0.15;  // opacity of the accent colour
constexpr double kLine = 1;
constexpr double kFocusLine = 2;
constexpr TextStyle kText{.size = 12, .weight = QFont::Medium};

// Whether a key only makes a combination with another one: by what it is on the keyboard, or by
// what the user's keyboard map makes of it.
bool isFlag(std::optional<std::uint32_t> keyCode, int key) {
  const auto position = keyCode ? Key::fromCarbonKeyCode(*keyCode) : std::nullopt;
  if (position && (position->isModifier() || position == Key(Key::capsLock))) return true;
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_Mode_switch:
      return true;
    default:
      return false;
  }
}

bool startsRecording(int key) {
  return key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return ||
         key == Qt::Key_Enter;
}

}  // namespace

KeyRecorderView::KeyRecorderView(const HotkeyConfiguration& configuration, KeyCodeOf keyCodeOf,
                                 QWidget* parent)
    : QWidget(parent), keyCodeOf_(std::move(keyCodeOf)), recorder_(*this, configuration) {
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleName(QStringLiteral("Keyboard shortcut"));
  recorder_.onConfigurationChange = [this](const HotkeyConfiguration& changed) {
    if (onConfigurationChange) onConfigurationChange(changed);
  };
  recorder_.onRecordingChange = [this](bool isRecording) {
    if (onRecordingChange) onRecordingChange(isRecording);
  };
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    updateGeometry();
    update();
  });
  redraw();
}

KeyRecorderView::~KeyRecorderView() {
  recorder_.endRecording();
}

void KeyRecorderView::setConfiguration(const HotkeyConfiguration& configuration) {
  if (configuration != recorder_.configuration()) recorder_.setConfiguration(configuration);
}

void KeyRecorderView::endRecording() {
  recorder_.endRecording();
}

QSize KeyRecorderView::sizeHint() const {
  return {static_cast<int>(std::ceil(scaledLength(kSize.width()))),
          static_cast<int>(std::ceil(scaledLength(kSize.height())))};
}

QStringList KeyRecorderView::accessibleActions() const {
  return {QAccessibleActionInterface::pressAction()};
}

void KeyRecorderView::doAccessibleAction(const QString& name) {
  Q_UNUSED(name);
  recorder_.click();
}

bool KeyRecorderView::event(QEvent* event) {
  if (!recorder_.isRecording()) return QWidget::event(event);
  // Keys that mean something to the window, Tab and the menus' shortcuts among them, are recorded
  // like any other.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    recordKey(*static_cast<QKeyEvent*>(event));
    return true;
  }
  return QWidget::event(event);
}

void KeyRecorderView::recordKey(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return;
  const std::optional<std::uint32_t> keyCode = keyCodeOf_(event.nativeScanCode());
  if (isFlag(keyCode, event.key())) {
    recorder_.flagsChanged();
    return;
  }
  if (keyCode) {
    recorder_.keyDown(*keyCode, modifierFlags(event.modifiers()));
  } else {
    beep();
  }
}

void KeyRecorderView::keyPressEvent(QKeyEvent* event) {
  if (startsRecording(event->key()) && !event->isAutoRepeat()) {
    recorder_.click();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void KeyRecorderView::keyReleaseEvent(QKeyEvent* event) {
  if (recorder_.isRecording()) {
    recorder_.flagsChanged();
  } else {
    QWidget::keyReleaseEvent(event);
  }
}

void KeyRecorderView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) recorder_.click();
}

void KeyRecorderView::enterEvent(QEnterEvent* event) {
  Q_UNUSED(event);
  recorder_.setHovered(true);
}

void KeyRecorderView::leaveEvent(QEvent* event) {
  Q_UNUSED(event);
  recorder_.setHovered(false);
}

void KeyRecorderView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void KeyRecorderView::focusOutEvent(QFocusEvent* event) {
  recorder_.endRecording();
  QWidget::focusOutEvent(event);
  update();
}

void KeyRecorderView::hideEvent(QHideEvent* event) {
  recorder_.endRecording();
  QWidget::hideEvent(event);
}

void KeyRecorderView::redraw() {
  setAccessibleDescription(QString::fromStdString(recorder_.text()));
  update();
}

void KeyRecorderView::beep() {
  QApplication::beep();
}

void KeyRecorderView::takeKeyboard() {
  hadKeyboard_ = hasFocus();
  if (!isActiveWindow()) activateWindow();
  setFocus(Qt::OtherFocusReason);
  // All keys come here now, also those that the window manager or another program would take.
  grabKeyboard();
}

void KeyRecorderView::releaseKeyboard() {
  QWidget::releaseKeyboard();
  if (!hadKeyboard_) clearFocus();
}

void KeyRecorderView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  const bool recording = recorder_.isRecording();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool ringed = hasFocus() && !recording;
  const double line = snappedThickness(painter, ringed ? kFocusLine : kLine);
  const QRectF shape = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
  painter.setPen(QPen(color(recording || ringed ? ColorRole::accent : ColorRole::separator), line));
  painter.setBrush(recording ? color(ColorRole::accent, kRecordingFill)
                             : color(ColorRole::controlBackground));
  painter.drawRoundedRect(shape, kRadius, kRadius);
  drawLine(painter, rect(), Qt::AlignHCenter, QString::fromStdString(recorder_.text()),
           fontOf(kText), recording ? color(ColorRole::accent) : colorOf(kText));
}

}  // namespace horalo
