#include "platform/x11/x_modifiers.h"

#include <algorithm>
#include <span>

#include "hotkey/carbon_modifiers.h"
#include "platform/x11/x_connection.h"

namespace horalo {
namespace {

// The symbols of modifier keys, as the X protocol numbers them.
constexpr xcb_keysym_t kNumLock = 0xFF7F;
constexpr xcb_keysym_t kScrollLock = 0xFF14;
constexpr xcb_keysym_t kAlt[] = {0xFFE9, 0xFFEA};
constexpr xcb_keysym_t kSuper[] = {0xFFEB, 0xFFEC};

constexpr int kFirstFree = 3;  // Mod1: before it are Shift, Lock and Control, which are fixed
constexpr int kModifiers = 8;

constexpr std::uint16_t bit(int modifier) {
  return static_cast<std::uint16_t>(1U << modifier);
}

// The keys of the keyboard and their symbols, all layouts and levels together.
class Symbols {
 public:
  Symbols(xcb_keycode_t first, const xcb_get_keyboard_mapping_reply_t* map) : first_(first) {
    if (map == nullptr) return;
    perKey_ = map->keysyms_per_keycode;
    all_ = {xcb_get_keyboard_mapping_keysyms(map),
            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(map))};
  }

  bool hasAnyOf(xcb_keycode_t code, std::span<const xcb_keysym_t> wanted) const {
    if (code < first_) return false;
    const std::size_t start = static_cast<std::size_t>(code - first_) * perKey_;
    if (start + perKey_ > all_.size()) return false;
    const auto key = all_.subspan(start, perKey_);
    return std::find_first_of(key.begin(), key.end(), wanted.begin(), wanted.end()) != key.end();
  }

 private:
  xcb_keycode_t first_;
  std::size_t perKey_ = 0;
  std::span<const xcb_keysym_t> all_;
};

// The first modifier of which a key has one of the symbols; 0 where there is none.
std::uint16_t bitOf(std::span<const xcb_keysym_t> wanted, const Symbols& symbols,
                    std::span<const xcb_keycode_t> keys) {
  const std::size_t perModifier = keys.size() / kModifiers;
  for (int modifier = kFirstFree; modifier < kModifiers; ++modifier) {
    const auto start = static_cast<std::size_t>(modifier) * perModifier;
    for (const xcb_keycode_t code : keys.subspan(start, perModifier)) {
      if (code != 0 && symbols.hasAnyOf(code, wanted)) return bit(modifier);
    }
  }
  return 0;
}

}  // namespace

XModifiers XModifiers::read(XConnection& connection) {
  XModifiers result;
  if (!connection.isAlive()) return result;
  xcb_connection_t* const xcb = connection.get();
  const xcb_setup_t* const setup = xcb_get_setup(xcb);
  const xcb_keycode_t first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
  const auto askModifiers = xcb_get_modifier_mapping(xcb);
  const auto askSymbols = xcb_get_keyboard_mapping(xcb, first, count);
  const auto modifiers = connection.reply(xcb_get_modifier_mapping_reply, askModifiers);
  const auto map = connection.reply(xcb_get_keyboard_mapping_reply, askSymbols);
  if (!modifiers) return result;

  const Symbols symbols(first, map.get());
  const std::span<const xcb_keycode_t> keys(
      xcb_get_modifier_mapping_keycodes(modifiers.get()),
      static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers.get())));
  if (const auto super = bitOf(kSuper, symbols, keys)) result.command = super;
  if (const auto alt = bitOf(kAlt, symbols, keys)) result.option = alt;
  result.locks =
      static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | bitOf(std::span(&kNumLock, 1), symbols, keys) |
                                 bitOf(std::span(&kScrollLock, 1), symbols, keys));
  return result;
}

std::uint16_t XModifiers::fromCarbon(std::uint32_t carbonModifiers) const {
  unsigned bits = 0;
  if ((carbonModifiers & carbon::shiftKey) != 0) bits |= XCB_MOD_MASK_SHIFT;
  if ((carbonModifiers & carbon::controlKey) != 0) bits |= XCB_MOD_MASK_CONTROL;
  if ((carbonModifiers & carbon::optionKey) != 0) bits |= option;
  if ((carbonModifiers & carbon::cmdKey) != 0) bits |= command;
  return static_cast<std::uint16_t>(bits);
}

std::vector<std::uint16_t> XModifiers::withEveryLock(std::uint16_t modifiers) const {
  const unsigned free = locks & ~static_cast<unsigned>(modifiers);
  std::vector<std::uint16_t> result;
  unsigned subset = free;
  while (true) {
    result.push_back(static_cast<std::uint16_t>(modifiers | subset));
    if (subset == 0) return result;
    subset = (subset - 1) & free;
  }
}

}  // namespace horalo
