#include "hotkey/key.h"

#include <QString>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace horalo {
namespace {

struct Row {
  Key key;
  std::uint32_t carbonKeyCode;
  std::string_view description;
  // What fromString() accepts, compared with the lower-cased text as it stands here: the few
  // spellings with a capital can never match, and are to stay so.
  std::array<std::string_view, 5> spellings;
};

// clang-format off
constexpr auto kRows = std::to_array<Row>({
    {Key::a, 0, "A", {"a"}},
    {Key::b, 11, "B", {"b"}},
    {Key::c, 8, "C", {"c"}},
    {Key::d, 2, "D", {"d"}},
    {Key::e, 14, "E", {"e"}},
    {Key::f, 3, "F", {"f"}},
    {Key::g, 5, "G", {"g"}},
    {Key::h, 4, "H", {"h"}},
    {Key::i, 34, "I", {"i"}},
    {Key::j, 38, "J", {"j"}},
    {Key::k, 40, "K", {"k"}},
    {Key::l, 37, "L", {"l"}},
    {Key::m, 46, "M", {"m"}},
    {Key::n, 45, "N", {"n"}},
    {Key::o, 31, "O", {"o"}},
    {Key::p, 35, "P", {"p"}},
    {Key::q, 12, "Q", {"q"}},
    {Key::r, 15, "R", {"r"}},
    {Key::s, 1, "S", {"s"}},
    {Key::t, 17, "T", {"t"}},
    {Key::u, 32, "U", {"u"}},
    {Key::v, 9, "V", {"v"}},
    {Key::w, 13, "W", {"w"}},
    {Key::x, 7, "X", {"x"}},
    {Key::y, 16, "Y", {"y"}},
    {Key::z, 6, "Z", {"z"}},
    {Key::zero, 29, "0", {"zero", "0"}},
    {Key::one, 18, "1", {"one", "1"}},
    {Key::two, 19, "2", {"two", "2"}},
    {Key::three, 20, "3", {"three", "3"}},
    {Key::four, 21, "4", {"four", "4"}},
    {Key::five, 23, "5", {"five", "5"}},
    {Key::six, 22, "6", {"six", "6"}},
    {Key::seven, 26, "7", {"seven", "7"}},
    {Key::eight, 28, "8", {"eight", "8"}},
    {Key::nine, 25, "9", {"nine", "9"}},
    {Key::period, 47, ".", {"period", "."}},
    {Key::quote, 39, "\"", {"quote", "\""}},
    {Key::rightBracket, 30, "]", {"rightBracket", "]"}},
    {Key::semicolon, 41, ";", {"semicolon", ";"}},
    {Key::slash, 44, "/", {"slash", "/"}},
    {Key::backslash, 42, "\\", {"backslash", "\\"}},
    {Key::comma, 43, ",", {"comma", ","}},
    {Key::equal, 24, "=", {"equal", "="}},
    {Key::grave, 50, "`", {"grave", "`", "ˋ", "｀"}},
    {Key::leftBracket, 33, "[", {"leftBracket", "["}},
    {Key::minus, 27, "-", {"minus", "-"}},
    {Key::section, 10, "§", {"§"}},
    {Key::space, 49, "␣", {"space", " ", "␣"}},
    {Key::tab, 48, "⇥", {"tab", "\t", "⇥"}},
    {Key::return_, 36, "↩\uFE0E", {"return", "\r", "↩\uFE0E", "⏎", "⮐"}},
    {Key::command, 55, "⌘", {"command", "⌘", "\uF8FF"}},
    {Key::rightCommand, 54, "⌘", {"rightcommand"}},
    {Key::option, 58, "⌥", {"option", "⌥"}},
    {Key::rightOption, 61, "⌥", {"rightoption"}},
    {Key::control, 59, "⌃", {"control", "⌃"}},
    {Key::rightControl, 62, "⌃", {"rightcontrol"}},
    {Key::shift, 56, "⇧", {"shift", "⇧"}},
    {Key::rightShift, 60, "⇧", {"rightshift"}},
    {Key::function, 63, "fn", {"function", "fn"}},
    {Key::capsLock, 57, "⇪", {"capslock", "⇪"}},
    {Key::pageUp, 116, "⇞", {"pageup", "⇞"}},
    {Key::pageDown, 121, "⇟", {"pagedown", "⇟"}},
    {Key::home, 115, "↖", {"home", "↖"}},
    {Key::end, 119, "↘", {"end", "↘"}},
    {Key::upArrow, 126, "↑", {"uparrow", "↑"}},
    {Key::rightArrow, 124, "→", {"rightarrow", "→"}},
    {Key::downArrow, 125, "↓", {"downarrow", "↓"}},
    {Key::leftArrow, 123, "←", {"leftarrow", "←"}},
    {Key::f1, 122, "\uF860F1", {"f1", "\uF860F1"}},
    {Key::f2, 120, "\uF860F2", {"f2", "\uF860F2"}},
    {Key::f3, 99, "\uF860F3", {"f3", "\uF860F3"}},
    {Key::f4, 118, "\uF860F4", {"f4", "\uF860F4"}},
    {Key::f5, 96, "\uF860F5", {"f5", "\uF860F5"}},
    {Key::f6, 97, "\uF860F6", {"f6", "\uF860F6"}},
    {Key::f7, 98, "\uF860F7", {"f7", "\uF860F7"}},
    {Key::f8, 100, "\uF860F8", {"f8", "\uF860F8"}},
    {Key::f9, 101, "\uF860F9", {"f9", "\uF860F9"}},
    {Key::f10, 109, "\uF861F10", {"f10", "\uF861F10"}},
    {Key::f11, 103, "\uF861F11", {"f11", "\uF861F11"}},
    {Key::f12, 111, "\uF861F12", {"f12", "\uF861F12"}},
    {Key::f13, 105, "\uF861F13", {"f13", "\uF861F13"}},
    {Key::f14, 107, "\uF861F14", {"f14", "\uF861F14"}},
    {Key::f15, 113, "\uF861F15", {"f15", "\uF861F15"}},
    {Key::f16, 106, "\uF861F16", {"f16", "\uF861F16"}},
    {Key::f17, 64, "\uF861F17", {"f17", "\uF861F17"}},
    {Key::f18, 79, "\uF861F18", {"f18", "\uF861F18"}},
    {Key::f19, 80, "\uF861F19", {"f19", "\uF861F19"}},
    {Key::f20, 90, "\uF861F20", {"f20", "\uF861F20"}},
    {Key::keypad0, 82, "0", {"keypad0"}},
    {Key::keypad1, 83, "1", {"keypad1"}},
    {Key::keypad2, 84, "2", {"keypad2"}},
    {Key::keypad3, 85, "3", {"keypad3"}},
    {Key::keypad4, 86, "4", {"keypad4"}},
    {Key::keypad5, 87, "5", {"keypad5"}},
    {Key::keypad6, 88, "6", {"keypad6"}},
    {Key::keypad7, 89, "7", {"keypad7"}},
    {Key::keypad8, 91, "8", {"keypad8"}},
    {Key::keypad9, 92, "9", {"keypad9"}},
    {Key::keypadClear, 71, "⌧", {"keypadclear", "⌧"}},
    {Key::keypadDecimal, 65, ".", {"keypaddecimal"}},
    {Key::keypadDivide, 75, "/", {"keypaddivide"}},
    {Key::keypadEnter, 76, "↩\uFE0E", {"keypadenter"}},
    {Key::keypadEquals, 81, "=", {"keypadequals"}},
    {Key::keypadMinus, 78, "-", {"keypadminus"}},
    {Key::keypadMultiply, 67, "𝗑", {"keypadmultiply"}},
    {Key::keypadPlus, 69, "+", {"keypadplus"}},
    {Key::escape, 53, "⎋", {"escape", "⎋"}},
    {Key::delete_, 51, "⌫", {"delete", "⌫"}},
    {Key::forwardDelete, 117, "⌦", {"forwarddelete", "⌦"}},
    {Key::help, 114, "?\u20DD", {"help", "?\u20DD"}},
    {Key::volumeUp, 72, "🔊", {"volumeup", "🔊"}},
    {Key::volumeDown, 73, "🔉", {"volumedown", "🔉"}},
    {Key::mute, 74, "🔇", {"mute", "🔇"}},
});
// clang-format on

constexpr bool rowsAreInOrder() {
  for (std::size_t index = 0; index < kRows.size(); ++index) {
    if (kRows[index].key.which() != index) return false;
  }
  return true;
}
static_assert(rowsAreInOrder());

constexpr auto kKeys = []<std::size_t... index>(std::index_sequence<index...>) {
  return std::array{kRows[index].key...};
}
(std::make_index_sequence<kRows.size()>());

}  // namespace

std::optional<Key> Key::fromCarbonKeyCode(std::uint32_t code) {
  for (const Row& row : kRows) {
    if (row.carbonKeyCode == code) return row.key;
  }
  return std::nullopt;
}

std::optional<Key> Key::fromString(std::string_view text) {
  const auto size = static_cast<qsizetype>(text.size());
  const std::string lowered = QString::fromUtf8(text.data(), size).toLower().toStdString();
  if (lowered.empty()) return std::nullopt;
  for (const Row& row : kRows) {
    for (const std::string_view spelling : row.spellings) {
      if (spelling == lowered) return row.key;
    }
  }
  return std::nullopt;
}

std::span<const Key> Key::all() {
  return kKeys;
}

bool Key::isModifier() const {
  switch (which_) {
    case command:
    case rightCommand:
    case shift:
    case rightShift:
    case option:
    case rightOption:
    case control:
    case rightControl:
      return true;
    default:
      return false;
  }
}

std::uint32_t Key::carbonKeyCode() const {
  return kRows[which_].carbonKeyCode;
}

std::string_view Key::description() const {
  return kRows[which_].description;
}

}  // namespace horalo
