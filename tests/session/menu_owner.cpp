// A program of somebody else with a menu, which a click anywhere in its window opens. Says "open"
// when the menu is there, "chosen" when its entry was chosen, and "closed" when it went away. With
// an argument, its window fills the screen.
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <utility>

namespace {

void say(const char* word) {
  std::puts(word);
  std::fflush(stdout);
}

class MenuOwner final : public QWidget {
 public:
  explicit MenuOwner(bool fillsScreen) : fillsScreen_(fillsScreen) {
    setWindowTitle(QStringLiteral("MenuOwner"));
    setGeometry(100, 100, 300, 200);
    const QAction* const entry = menu_.addAction(QStringLiteral("Entry"));
    connect(entry, &QAction::triggered, this, [] { say("chosen"); });
    // An entry is chosen after the menu has gone.
    connect(&menu_, &QMenu::aboutToHide, this,
            [this] { QTimer::singleShot(0, this, [] { say("closed"); }); });
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    menu_.popup(event->globalPosition().toPoint());
    QTimer::singleShot(0, this, [] { say("open"); });
  }
  // Not every window manager obeys a window that wants to fill the screen before it is on it.
  void paintEvent(QPaintEvent*) override {
    if (std::exchange(fillsScreen_, false)) QTimer::singleShot(0, this, &QWidget::showFullScreen);
  }

 private:
  QMenu menu_{this};
  bool fillsScreen_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  MenuOwner owner(argc > 1);
  owner.show();
  return QApplication::exec();
}
