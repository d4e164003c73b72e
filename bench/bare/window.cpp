#include "bench/bare/window.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QShortcut>
#include <QVBoxLayout>

namespace bare {
namespace {

constexpr int kRows = 5;

std::unique_ptr<QWidget> makeForm() {
  auto form = std::make_unique<QWidget>();
  form->setWindowTitle(QStringLiteral("Bare Second"));
  form->resize(450, 440);
  auto* lines = new QFormLayout(form.get());
  for (int i = 0; i < kRows; ++i) {
    lines->addRow(QStringLiteral("Choice %1").arg(i), new QCheckBox);
  }
  return form;
}

}  // namespace

Window::Window() : input_(new QLineEdit), list_(new QListWidget) {
  setWindowTitle(QStringLiteral("Bare"));
  setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  resize(480, 280);
  auto* column = new QVBoxLayout(this);
  column->addWidget(input_);
  column->addWidget(list_);
  for (int i = 0; i < kRows; ++i) list_->addItem(QString());
  connect(input_, &QLineEdit::textChanged, this, &Window::echo);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma), this), &QShortcut::activated, this,
          &Window::openSecond);
}

void Window::toggle() {
  if (isVisible()) {
    hide();
    return;
  }
  show();
  activateWindow();
  input_->setFocus();
}

void Window::echo(const QString& text) {
  for (int i = 0; i < list_->count(); ++i) list_->item(i)->setText(text);
}

void Window::openSecond() {
  if (!second_) second_ = makeForm();
  hide();
  second_->show();
  second_->activateWindow();
}

}  // namespace bare
