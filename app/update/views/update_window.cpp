#include "app/update/views/update_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/appearance.h"
#include "ui/colors.h"
#include "ui/fonts.h"

namespace horalo {
namespace {

using Page = UpdateScreen::Page;

constexpr int kWidth = 440;
constexpr int kNotesHeight = 150;
constexpr int kMargin = 20;
constexpr int kSpacing = 10;
constexpr int kProgressSteps = 1000;

QString closeTextOf(Page page) {
  if (page == Page::offer) return QStringLiteral("Later");
  if (page == Page::message) return QStringLiteral("OK");
  return QStringLiteral("Cancel");
}

QString amount(qint64 bytes) {
  return QLocale(QLocale::English).formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

void configureText(QLabel& label) {
  label.setTextFormat(Qt::PlainText);  // whatever a server says is shown as it stands
  label.setWordWrap(true);
}

}  // namespace

UpdateWindow::UpdateWindow() {
  setWindowTitle(QStringLiteral("Horalo Update"));
  configureText(headline_);
  configureText(text_);
  text_.setTextInteractionFlags(Qt::TextSelectableByMouse);
  link_.setOpenExternalLinks(true);  // https alone, see FeedItem
  link_.setTextInteractionFlags(Qt::TextBrowserInteraction);
  notes_.setReadOnly(true);
  notes_.setTabChangesFocus(true);
  notes_.setAccessibleName(QStringLiteral("Release notes"));
  progress_.setTextVisible(false);
  progress_.setAccessibleName(QStringLiteral("Progress"));
  skip_.setText(QStringLiteral("Skip This Version"));
  install_.setText(QStringLiteral("Install and Relaunch"));

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(&skip_);
  buttons->addStretch();
  buttons->addWidget(&close_);
  buttons->addWidget(&install_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kSpacing);
  for (QWidget* widget : {static_cast<QWidget*>(&headline_), static_cast<QWidget*>(&text_),
                          static_cast<QWidget*>(&notes_), static_cast<QWidget*>(&link_),
                          static_cast<QWidget*>(&progress_)}) {
    column->addWidget(widget);
  }
  column->addStretch();
  column->addLayout(buttons);

  connect(&install_, &QPushButton::clicked, this, &UpdateWindow::installClicked);
  connect(&skip_, &QPushButton::clicked, this, &UpdateWindow::skipClicked);
  connect(&close_, &QPushButton::clicked, this, &UpdateWindow::closeClicked);
  connect(&Appearance::shared(), &Appearance::changed, this, &UpdateWindow::updateLook);
  updateLook();
}

void UpdateWindow::render(const UpdateScreen& screen, bool inFront) {
  const bool pageChanged = screen.page != page_;
  page_ = screen.page;
  if (page_ == Page::none) {
    hide();
    return;
  }
  renderProgress(screen);
  if (!pageChanged) return;

  headline_.setText(screen.headline);
  text_.setText(screen.text);
  text_.setVisible(!screen.text.isEmpty());
  notes_.setPlainText(screen.notes);
  notes_.setVisible(!screen.notes.isEmpty());
  const QString address = screen.link.toString(QUrl::FullyEncoded).toHtmlEscaped();
  link_.setText(QStringLiteral("<a href=\"%1\">More about this version</a>").arg(address));
  link_.setVisible(!screen.link.isEmpty());
  renderButtons(screen);

  setFixedSize(static_cast<int>(scaledLength(kWidth)),
               layout()->hasHeightForWidth()
                   ? layout()->heightForWidth(static_cast<int>(scaledLength(kWidth)))
                   : layout()->sizeHint().height());
  if (isVisible()) return;
  setAttribute(Qt::WA_ShowWithoutActivating, !inFront);
  show();
  if (inFront) bringToFront();
}

void UpdateWindow::bringToFront() {
  raise();
  activateWindow();
}

void UpdateWindow::renderButtons(const UpdateScreen& screen) {
  install_.setVisible(screen.canInstall);
  install_.setDefault(screen.canInstall);
  skip_.setVisible(screen.canSkip);
  close_.setText(closeTextOf(page_));
  close_.setVisible(page_ != Page::installing);
  close_.setDefault(!screen.canInstall);
  (screen.canInstall ? install_ : close_).setFocus();
}

void UpdateWindow::renderProgress(const UpdateScreen& screen) {
  const bool busy = page_ == Page::checking || page_ == Page::installing;
  progress_.setVisible(busy || page_ == Page::downloading);
  if (page_ == Page::downloading && screen.total > 0) {
    progress_.setRange(0, kProgressSteps);
    progress_.setValue(
        static_cast<int>(std::min(screen.received, screen.total) * kProgressSteps / screen.total));
    text_.setText(QStringLiteral("%1 of %2").arg(amount(screen.received), amount(screen.total)));
    text_.show();
  } else {
    progress_.setRange(0, 0);
  }
}

void UpdateWindow::updateLook() {
  QPalette palette;
  palette.setColor(QPalette::Window, color(ColorRole::window));
  palette.setColor(QPalette::WindowText, color(ColorRole::primary));
  palette.setColor(QPalette::Base, color(ColorRole::section));
  palette.setColor(QPalette::Text, color(ColorRole::primary));
  palette.setColor(QPalette::Button, color(ColorRole::controlBackground));
  palette.setColor(QPalette::ButtonText, color(ColorRole::primary));
  palette.setColor(QPalette::Highlight, color(ColorRole::accent));
  palette.setColor(QPalette::Link, color(ColorRole::accent));
  setPalette(palette);
  setFont(interfaceFont(kHeadlineSize));
  headline_.setFont(interfaceFont(kHeadlineSize, QFont::DemiBold));
  notes_.setFixedHeight(static_cast<int>(scaledLength(kNotesHeight)));
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Q_EMIT closeClicked();
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT closeClicked();
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    auto* const focused = qobject_cast<QPushButton*>(focusWidget());
    (focused != nullptr ? focused : &close_)->click();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace horalo
