#pragma once

#include <QCommonStyle>
#include <QLineEdit>
#include <functional>
#include <memory>
#include <string>

#include "app/views/caret.h"
#include "clipboard/pasteboard.h"
#include "hotkey/views/command_key.h"

namespace horalo {

// The field's frame is drawn by nobody and its caret by the field itself.
class InputStyle final : public QCommonStyle {
  Q_OBJECT
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

// The field in which a person types. It never asks the widget library for the clipboard, because
// that waits for whichever program owns it: a paste by keys, menu or middle button is fetched
// beside the event loop and arrives when it arrives, its first line alone; what is copied or cut
// goes out as a copy of our own.
class ConverterInput : public QLineEdit {
  Q_OBJECT
 public:
  // Puts a text on the clipboard, as a copy of our own.
  using Copy = std::function<void(const std::string& text)>;

  // What is referred to must outlive the field.
  struct Environment {
    Pasteboard& pasteboard;
    Timers& timers;
    Copy copy;
    KeyCodeOf keyCodeOf = {};  // without it Command needs a Latin layout
  };

  explicit ConverterInput(Environment environment, QWidget* parent = nullptr);
  ~ConverterInput() override;

  // Where the middle of capital letters lies, counted from the field's upper edge.
  double textCentre() const;
  // How far the text stands in from the field's left edge.
  static constexpr int kTextInset = 2;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void updateLook();
  // False where the key is none of those that edit through the clipboard.
  bool handleClipboardKey(const QKeyEvent& event);
  bool handleCommandKey(const QKeyEvent& event);
  void copySelection();
  void cutSelection();
  void startPaste(bool mouseSelection);
  void showCaret();
  void forgetEdits();

  Environment environment_;
  InputStyle inputStyle_;
  std::unique_ptr<Pasteboard::Read> paste_;
  Caret caret_;
};

}  // namespace horalo
