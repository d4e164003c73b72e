#pragma once

#include <QString>
#include <QUrl>

namespace horalo {

// What the update window shows.
struct UpdateScreen {
  enum class Page {
    none,         // no window
    checking,     // may be cancelled
    message,      // a result or a problem
    offer,        // a new version
    downloading,  // may be cancelled
    installing,
  };
  Page page = Page::none;
  QString headline;
  QString text;
  QString notes;  // of the new version, plain text
  QUrl link;      // more about it, https; empty where there is nothing
  bool canInstall = false;
  bool canSkip = false;
  qint64 received = 0;  // bytes
  qint64 total = 0;
};

}  // namespace horalo
