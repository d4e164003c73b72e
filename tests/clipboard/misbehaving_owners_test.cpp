// Whatever the program on the other side of the clipboard does, the event loop keeps coming round,
// a read ends within its second, and the memory comes back.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <functional>
#include <optional>

#include "platform/x11/x11_pasteboard.h"
#include "tests/x11/child_program.h"
#include "tests/x11/event_loop_gap.h"
#include "tests/x11/process_figures.h"
#include "tests/x11/virtual_display.h"

namespace horalo {
namespace {

using Text = std::optional<std::string>;

struct Row {
  QString behaviour;
  QStringList arguments;
  Text expected;
  double seconds;  // at most, until the answer
  bool stopped = false;
};

QString text(const char* text) {
  return QString::fromUtf8(text);
}

TEST(MisbehavingOwners, neverHoldUpTheEventLoop) {
  const QString huge = text("200000000");
  const Row rows[] = {
      {text("is stopped"), {text("bytes"), text("3137")}, {}, 1.3, true},
      {text("ends before the read"), {text("dies")}, {}, 1.3},
      {text("ends in the middle"), {text("dies-midway")}, {}, 1.3},
      {text("never answers"), {text("silent")}, {}, 1.3},
      {text("answers after 1.5 s"), {text("late"), text("1500")}, {}, 1.3},
      {text("has no text"), {text("no-text")}, {}, 0.5},
      {text("has 200 MB at once"), {text("at-once"), huge}, {}, 1.3},
      {text("has 200 MB in pieces"), {text("pieces"), huge}, {}, 0.5},
      {text("never stops"), {text("endless")}, {}, 0.5},
      {text("sends invalid UTF-8"), {text("bytes"), text("31ff")}, "1\xEF\xBF\xBD", 0.5},
  };
  VirtualDisplay display;
  ASSERT_TRUE(display.isRunning());
  X11Pasteboard pasteboard(display.name().toStdString());
  pasteboard.changeCount();
  const qint64 ownMemory = residentMebibytes(QCoreApplication::applicationPid());
  const qint64 serversMemory = residentMebibytes(display.server().processId());

  int count = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.behaviour.toStdString());
    ChildProgram owner(QStringLiteral(HORALO_BAD_OWNER), row.arguments, display.name());
    ASSERT_TRUE(owner.waitForWord("ready"));
    if (row.stopped) owner.stop();

    bool answered = false;
    Text answer;
    QElapsedTimer elapsed;
    elapsed.start();
    EventLoopGap gap;
    const auto read = pasteboard.read({}, [&](Text came) {
      answered = true;
      answer = std::move(came);
    });
    EXPECT_TRUE(waitUntil([&] { return answered; }));
    EXPECT_LT(static_cast<double>(elapsed.elapsed()) / 1000, row.seconds);
    EXPECT_LT(gap.milliseconds(), 50);
    EXPECT_EQ(answer, row.expected);
    ++count;
  }
  EXPECT_EQ(count, 10);

  EXPECT_LT(residentMebibytes(QCoreApplication::applicationPid()), ownMemory + 8);
  EXPECT_TRUE(waitUntil([&] {
    return residentMebibytes(display.server().processId()) < serversMemory + 40;
  })) << residentMebibytes(display.server().processId())
      << " MiB, " << serversMemory << " before";
}

}  // namespace
}  // namespace horalo
