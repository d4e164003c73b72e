#include "app/hotkey_wiring.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/fakes/fake_hotkey_backend.h"

namespace horalo {
namespace {

class HotkeyWiringTest : public testing::Test {
 protected:
  using Registrations = std::map<std::uint32_t, KeyCombo>;

  void press() {
    for (const auto& entry : Registrations(backend_.registered)) {
      backend_.tell(entry.first, HotKeyEventKind::pressed);
      backend_.tell(entry.first, HotKeyEventKind::released);
    }
  }

  FakeHotKeyBackend backend_;
  HotKeysController controller_{backend_};
  int presses_ = 0;
  HotkeyWiring wiring_{controller_, HotkeyConfiguration(), [this] { ++presses_; }};
};

TEST_F(HotkeyWiringTest, PressingTheShortcutActsOnceAndReleasingItDoesNothing) {
  EXPECT_TRUE(backend_.registered.empty());
  wiring_.setupHotKey();
  EXPECT_EQ(backend_.registered, (Registrations{{1, KeyCombo(14, 0x300)}}));
  press();
  EXPECT_EQ(presses_, 1);
}

TEST_F(HotkeyWiringTest, AnotherShortcutTakesThePlaceOfTheFirst) {
  wiring_.setupHotKey();
  wiring_.setConfiguration({.keyCode = 49, .modifiers = 0x0c0000});
  wiring_.setupHotKey();
  EXPECT_EQ(backend_.registered, (Registrations{{2, KeyCombo(49, 0x1800)}}));
  EXPECT_EQ(backend_.unregisterCalls, 1);
  press();
  EXPECT_EQ(presses_, 1);
}

TEST_F(HotkeyWiringTest, TheSameShortcutIsRegisteredAnewUnderTheNextNumber) {
  for (std::uint32_t number = 1; number <= 1000; ++number) {
    wiring_.setupHotKey();
    ASSERT_EQ(backend_.registered, (Registrations{{number, KeyCombo(14, 0x300)}}));
  }
}

TEST_F(HotkeyWiringTest, ACodeWithoutAKeyLeavesNoShortcut) {
  wiring_.setupHotKey();
  wiring_.setConfiguration({.keyCode = 52, .modifiers = 0x120000});
  wiring_.setupHotKey();
  EXPECT_TRUE(backend_.registered.empty());
  EXPECT_TRUE(controller_.hotKeys().empty());
}

TEST_F(HotkeyWiringTest, OnlyTheFourModifiersCount) {
  wiring_.setConfiguration({.keyCode = 14, .modifiers = 0xffffffff});
  wiring_.setupHotKey();
  EXPECT_EQ(backend_.registered, (Registrations{{1, KeyCombo(14, 0x1b00)}}));
}

}  // namespace
}  // namespace horalo
