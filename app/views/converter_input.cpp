#include "app/views/converter_input.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragLeaveEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleHints>
#include <algorithm>
#include <utility>

#include "ui/appearance.h"
#include "ui/fonts.h"
#include "ui/pixel_grid.h"
#include "ui/text_style.h"

namespace horalo {
namespace {

constexpr TextStyle kText{.size = 20, .fixed = true};
constexpr double kCaretWidth = 2;
constexpr double kCaretHeight = 24;
constexpr double kSelectionOpacity = 0.28;
// The field lays out all of its text at every key.
constexpr int kLongestText = 1 << 16;
constexpr QChar kEllipsis(0x2026);
constexpr Pasteboard::ReadLimits kPasteLimits{
    .seconds = 1.0, .bytes = 1 << 20, .firstLineOnly = true, .secretsAreText = true};

QString firstLine(const std::string& text) {
  const QString all = QString::fromStdString(text);
  const auto isBreak = [](QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
  };
  const auto begin = std::find_if_not(all.begin(), all.end(), isBreak);
  const auto end = std::find_if(begin, all.end(), isBreak);
  return QString(begin, end - begin);
}

// A line of which the end does not fit says so, and means nothing to the parser: what is left of it
// might have meant something else.
QString fitting(QString line, qsizetype room) {
  if (line.size() > room) line = line.trimmed();
  if (line.size() <= room) return line;
  line.truncate(std::max<qsizetype>(0, room - 1));
  if (!line.isEmpty() && line.back().isHighSurrogate()) line.chop(1);
  return line + kEllipsis;
}

QString withShortcut(const QString& title, QKeySequence::StandardKey key) {
  return title + u'\t' + QKeySequence(key).toString(QKeySequence::NativeText);
}

// How long the user's desktop lets a caret take from coming to coming, in seconds; zero where it is
// to stand still. The library's own caret, which nobody sees here, is told to stand still, for it
// would wake the program all the same.
double caretPeriod() {
  static const double period = [] {
    QStyleHints& hints = *QGuiApplication::styleHints();
    const int users = hints.cursorFlashTime();  // milliseconds
    hints.setCursorFlashTime(0);
    return users / 1000.0;
  }();
  return period;
}

}  // namespace

int InputStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
  if (metric == PM_TextCursorWidth || metric == PM_DefaultFrameWidth) return 0;
  return QCommonStyle::pixelMetric(metric, option, widget);
}

void InputStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  if (element == PE_PanelLineEdit) return;
  QCommonStyle::drawPrimitive(element, option, painter, widget);
}

ConverterInput::ConverterInput(Environment environment, QWidget* parent)
    : QLineEdit(parent),
      environment_(std::move(environment)),
      caret_(environment_.timers, [this] { update(cursorRect()); }) {
  caretPeriod();
  setStyle(&inputStyle_);
  setFrame(false);
  setMaxLength(kLongestText);
  setAcceptDrops(false);  // a drop waits for the program that it comes from
  setPlaceholderText(QStringLiteral("Enter timestamp or date..."));
  setAccessibleName(placeholderText());
  connect(this, &QLineEdit::cursorPositionChanged, this, &ConverterInput::showCaret);
  connect(this, &QLineEdit::textChanged, this, &ConverterInput::showCaret);
  connect(this, &QLineEdit::selectionChanged, this, &ConverterInput::showCaret);
  connect(&Appearance::shared(), &Appearance::changed, this, &ConverterInput::updateLook);
  updateLook();
}

ConverterInput::~ConverterInput() {
  setStyle(nullptr);
}

void ConverterInput::updateLook() {
  setFont(fontOf(kText));
  QPalette colours = palette();
  colours.setColor(QPalette::Text, color(ColorRole::primary));
  colours.setColor(QPalette::PlaceholderText, color(ColorRole::secondary));
  colours.setColor(QPalette::Highlight, color(ColorRole::accent, kSelectionOpacity));
  colours.setColor(QPalette::HighlightedText, color(ColorRole::primary));
  setPalette(colours);
}

double ConverterInput::textCentre() const {
  // The field itself centres the font's line box, in whole pixels.
  const QFontMetrics metrics = fontMetrics();
  const int lineTop = (height() - metrics.height() + 1) / 2;
  return lineTop + metrics.ascent() - QFontMetricsF(font()).capHeight() / 2;
}

void ConverterInput::keyPressEvent(QKeyEvent* event) {
  if (handleCommandKey(*event) || handleClipboardKey(*event)) {
    event->accept();
    showCaret();
    return;
  }
  if (event->modifiers().testFlag(Qt::MetaModifier)) return event->ignore();
  QLineEdit::keyPressEvent(event);
}

