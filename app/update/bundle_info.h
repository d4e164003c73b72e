#pragma once

#include <QByteArray>
#include <QUrl>
#include <filesystem>
#include <string>
#include <vector>

namespace horalo {

// The version of a program that does not tell its own.
inline constexpr const char* kFallbackVersion = "1.3.0";

// What a bundle says about itself in Contents/Info.plist. Texts that are missing are empty.
struct BundleInfo {
  std::string identifier;         // CFBundleIdentifier
  std::string shownVersion;       // CFBundleShortVersionString, else kFallbackVersion
  std::string version;            // CFBundleVersion, by which versions are compared; else as shown
  QUrl feedUrl;                   // SUFeedURL
  std::vector<std::string> keys;  // SUPublicEDKey: one text, or several in an array
};

// Everything is missing where `document` is no property list.
BundleInfo parseBundleInfo(const QByteArray& document);

// The same for a bundle on the disk.
BundleInfo readBundleInfo(const std::filesystem::path& bundle);

// Why a bundle that says so about itself can never be updated, as far as that can be told without
// looking at its keys closely; empty where nothing speaks against it.
std::string obstacleToUpdates(const BundleInfo& info);

// The version of the program that runs, as people see it: that of its bundle, or where there is
// none that of the build.
std::string runningVersion();

}  // namespace horalo
