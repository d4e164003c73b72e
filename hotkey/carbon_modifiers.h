#pragma once

#include <cstdint>

// The modifier bits in which a shortcut is registered.
namespace horalo::carbon {

inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;

}  // namespace horalo::carbon