bool ConverterInput::handleClipboardKey(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Copy)) {
    copySelection();
  } else if (event.matches(QKeySequence::Cut)) {
    cutSelection();
  } else if (event.matches(QKeySequence::Paste)) {
    startPaste(false);
  } else if (event.key() == Qt::Key_Insert &&
             event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
    startPaste(true);
  } else if (event.matches(QKeySequence::DeleteEndOfLine)) {
    end(true);
    cutSelection();
  } else if (event.matches(QKeySequence::DeleteCompleteLine)) {
    selectAll();
    cutSelection();
  } else {
    return false;
  }
  return true;
}

// Command is the keyboard's Super key; the library's own bindings know Control alone, and that with
// Latin letters.
bool ConverterInput::handleCommandKey(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
  const bool shift = modifiers.testFlag(Qt::ShiftModifier);
  const auto command = modifiers & ~Qt::ShiftModifier;
  const Qt::Key key = commandKey(event, environment_.keyCodeOf);
  const bool isForeign = key != event.key();
  if (command != Qt::MetaModifier && !(isForeign && command == Qt::ControlModifier)) return false;
  switch (key) {
    case Qt::Key_A:
      selectAll();
      return true;
    case Qt::Key_C:
      copySelection();
      return true;
    case Qt::Key_V:
      startPaste(false);
      return true;
    case Qt::Key_X:
      cutSelection();
      return true;
    case Qt::Key_Z:
      if (shift) {
        redo();
      } else {
        undo();
      }
      return true;
    default:
      return false;
  }
}

void ConverterInput::copySelection() {
  if (hasSelectedText()) environment_.copy(selectedText().toStdString());
}

void ConverterInput::cutSelection() {
  if (!hasSelectedText()) return;
  copySelection();
  del();
}

void ConverterInput::startPaste(bool mouseSelection) {
  Pasteboard::ReadLimits limits = kPasteLimits;
  limits.mouseSelection = mouseSelection;
  paste_ = environment_.pasteboard.read(limits, [this](const std::optional<std::string>& text) {
    if (!text) return;
    const auto kept = this->text().size() - selectedText().size();
    insert(fitting(firstLine(*text), kLongestText - kept));
  });
}

void ConverterInput::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::MiddleButton) return QLineEdit::mouseReleaseEvent(event);
  deselect();
  startPaste(true);
}

void ConverterInput::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [menu](const QString& title, bool enabled, auto action) {
    menu->addAction(title, action)->setEnabled(enabled);
  };
  using Key = QKeySequence;
  add(withShortcut(QStringLiteral("&Undo"), Key::Undo), isUndoAvailable(), [this] { undo(); });
  add(withShortcut(QStringLiteral("&Redo"), Key::Redo), isRedoAvailable(), [this] { redo(); });
  menu->addSeparator();
  add(withShortcut(QStringLiteral("Cu&t"), Key::Cut), hasSelectedText(),
      [this] { cutSelection(); });
  add(withShortcut(QStringLiteral("&Copy"), Key::Copy), hasSelectedText(),
      [this] { copySelection(); });
  // Whether there is anything to paste, only the program that owns the clipboard could tell.
  add(withShortcut(QStringLiteral("&Paste"), Key::Paste), true, [this] { startPaste(false); });
  add(QStringLiteral("&Delete"), hasSelectedText(), [this] { del(); });
  menu->addSeparator();
  add(withShortcut(QStringLiteral("Select &All"), Key::SelectAll), !text().isEmpty(),
      [this] { selectAll(); });
  menu->popup(event->globalPos());
}

void ConverterInput::showCaret() {
  if (hasFocus() && !hasSelectedText()) {
    caret_.show(caretPeriod());
  } else {
    caret_.hide();
  }
  update(cursorRect());
}

void ConverterInput::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  // A drag that leaves the field takes the library's own caret along. However thin that is made, at
  // a scale of 1.25 there would be a line of it beside ours.
  QDragLeaveEvent leave;
  QLineEdit::dragLeaveEvent(&leave);
  showCaret();
}

void ConverterInput::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  showCaret();
}

void ConverterInput::hideEvent(QHideEvent* event) {
  QLineEdit::hideEvent(event);
  paste_.reset();  // nobody waits for it any more
  caret_.hide();
  forgetEdits();
}

// The library keeps every key for its undo until it is given a text, and this field lives for
// weeks.
void ConverterInput::forgetEdits() {
  const QSignalBlocker blocker(this);
  const int start = selectionStart();
  const int length = selectionLength();
  const int position = cursorPosition();
  setText(text());
  setCursorPosition(position);
  if (start >= 0) setSelection(start, length);
}

void ConverterInput::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (!caret_.isShown()) return;
  QPainter painter(this);
  // The library tells a rectangle around the caret, wide enough to repaint it.
  const QRectF around = cursorRect();
  double x = around.left() + (around.width() + 1) / 2;
  if (cursorPosition() == 0) x -= kCaretWidth;  // clear of the first letter
  const double height = std::min(around.height(), scaledLength(kCaretHeight));
  const QRectF caret(x, textCentre() - height / 2, kCaretWidth, height);
  painter.fillRect(snapped(painter, caret), color(ColorRole::accent));
}

}  // namespace horalo
