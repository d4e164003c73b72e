#include "app/update/bundle_info.h"

#include <QFile>

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

std::string runningVersion() {
  const auto bundle = bundleOf(runningExecutable());
  return bundle.empty() ? std::string(productVersion()) : readBundleInfo(bundle).shownVersion;
}

}  // namespace horalo
