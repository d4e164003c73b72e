#include "app/update/installation.h"

#include <variant>

#include "app/update/allowed_url.h"
#include "app/update/archive.h"
#include "app/update/version_order.h"

namespace horalo {
namespace {

std::optional<UpdateKeys> keysOf(const BundleInfo& info) {
  const std::vector<std::string_view> texts(info.keys.begin(), info.keys.end());
  return UpdateKeys::parse(texts);
}

}  // namespace

std::optional<Problem> checkNewBundle(const BundleInfo& info, const InstallationOrder& order) {
  if (info.identifier != order.installed.identifier)
    return problem::wrongBundle(QStringLiteral("it is another program"));
  if (!isVersion(info.version) || compareVersions(info.version, order.item.version) != 0)
    return problem::wrongBundle(QStringLiteral("its version is another one"));
  if (compareVersions(info.version, order.installed.version) <= 0 ||
      compareVersions(info.version, order.highestVersion) < 0) {
    return problem::wrongBundle(QStringLiteral("it is an older version"));
  }
  // Otherwise it could never be updated again.
  if (!keysOf(info)) return problem::wrongBundle(QStringLiteral("it has no key"));
  if (!isAllowedUrl(info.feedUrl))
    return problem::wrongBundle(QStringLiteral("it knows no update server"));
  return std::nullopt;
}

std::optional<Problem> install(const InstallationOrder& order, Staging& staging, int held) {
  if (order.archive.size() != order.item.archiveLength) return problem::wrongLength();
  if (!order.keys.verify(order.archive, order.item.archiveSignature))
    return problem::forgedArchive();

  const auto unpacked = unpackArchive(order.archive, staging.folder());
  if (const auto* const failure = std::get_if<UnpackFailure>(&unpacked)) {
    if (failure->noSpace)
      return problem::noSpace(QString::fromStdString(staging.parentPath().string()));
    return problem::badArchive(QString::fromStdString(failure->reason));
  }
  const auto& bundle = std::get<UnpackedBundle>(unpacked);
  if (auto wrong = checkNewBundle(parseBundleInfo(bundle.info), order)) return wrong;
  if (!bundle.hasProgram) return problem::wrongBundle(QStringLiteral("the program is missing"));
  return staging.exchange(held);
}

}  // namespace horalo
