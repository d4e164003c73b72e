#include "platform/key_codes.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>

#include "hotkey/key.h"
#include "platform/none/none_hotkey_backend.h"

namespace horalo {
namespace {

TEST(KeyCodesTest, everyKeyHasItsPlaceThereAndBack) {
  int there = 0;
  std::set<std::uint32_t> places;
  for (const Key key : Key::all()) {
    const auto codes = evdevCodes(key.carbonKeyCode());
    if (key == Key(Key::function)) {
      EXPECT_TRUE(codes.empty()) << "keyboards handle it by themselves";
      continue;
    }
    ASSERT_FALSE(codes.empty()) << key.description();
    for (const std::uint32_t code : codes) {
      EXPECT_EQ(virtualKeyCode(code), key.carbonKeyCode()) << key.description();
      EXPECT_TRUE(places.insert(code).second) << code;
      EXPECT_LE(code + kXKeyCodeOffset, 255U);
    }
    ++there;
  }
  EXPECT_EQ(there, 113);
  EXPECT_EQ(places.size(), 117U) << "four of them have two";
}

TEST(KeyCodesTest, noOtherPlaceHasACode) {
  int named = 0;
  for (std::uint32_t code = 0; code < 0x300; ++code) {
    const auto keyCode = virtualKeyCode(code);
    if (!keyCode) continue;
    EXPECT_TRUE(Key::fromCarbonKeyCode(*keyCode)) << code;
    ++named;
  }
  EXPECT_EQ(named, 117);
  EXPECT_FALSE(virtualKeyCode(0));
  EXPECT_FALSE(virtualKeyCode(KEY_COMPOSE));
  EXPECT_FALSE(virtualKeyCode(0xFFFFFFFF));
  for (const std::uint32_t code : {52U, 110U, 127U, 1000U, 0xFFFFFFFFU}) {
    EXPECT_TRUE(evdevCodes(code).empty()) << code;
  }
}

TEST(KeyCodesTest, positionsAreThoseOfAUSKeyboard) {
  struct {
    Key key;
    std::uint32_t code;
  } const rows[] = {
      {Key::e, KEY_E},
      {Key::a, KEY_A},
      {Key::z, KEY_Z},
      {Key::one, KEY_1},
      {Key::zero, KEY_0},
      {Key::return_, KEY_ENTER},
      {Key::space, KEY_SPACE},
      {Key::grave, KEY_GRAVE},
      {Key::section, KEY_102ND},
      {Key::f1, KEY_F1},
      {Key::f12, KEY_F12},
      {Key::f20, KEY_F20},
      {Key::keypad7, KEY_KP7},
      {Key::keypadEnter, KEY_KPENTER},
      {Key::command, KEY_LEFTMETA},
      {Key::rightOption, KEY_RIGHTALT},
      {Key::delete_, KEY_BACKSPACE},
      {Key::forwardDelete, KEY_DELETE},
      {Key::help, KEY_INSERT},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(evdevCodes(row.key.carbonKeyCode()).front(), row.code) << row.key.description();
  }
}

TEST(NoneHotKeyBackendTest, hasNothingAndSaysWhy) {
  NoneHotKeyBackend backend("bind \"horalo toggle\" in the desktop's settings");
  backend.setHandler([](std::uint32_t, HotKeyEventKind) { FAIL(); });
  EXPECT_FALSE(backend.registerHotKey(1, 14, 0x300));
  backend.setMuted(true);
  backend.unregisterHotKey(1);
  EXPECT_EQ(backend.status().backend, "none");
  EXPECT_FALSE(backend.status().active);
  EXPECT_EQ(backend.status().reason, "bind \"horalo toggle\" in the desktop's settings");
  EXPECT_EQ(backend.eventTime(), 0U);
}

}  // namespace
}  // namespace horalo
