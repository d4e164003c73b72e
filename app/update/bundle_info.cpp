#include "app/update/bundle_info.h"

#include <QFile>
#include <algorithm>

#include "app/update/bundle_path.h"
#include "base/product_version.h"
#include "preferences/property_list.h"

namespace horalo {
namespace {

const plist::Value* find(const plist::Dictionary& dictionary, std::string_view key) {
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? nullptr : &found->second;
}

std::string textOf(const plist::Dictionary& dictionary, std::string_view key) {
  const auto* const value = find(dictionary, key);
  const auto* const text = value != nullptr ? value->string() : nullptr;
  return text != nullptr ? *text : std::string();
}

std::vector<std::string> keysOf(const plist::Dictionary& dictionary) {
  std::vector<std::string> keys;
  const auto* const value = find(dictionary, "SUPublicEDKey");
  if (value == nullptr) return keys;
  if (const auto* const text = value->string()) keys.push_back(*text);
  if (const auto* const array = value->array()) {
    for (const auto& element : *array) {
      // What is no text is no key, and must not pass for fewer keys.
      keys.push_back(element.string() != nullptr ? *element.string() : std::string());
    }
  }
  return keys;
}

// Whether the text could be one of an Ed25519 key, and is not that of zeros alone.
bool looksLikeKey(const std::string& text) {
  constexpr qsizetype size = 32;
  const auto decoded = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text),
                                                      QByteArray::AbortOnBase64DecodingErrors);
  return decoded && decoded.decoded.size() == size && decoded.decoded != QByteArray(size, '\0');
}

}  // namespace

BundleInfo parseBundleInfo(const QByteArray& document) {
  const plist::Dictionary dictionary = plist::read(document).value_or(plist::Dictionary());
  BundleInfo info;
  info.identifier = textOf(dictionary, "CFBundleIdentifier");
  info.shownVersion = textOf(dictionary, "CFBundleShortVersionString");
  if (info.shownVersion.empty()) info.shownVersion = kFallbackVersion;
  info.version = textOf(dictionary, "CFBundleVersion");
  if (info.version.empty()) info.version = info.shownVersion;
  info.feedUrl = QUrl(QString::fromStdString(textOf(dictionary, "SUFeedURL")), QUrl::StrictMode);
  info.keys = keysOf(dictionary);
  return info;
}

BundleInfo readBundleInfo(const std::filesystem::path& bundle) {
  QFile file(QString::fromStdString((bundle / kBundleInfo).string()));
  if (!file.open(QIODevice::ReadOnly)) return parseBundleInfo({});
  return parseBundleInfo(file.read(plist::kLongestDocument + 1));
}

std::string obstacleToUpdates(const BundleInfo& info) {
  if (info.keys.empty()) return "this bundle was made without a key to check updates with";
  if (!std::all_of(info.keys.begin(), info.keys.end(), looksLikeKey))
    return "a key of this bundle is not valid";
  if (!info.feedUrl.isValid() || info.feedUrl.host().isEmpty())
    return "this bundle does not say where to look for updates";
  return {};
}

std::string runningVersion() {
  const auto bundle = bundleOf(runningExecutable());
  return bundle.empty() ? std::string(productVersion()) : readBundleInfo(bundle).shownVersion;
}

}  // namespace horalo
