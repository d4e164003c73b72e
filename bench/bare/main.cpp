// The least that a program with a tray icon, a shortcut, a line to type into and a list can be:
// what Horalo costs beyond it is Horalo's own. Ends at SIGTERM.
#include <QApplication>
#include <QSystemTrayIcon>

#include "bench/bare/shortcut.h"
#include "bench/bare/window.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  bare::Window window;
  const bare::Shortcut shortcut([&window] { window.toggle(); });
  QPixmap picture(22, 22);
  picture.fill(Qt::darkGray);
  QSystemTrayIcon icon{QIcon(picture)};
  icon.show();
  return QApplication::exec();
}
