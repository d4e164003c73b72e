#pragma once

#include <QProcess>
#include <QStringList>
#include <functional>

namespace horalo {

// Runs the event loop until `done`; false where that does not come true within `seconds`.
bool waitUntil(const std::function<bool()>& done, double seconds = 20);

// Another program, which ends with this object, with its test, and with its test's process. What
// it tells on standard output is collected.
class ChildProgram {
 public:
  // `display`: what DISPLAY says to it. `input` is its standard input.
  ChildProgram(const QString& program, const QStringList& arguments, const QString& display = {},
               const QByteArray& input = {});
  ~ChildProgram();

  // Waits until standard output holds `word`.
  bool waitForWord(const QByteArray& word);
  const QByteArray& output();

  bool isRunning() const { return process_.state() == QProcess::Running; }
  // The process ends by itself: its exit status, or -1 where it does not.
  int waitForEnd();

  void stop();  // holds its breath, as a debugged or swapped-out program does
  void continueOn();
  void kill();  // at once, with no chance to say goodbye
  void terminate();
  qint64 processId() const { return process_.processId(); }

 private:
  void send(int signal);

  QProcess process_;
  QByteArray output_;
};

}  // namespace horalo
