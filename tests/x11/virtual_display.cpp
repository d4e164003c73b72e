#include "tests/x11/virtual_display.h"

namespace horalo {

VirtualDisplay::VirtualDisplay(const QString& screen)
    : server_(QStringLiteral("Xvfb"),
              {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
               QStringLiteral("0"), screen, QStringLiteral("-nolisten"), QStringLiteral("tcp"),
               QStringLiteral("-noreset")}) {
  if (!server_.waitForWord("\n")) return;
  name_ = QStringLiteral(":") + QString::fromLatin1(server_.output().trimmed());
}

}  // namespace horalo
