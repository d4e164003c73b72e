#pragma once

#include <filesystem>

namespace horalo {

// The application bundle that a file lies in: the nearest folder above it whose name ends in
// ".app", as in
//
//   /home/ada/Horalo.app/Contents/Linux/horalo-agent
//   ^^^^^^^^^^^^^^^^^^^^
//
// Empty where there is none.
std::filesystem::path bundleOf(const std::filesystem::path& file);

// The file that this process was started from, links followed; empty where the system does not
// tell. To be asked once, at the start: after an update it names the old file's new place.
std::filesystem::path runningExecutable();

// Where things are in a bundle, relative to it.
inline constexpr const char* kBundleInfo = "Contents/Info.plist";
inline constexpr const char* kBundleProgram = "Contents/Linux/horalo";
inline constexpr const char* kBundleUpdater = "Contents/Linux/horalo-updater";

}  // namespace horalo
