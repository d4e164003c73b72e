#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "app/update/update_screen.h"

namespace horalo {

// The window of an update: what is going on, and what can be done about it. It keeps nothing of its
// own; render() sets it to what the screen says.
class UpdateWindow : public QWidget {
  Q_OBJECT
 public:
  UpdateWindow();

  // Shows, changes or hides the window. Where it was hidden it takes the keyboard only if
  // `inFront`.
  void render(const UpdateScreen& screen, bool inFront);

  // Brings it in front of other windows, with the keyboard.
  void bringToFront();

 Q_SIGNALS:
  void installClicked();
  void skipClicked();
  void closeClicked();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void updateLook();
  void renderButtons(const UpdateScreen& screen);
  void renderProgress(const UpdateScreen& screen);

  QLabel headline_;
  QLabel text_;
  QPlainTextEdit notes_;
  QProgressBar progress_;
  QLabel link_;
  QPushButton skip_;
  QPushButton close_;
  QPushButton install_;
  UpdateScreen::Page page_ = UpdateScreen::Page::none;
};

}  // namespace horalo
