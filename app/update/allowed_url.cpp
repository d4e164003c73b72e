#include "app/update/allowed_url.h"

#include <QHostAddress>

namespace horalo {
namespace {

bool isThisComputer(const QString& host) {
  return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

}  // namespace

bool isAllowedUrl(const QUrl& url) {
  if (!url.isValid() || url.host().isEmpty()) return false;
  if (url.scheme() == QLatin1String("https")) return true;
  return url.scheme() == QLatin1String("http") && isThisComputer(url.host());
}

bool isAllowedRedirect(const QUrl& from, const QUrl& to) {
  const bool weaker = from.scheme() == QLatin1String("https") && to.scheme() != from.scheme();
  return isAllowedUrl(to) && !weaker;
}

}  // namespace horalo
