#pragma once

#include <cstdint>
#include <vector>

namespace horalo {

class XConnection;

// Which of X's eight modifier bits are Command (the Super key), Option (Alt) and the locks. The
// keyboard map decides; these are the usual bits, as they are until it has been read.
struct XModifiers {
  std::uint16_t command = 1U << 6U;
  std::uint16_t option = 1U << 3U;
  // Caps, Num and Scroll Lock, as far as they have bits: no part of any combination.
  std::uint16_t locks = 1U << 1U | 1U << 4U;

  // Asks the server; the usual bits for a modifier that no key has.
  static XModifiers read(XConnection& connection);

  // The bits that are down for a combination of carbon:: bits.
  std::uint16_t fromCarbon(std::uint32_t carbonModifiers) const;

  // `modifiers` with every set of locks: what a combination looks like, whatever locks are on.
  std::vector<std::uint16_t> withEveryLock(std::uint16_t modifiers) const;

  // An event's state without locks, buttons and the layout's group.
  std::uint16_t withoutLocks(std::uint16_t state) const {
    return static_cast<std::uint16_t>(state & 0xFFU & ~locks);
  }

  friend bool operator==(const XModifiers&, const XModifiers&) = default;
};

}  // namespace horalo
