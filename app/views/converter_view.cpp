#include "app/views/converter_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>
#include <utility>

#include "ui/appearance.h"
#include "ui/divider.h"

namespace horalo {
namespace {

constexpr int kRows = static_cast<int>(kRowCount);
constexpr double kCheckmarkSeconds = 1.0;
constexpr MaterialShape kShape{.radius = ConverterView::kRadius, .outlineOpacity = 0.15};

bool isCommand(const QKeyEvent& event) {
  return event.modifiers().testFlag(Qt::MetaModifier) ||
         event.modifiers().testFlag(Qt::ControlModifier);
}

}  // namespace

ConverterView::ConverterView(const Environment& environment, Callbacks callbacks, QWidget* parent)
    : QWidget(parent),
      environment_(environment),
      callbacks_(std::move(callbacks)),
      inputRow_({.pasteboard = environment.pasteboard,
                 .timers = environment.timers,
                 .copy = [this](const std::string& text) { writeOwnCopy(text); },
                 .keyCodeOf = environment.keyCodeOf},
                this),
      results_(this),
      error_(this),
      placeholder_(this),
      footer_(environment.viewModel, environment.rowContext.clock, environment.rowContext.zones,
              this) {
  results_.hide();
  error_.hide();
  ConverterViewModel& viewModel = environment_.viewModel;
  connect(&viewModel, &ConverterViewModel::willChange, this, &ConverterView::scheduleRender);
  connect(&viewModel, &ConverterViewModel::inputChanged, this, &ConverterView::inputChanged);
  connect(&viewModel, &ConverterViewModel::focusRequested, this,
          [this] { inputRow_.input().setFocus(Qt::OtherFocusReason); });

  connect(&inputRow_, &InputRow::textChanged, this,
          [this](const std::string& text) { environment_.viewModel.setInput(text); });
  connect(&inputRow_, &InputRow::submitted, this, &ConverterView::submit);
  connect(&inputRow_, &InputRow::clearPressed, this, [this] { environment_.viewModel.clear(); });
  connect(&inputRow_.input(), &QLineEdit::selectionChanged, this, [this] {
    if (inputRow_.input().hasSelectedText()) results_.clearSelection();
  });
  connect(&results_, &ResultsView::rowClicked, this, [this](int index, const std::string& value) {
    select(index);
    copyToClipboard(index, value);
  });
  connect(&Appearance::shared(), &Appearance::changed, this, [this] {
    layOut();
    update();
  });
}

void ConverterView::setBackdrop(Backdrop backdrop) {
  if (std::exchange(backdrop_, backdrop) != backdrop) update();
}

void ConverterView::prepare() {
  render();
  grab();
  ResultsView example;
  example.resize(results_.size());
  const RowContext& context = environment_.rowContext;
  example.render(rows({context.clock.now(), source::Now{}, TimeZone::utc()}, context), 0, {});
  example.grab();
}

void ConverterView::selectAllInput() {
  // The keyboard may still be on its way to the window.
  if (window()->focusWidget() == &inputRow_.input()) inputRow_.input().selectAll();
}

void ConverterView::inputChanged() {
  select(0);
}

void ConverterView::submit() {
  if (environment_.viewModel.result()) {
    copySelectedValue();
  } else {
    environment_.viewModel.convert();
  }
}

void ConverterView::select(int index) {
  if (std::exchange(selectedIndex_, index) != index) scheduleRender();
}

void ConverterView::setCopiedRow(std::optional<int> index) {
  if (std::exchange(copiedRowIndex_, index) != index) scheduleRender();
}

void ConverterView::copySelectedValue() {
  const auto& result = environment_.viewModel.result();
  if (!result || selectedIndex_ >= kRows) return;
  std::string value;
  appendRowValue(value, static_cast<RowKind>(selectedIndex_), *result, environment_.rowContext);
  copyToClipboard(selectedIndex_, value);
}

void ConverterView::copyToClipboard(int index, const std::string& value) {
  writeOwnCopy(value);
  if (environment_.preferences.closeWindowAfterCopy()) {
    callbacks_.onShowCopiedToast();
    callbacks_.onDismiss();
    return;
  }
  setCopiedRow(index);
  // Not taken back by a later copy, whose check mark this one takes away.
  environment_.timers.after(kCheckmarkSeconds, [view = QPointer(this)] {
    if (view) view->setCopiedRow(std::nullopt);
  });
}

void ConverterView::writeOwnCopy(const std::string& text) {
  environment_.notifications.post(notification::appDidCopyToClipboard);
  environment_.pasteboard.write(text);
}

bool ConverterView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  if (static_cast<QWidget*>(watched)->window() != window()) return false;
  return handleKey(*static_cast<QKeyEvent*>(event));
}

bool ConverterView::handleKey(const QKeyEvent& event) {
  const bool isHeld = isCommand(event);
  const Qt::Key key = isHeld ? commandKey(event, environment_.keyCodeOf) : Qt::Key(event.key());
  if (isHeld && key == Qt::Key_Comma) {
    callbacks_.onOpenSettings();
    return true;
  }
  if (!environment_.viewModel.result()) return false;
  if (isHeld && key == Qt::Key_C) {
    const QString selected = results_.selectedText();
    if (selected.isEmpty()) return false;
    writeOwnCopy(selected.toStdString());
    return true;
  }
  switch (key) {
    case Qt::Key_Up:
      select(std::max(0, selectedIndex_ - 1));
      return true;
    case Qt::Key_Down:
      select(std::min(kRows - 1, selectedIndex_ + 1));
      return true;
    default:
      return false;
  }
}

void ConverterView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    callbacks_.onDismiss();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void ConverterView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  environment_.viewModel.setResting(false);
  inputRow_.input().setFocus(Qt::OtherFocusReason);
  render();
  qApp->installEventFilter(this);
}

void ConverterView::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous()) return;
  qApp->removeEventFilter(this);
  results_.clearSelection();
  environment_.viewModel.setResting(true);
}

void ConverterView::scheduleRender() {
  // What changes while nobody sees it is drawn at the next show.
  if (renderScheduled_ || !isVisible()) return;
  renderScheduled_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (renderScheduled_) render();
      },
      Qt::QueuedConnection);
}

void ConverterView::render() {
  renderScheduled_ = false;
  const ConverterViewModel& viewModel = environment_.viewModel;
  inputRow_.render(viewModel.input());
  const auto& result = viewModel.result();
  const auto& message = viewModel.errorMessage();
  if (result) {
    results_.render(rows(*result, environment_.rowContext), selectedIndex_, copiedRowIndex_);
  } else if (message) {
    error_.render(*message);
  }
  results_.setVisible(result.has_value());
  error_.setVisible(!result && message);
  placeholder_.setVisible(!result && !message);
  footer_.render();
}

void ConverterView::layOut() {
  const int input = inputRow_.sizeHint().height();
  const int footer = footer_.sizeHint().height();
  inputRow_.setGeometry(0, 0, width(), input);
  footer_.setGeometry(0, height() - footer, width(), footer);
  // A divider of one pixel stands above the body and one below.
  const QRect body(0, input + 1, width(), height() - input - footer - 2);
  results_.setGeometry(body);
  error_.setGeometry(body);
  placeholder_.setGeometry(body);
}

void ConverterView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layOut();
}

void ConverterView::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  drawMaterial(painter, rect(), kShape, backdrop_);
  for (const int y : {inputRow_.geometry().bottom() + 1, footer_.geometry().top() - 1}) {
    drawDivider(painter, QRectF(0, y, width(), 1), Qt::Horizontal);
  }
}

}  // namespace horalo
