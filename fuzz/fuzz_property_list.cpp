#include <cstddef>
#include <cstdint>

#include "app/update/bundle_info.h"
#include "fuzz/require.h"
#include "preferences/property_list.h"

// Any bytes as a property list: nothing, or a dictionary that comes back the same when it is
// written and read again.

namespace horalo {
namespace {

void check(const QByteArray& document) {
  const BundleInfo info = parseBundleInfo(document);
  require(!info.version.empty() && !info.shownVersion.empty(), "every bundle has a version");

  const auto dictionary = plist::read(document);
  if (!dictionary) return;
  const QByteArray written = plist::write(*dictionary);
  const auto again = plist::read(written);
  require(again.has_value(), "what is written can be read");
  // As texts, in which what is not a number equals itself.
  require(plist::write(*again) == written, "what is read again is the same");
}

}  // namespace
}  // namespace horalo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  horalo::check(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
