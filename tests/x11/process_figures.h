#pragma once

#include <QFile>
#include <QtGlobal>
#include <ctime>

namespace horalo {

// Resident memory of a process in MiB; 0 where there is no such process.
inline qint64 residentMebibytes(qint64 processId) {
  QFile file(QStringLiteral("/proc/%1/statm").arg(processId));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').at(1).toLongLong() * 4096 / (1 << 20);
}

// Seconds of processor time that this process has used so far, over all its threads.
inline double processorSeconds() {
  timespec used{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

}  // namespace horalo
