// What comes over the connection at an awkward moment is not left lying.
#include "platform/x11/x_connection.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <QFile>
#include <functional>

#include "tests/x11/virtual_display.h"

namespace {

// Called before each look for an event.
std::function<void(xcb_connection_t*)> beforeLook;

}  // namespace

// Stands in for the library's own.
extern "C" xcb_generic_event_t* xcb_poll_for_event(xcb_connection_t* connection) {
  using Function = xcb_generic_event_t* (*)(xcb_connection_t*);
  static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "xcb_poll_for_event"));
  if (beforeLook) beforeLook(connection);
  return real(connection);
}

namespace horalo {
namespace {

bool isStopped(qint64 process) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(process));
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray line = file.readAll();
  return line.mid(line.lastIndexOf(')') + 2).startsWith('T');
}

// The server stands still until the program looks for an event the `look`th time, and answers just
// then: it is that look that reads the answer.
bool isAnsweredDuringLook(int look) {
  VirtualDisplay display;
  if (!display.isRunning()) return false;
  XConnection connection(display.name().toUtf8().constData());
  int looks = 0;
  bool came = false;
  beforeLook = [&](xcb_connection_t* xcb) {
    if (++looks != look) return;
    display.server().continueOn();
    pollfd socket{xcb_get_file_descriptor(xcb), POLLIN, 0};
    came = ::poll(&socket, 1, 10'000) == 1;
  };
  display.server().stop();
  if (!waitUntil([&] { return isStopped(display.server().processId()); })) return false;
  bool isAnswered = false;
  connection.whenAnswered<xcb_get_input_focus_reply_t>(
      xcb_get_input_focus(connection.get()),
      [&](const xcb_get_input_focus_reply_t* answer) { isAnswered = answer != nullptr; });
  const bool inTime = waitUntil([&] { return isAnswered; }, 5);
  beforeLook = nullptr;
  return came && inTime;
}

TEST(XConnection, handsOutAnAnswerThatALookForEventsHasRead) {
  EXPECT_TRUE(isAnsweredDuringLook(1));
  EXPECT_TRUE(isAnsweredDuringLook(2));
}

}  // namespace
}  // namespace horalo
