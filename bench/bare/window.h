#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QWidget>
#include <memory>

namespace bare {

// A line to type into over a list that echoes it; Ctrl+comma opens a second window with a form.
class Window : public QWidget {
 public:
  Window();

  void toggle();

 private:
  void echo(const QString& text);
  void openSecond();

  QLineEdit* input_;
  QListWidget* list_;
  std::unique_ptr<QWidget> second_;
};

}  // namespace bare
