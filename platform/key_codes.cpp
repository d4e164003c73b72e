#include "platform/key_codes.h"

#include <linux/input-event-codes.h>

namespace horalo {
namespace {

struct Row {
  std::uint32_t virtualKeyCode;
  std::uint32_t evdevCode;
};

// clang-format off
constexpr Row kRows[] = {
    {0, KEY_A}, {11, KEY_B}, {8, KEY_C}, {2, KEY_D}, {14, KEY_E}, {3, KEY_F}, {5, KEY_G},
    {4, KEY_H}, {34, KEY_I}, {38, KEY_J}, {40, KEY_K}, {37, KEY_L}, {46, KEY_M}, {45, KEY_N},
    {31, KEY_O}, {35, KEY_P}, {12, KEY_Q}, {15, KEY_R}, {1, KEY_S}, {17, KEY_T}, {32, KEY_U},
    {9, KEY_V}, {13, KEY_W}, {7, KEY_X}, {16, KEY_Y}, {6, KEY_Z},
    {29, KEY_0}, {18, KEY_1}, {19, KEY_2}, {20, KEY_3}, {21, KEY_4}, {23, KEY_5}, {22, KEY_6},
    {26, KEY_7}, {28, KEY_8}, {25, KEY_9},
    {47, KEY_DOT}, {39, KEY_APOSTROPHE}, {30, KEY_RIGHTBRACE}, {41, KEY_SEMICOLON},
    {44, KEY_SLASH}, {42, KEY_BACKSLASH}, {43, KEY_COMMA}, {24, KEY_EQUAL}, {50, KEY_GRAVE},
    {33, KEY_LEFTBRACE}, {27, KEY_MINUS},
    {10, KEY_102ND},  // the additional key of ISO keyboards
    {49, KEY_SPACE}, {48, KEY_TAB}, {36, KEY_ENTER},
    {55, KEY_LEFTMETA}, {54, KEY_RIGHTMETA}, {58, KEY_LEFTALT}, {61, KEY_RIGHTALT},
    {59, KEY_LEFTCTRL}, {62, KEY_RIGHTCTRL}, {56, KEY_LEFTSHIFT}, {60, KEY_RIGHTSHIFT},
    {57, KEY_CAPSLOCK},
    {116, KEY_PAGEUP}, {121, KEY_PAGEDOWN}, {115, KEY_HOME}, {119, KEY_END},
    {126, KEY_UP}, {124, KEY_RIGHT}, {125, KEY_DOWN}, {123, KEY_LEFT},
    {122, KEY_F1}, {120, KEY_F2}, {99, KEY_F3}, {118, KEY_F4}, {96, KEY_F5}, {97, KEY_F6},
    {98, KEY_F7}, {100, KEY_F8}, {101, KEY_F9}, {109, KEY_F10}, {103, KEY_F11}, {111, KEY_F12},
    {105, KEY_F13}, {105, KEY_SYSRQ},  // Print Screen
    {107, KEY_F14}, {107, KEY_SCROLLLOCK},
    {113, KEY_F15}, {113, KEY_PAUSE},
    {106, KEY_F16}, {64, KEY_F17}, {79, KEY_F18}, {80, KEY_F19}, {90, KEY_F20},
    {82, KEY_KP0}, {83, KEY_KP1}, {84, KEY_KP2}, {85, KEY_KP3}, {86, KEY_KP4}, {87, KEY_KP5},
    {88, KEY_KP6}, {89, KEY_KP7}, {91, KEY_KP8}, {92, KEY_KP9},
    {71, KEY_NUMLOCK}, {65, KEY_KPDOT}, {75, KEY_KPSLASH}, {76, KEY_KPENTER},
    {81, KEY_KPEQUAL}, {78, KEY_KPMINUS}, {67, KEY_KPASTERISK}, {69, KEY_KPPLUS},
    {53, KEY_ESC}, {51, KEY_BACKSPACE}, {117, KEY_DELETE},
    {114, KEY_INSERT}, {114, KEY_HELP},
    {72, KEY_VOLUMEUP}, {73, KEY_VOLUMEDOWN}, {74, KEY_MUTE},
};
// clang-format on

}  // namespace

std::vector<std::uint32_t> evdevCodes(std::uint32_t virtualKeyCode) {
  std::vector<std::uint32_t> codes;
  for (const Row& row : kRows) {
    if (row.virtualKeyCode == virtualKeyCode) codes.push_back(row.evdevCode);
  }
  return codes;
}

std::optional<std::uint32_t> virtualKeyCode(std::uint32_t evdevCode) {
  for (const Row& row : kRows) {
    if (row.evdevCode == evdevCode) return row.virtualKeyCode;
  }
  return std::nullopt;
}

}  // namespace horalo
