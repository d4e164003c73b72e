#include "tests/x11/child_program.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace horalo {

bool waitUntil(const std::function<bool()>& done, double seconds) {
  const QDeadlineTimer deadline(static_cast<qint64>(seconds * 1000));
  QTimer tick;  // some of what is waited for is no event of ours
  tick.start(5);
  while (!done()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

ChildProgram::ChildProgram(const QString& program, const QStringList& arguments,
                           const QString& display, const QByteArray& input) {
  auto environment = QProcessEnvironment::systemEnvironment();
  if (!display.isEmpty()) environment.insert(QStringLiteral("DISPLAY"), display);
  process_.setProcessEnvironment(environment);
  process_.setStandardErrorFile(QProcess::nullDevice());
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(program, arguments);
  process_.waitForStarted();
  process_.write(input);
  process_.closeWriteChannel();
}

ChildProgram::~ChildProgram() {
  kill();
  process_.waitForFinished();
}

const QByteArray& ChildProgram::output() {
  output_ += process_.readAllStandardOutput();
  return output_;
}

bool ChildProgram::waitForWord(const QByteArray& word) {
  return waitUntil([&] { return output().contains(word); });
}

int ChildProgram::waitForEnd() {
  if (!waitUntil([&] { return process_.state() == QProcess::NotRunning; })) return -1;
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

void ChildProgram::send(int signal) {
  if (isRunning()) ::kill(static_cast<pid_t>(process_.processId()), signal);
}

void ChildProgram::stop() {
  send(SIGSTOP);
}
void ChildProgram::continueOn() {
  send(SIGCONT);
}
void ChildProgram::kill() {
  send(SIGKILL);
}
void ChildProgram::terminate() {
  send(SIGTERM);
}

}  // namespace horalo
