#pragma once

#include <cstddef>
#include <string_view>

namespace horalo {

// One connection to the command socket carries one command, as a line:
//
//   show\n            ->  ok\n
//   status --json\n   ->  ok\n{"running":true,...}\n
//   dance\n           ->  unknown\n
//
// and is closed after the answer.
namespace protocol {
inline constexpr std::string_view ok = "ok\n";
inline constexpr std::string_view unknown = "unknown\n";
inline constexpr std::size_t longestCommand = 64;  // bytes, with the line's end
}  // namespace protocol

}  // namespace horalo
