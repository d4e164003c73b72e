// A program of somebody else with a menu, which a click anywhere in its window opens. Says "open"
// when the menu is there, "chosen" when its entry was chosen, and "closed" when it went away. With
// an argument, its window fills the screen.
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace {

void say(const char* word) {
  std::puts(word);
  std::fflush(stdout);
}

class MenuOwner final : public QWidget {
 public:
  MenuOwner() {
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

 private:
  QMenu menu_{this};
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  MenuOwner owner;
  if (argc > 1) {
    owner.showFullScreen();
  } else {
    owner.show();
  }
  return QApplication::exec();
}
