// A program that copies a thousand times a second, for ten seconds.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include "clipboard/clipboard_monitor.h"
#include "platform/qt/qt_timers.h"
#include "platform/x11/x11_pasteboard.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/manual_clock.h"
#include "tests/x11/child_program.h"
#include "tests/x11/event_loop_gap.h"
#include "tests/x11/process_figures.h"
#include "tests/x11/virtual_display.h"

namespace horalo {
namespace {

TEST(ClipboardStorm, isLookedAtSparinglyAndItsLastCopyWins) {
  VirtualDisplay display;
  ASSERT_TRUE(display.isRunning());
  QtTimers timers;
  X11Pasteboard pasteboard(display.name().toStdString());
  const ManualClock clock({1'800'000'000, 0});
  const FixedZone zone(TimeZone::utc());
  const TimestampParser parser(clock, zone);
  PreferencesStore store({}, timers);
  const Preferences preferences(store);
  ClipboardMonitor monitor({pasteboard, timers, parser, zone, preferences});
  int reports = 0;
  std::string last;
  monitor.onTimestampDetected([&](const std::string& input, const ConversionResult&) {
    ++reports;
    last = input;
  });
  monitor.start();

  const qint64 memory = residentMebibytes(QCoreApplication::applicationPid());
  EventLoopGap gap;
  QElapsedTimer elapsed;
  elapsed.start();
  ChildProgram storm(QStringLiteral(HORALO_BAD_OWNER),
                     {QStringLiteral("flood"), QStringLiteral("10000"), QStringLiteral("1000"),
                      QStringLiteral("170000000")},
                     display.name());
  ASSERT_TRUE(waitUntil([&] { return storm.output().contains("done"); }, 60));
  const double seconds = static_cast<double>(elapsed.elapsed()) / 1000;
  EXPECT_TRUE(waitUntil([&] { return last == "17000000010000"; }, 2)) << last;

  EXPECT_EQ(pasteboard.changeCount(), 1 + 10000);  // it owned the clipboard before it began
  EXPECT_GT(reports, 10);
  EXPECT_LE(reports, seconds / ClipboardMonitor::kInterval + 2);
  EXPECT_LT(gap.milliseconds(), 50);
  EXPECT_LT(residentMebibytes(QCoreApplication::applicationPid()), memory + 4);

  // A second of quiet.
  QEventLoop quiet;
  QTimer::singleShot(1000, &quiet, &QEventLoop::quit);
  const double before = processorSeconds();
  quiet.exec();
  EXPECT_LT(processorSeconds() - before, 0.05);
}

}  // namespace
}  // namespace horalo
