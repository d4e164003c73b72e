#pragma once

#include <compare>
#include <string_view>

namespace horalo {

// The longest text that is taken for a version, in bytes.
inline constexpr std::size_t kLongestVersion = 100;

// Whether `text` can be a version: not empty, not too long, of printable ASCII characters, with a
// digit.
bool isVersion(std::string_view text);

// The order of two versions. A version is a row of numbers, of any length and size, and of words;
// everything else separates. Numbers compare by value and a missing one is 0, so "1.10" > "1.9" and
// "2.0" == "2". A word marks what came before the version without it: "2.0b1" < "2.0rc" < "2.0" <
// "2.0.1". What follows a plus sign does not count.
std::weak_ordering compareVersions(std::string_view a, std::string_view b);

}  // namespace horalo
