#pragma once

#include <QString>
#include <QTemporaryDir>
#include <filesystem>
#include <string_view>

namespace horalo {

// A folder of a test's own, gone with the object.
class TemporaryFolder {
 public:
  // The path of something in the folder.
  QString path(const QString& name) const { return folder_.filePath(name); }
  QString path() const { return folder_.path(); }

  // The same for those who have no use for Qt's strings.
  std::filesystem::path operator/(std::string_view name) const {
    return std::filesystem::path(folder_.path().toStdString()) / name;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace horalo
