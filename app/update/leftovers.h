#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace horalo {

// A new version is unpacked beside the bundle, and the old one is left there for a while; both
// under a name such as ".Horalo.app.Xq3b9K".

// The pattern of such a name for mkdtemp.
std::string leftoverPattern(const std::filesystem::path& bundle);

bool isLeftover(std::string_view name, const std::filesystem::path& bundle);

// Whether anything of the kind is beside the bundle.
bool hasLeftovers(const std::filesystem::path& bundle);

}  // namespace horalo
