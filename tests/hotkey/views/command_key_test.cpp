#include "hotkey/views/command_key.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

#include "hotkey/key.h"

namespace horalo {
namespace {

constexpr std::uint32_t kNowhere = 1;  // a scan code of no key

// A desktop whose scan codes are the virtual key codes and a hundred.
std::optional<std::uint32_t> keyCodeOf(std::uint32_t scanCode) {
  if (scanCode == kNowhere) return std::nullopt;
  return scanCode - 100;
}

Qt::Key keyFor(int written, std::uint32_t scanCode, const KeyCodeOf& codes = keyCodeOf) {
  return commandKey(QKeyEvent(QEvent::KeyPress, written, Qt::MetaModifier, scanCode, 0, 0), codes);
}

std::uint32_t scanCodeOf(Key key) {
  return key.carbonKeyCode() + 100;
}

TEST(CommandKey, IsWhatALatinLayoutWritesWhereverThatIs) {
  EXPECT_EQ(keyFor(Qt::Key_W, scanCodeOf(Key::comma)), Qt::Key_W);                        // Dvorak
  EXPECT_EQ(keyFor(Qt::Key_Comma, scanCodeOf(Key::m)), Qt::Key_Comma);                    // French
  EXPECT_EQ(keyFor(Qt::Key_Odiaeresis, scanCodeOf(Key::semicolon)), Qt::Key_Odiaeresis);  // German
}

TEST(CommandKey, IsThePlaceWhereTheLayoutWritesAnotherScript) {
  constexpr int be = 0x411;     // Cyrillic
  constexpr int waw = 0x648;    // Arabic
  constexpr int tav = 0x5EA;    // Hebrew
  constexpr int alpha = 0x391;  // Greek
  EXPECT_EQ(keyFor(be, scanCodeOf(Key::comma)), Qt::Key_Comma);
  EXPECT_EQ(keyFor(waw, scanCodeOf(Key::comma)), Qt::Key_Comma);
  EXPECT_EQ(keyFor(tav, scanCodeOf(Key::comma)), Qt::Key_Comma);
  EXPECT_EQ(keyFor(alpha, scanCodeOf(Key::a)), Qt::Key_A);
}

TEST(CommandKey, StaysWhatItIsWhereThePlaceSaysNothing) {
  constexpr int be = 0x411;
  EXPECT_EQ(keyFor(be, kNowhere), be);
  EXPECT_EQ(keyFor(be, scanCodeOf(Key::comma), {}), be);
  EXPECT_EQ(keyFor(be, scanCodeOf(Key::f5)), be);
  EXPECT_EQ(keyFor(Qt::Key_Down, scanCodeOf(Key::comma)), Qt::Key_Down);
}

}  // namespace
}  // namespace horalo
