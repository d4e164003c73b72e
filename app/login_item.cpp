#include "app/login_item.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QString>
#include <string>
#include <utility>

#include "base/user_folders.h"

namespace horalo {
namespace {

// A panel that starts with the same session should be there first, so that the icon finds its place
// at once; the desktops that know this key wait that many seconds.
constexpr const char* kDelayLine = "X-GNOME-Autostart-Delay=2\nX-KDE-autostart-after=panel\n";

// An argument as the Exec key has it: quoted, with the characters escaped that a quoted argument
// cannot hold (freedesktop.org, Desktop Entry 1.5, "The Exec key"), and once more for the string.
std::string execArgument(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '`' || c == '$') quoted += "\\\\";
    if (c == '\\') quoted += "\\\\\\";
    if (c == '%') quoted += '%';
    quoted += c;
  }
  return quoted + '"';
}

std::string execLine(const std::filesystem::path& program) {
  return "Exec=" + execArgument(program.string()) + " --background\n";
}

QByteArray contents(const std::filesystem::path& program) {
  return QByteArray::fromStdString(
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Horalo\n"
      "Comment=Convert Unix timestamps and dates\n" +
      execLine(program) +
      "Icon=org.horalo.Horalo\n"
      "Terminal=false\n"
      "StartupNotify=false\n" +
      kDelayLine);
}

QByteArray read(const std::filesystem::path& path) {
  constexpr qint64 kLargest = 64 * 1024;
  QFile file(QString::fromStdString(path.string()));
  return file.open(QIODevice::ReadOnly) ? file.read(kLargest) : QByteArray();
}

void write(const std::filesystem::path& path, const QByteArray& text) {
  const QString name = QString::fromStdString(path.string());
  QDir().mkpath(QString::fromStdString(path.parent_path().string()));
  QSaveFile file(name);
  // Unbuffered, so that a full disk shows here and leaves the old file in place.
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return;
  if (file.write(text) == text.size()) file.commit();
}

}  // namespace

std::filesystem::path LoginItem::defaultPath() {
  const std::filesystem::path config = userConfigFolder();
  return config.empty() ? config : config / "autostart" / "org.horalo.Horalo.desktop";
}

LoginItem::LoginItem(std::filesystem::path entry, std::filesystem::path program)
    : entry_(std::move(entry)), program_(std::move(program)) {}

void LoginItem::setEnabled(bool enabled) const {
  if (entry_.empty()) return;
  if (enabled) {
    write(entry_, contents(program_));
  } else {
    QFile::remove(QString::fromStdString(entry_.string()));
  }
}

bool LoginItem::isEnabled() const {
  if (entry_.empty()) return false;
  const QByteArray text = read(entry_);
  return !text.isEmpty() && !text.contains("\nHidden=true");
}

void LoginItem::repair() const {
  if (!isEnabled()) return;
  QByteArray text = read(entry_);
  const QByteArray wanted = QByteArray::fromStdString(execLine(program_));
  if (text.contains(wanted)) return;
  // What else the user, or the desktop's own settings, have put there stays.
  const qsizetype start = text.indexOf("\nExec=") + 1;
  if (start == 0) return setEnabled(true);
  const qsizetype end = text.indexOf('\n', start);
  text.replace(start, end < 0 ? text.size() - start : end + 1 - start, wanted);
  write(entry_, text);
}

}  // namespace horalo
