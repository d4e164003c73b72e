#include "hotkey/modifier_flags.h"

#include <string_view>

#include "hotkey/carbon_modifiers.h"

namespace horalo {
namespace {

struct Row {
  ModifierFlags flag;
  std::uint32_t carbonFlag;
  std::string_view glyph;
};

// In the order in which they are shown.
constexpr Row kRows[] = {
    {ModifierFlags::control, carbon::controlKey, "⌃"},
    {ModifierFlags::option, carbon::optionKey, "⌥"},
    {ModifierFlags::shift, carbon::shiftKey, "⇧"},
    {ModifierFlags::command, carbon::cmdKey, "⌘"},
};

}  // namespace

ModifierFlags ModifierFlags::fromCarbonFlags(std::uint32_t carbonFlags) {
  ModifierFlags flags;
  for (const Row& row : kRows) {
    if ((carbonFlags & row.carbonFlag) != 0) flags = flags | row.flag;
  }
  return flags;
}

std::uint32_t ModifierFlags::carbonFlags() const {
  std::uint32_t flags = 0;
  for (const Row& row : kRows) {
    if (contains(row.flag)) flags |= row.carbonFlag;
  }
  return flags;
}

std::string ModifierFlags::description() const {
  std::string glyphs;
  for (const Row& row : kRows) {
    if (contains(row.flag)) glyphs += row.glyph;
  }
  return glyphs;
}

}  // namespace horalo
