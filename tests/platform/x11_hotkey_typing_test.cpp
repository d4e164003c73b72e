#include "tests/platform/x11_hotkey_fixture.h"

namespace horalo {
namespace {

using X11HotKeyTypingTest = X11HotKeyFixture;

TEST_F(X11HotKeyTypingTest, aHeldKeyFiresOnce) {
  setRepeat(QStringLiteral("rate 100 100"));
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down(kShortcut);
  int grabs = 0;
  EXPECT_TRUE(waitUntil([&] { return (grabs += player_->takeSeen().grabs) >= 20; }))
      << "the key did not repeat";
  EXPECT_EQ(log_, "+1");
  player_->up({x_key::e});
  EXPECT_TRUE(waitForLog("+1-1"));
  player_->down({x_key::e});
  EXPECT_TRUE(waitForLog("+1-1+1"));
  player_->up(kShortcut);
  EXPECT_TRUE(waitForLog("+1-1+1-1"));
}

TEST_F(X11HotKeyTypingTest, quickPressesAreOneEach) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down({x_key::shift, x_key::super});
  std::string expected;
  for (int press = 0; press < 10; ++press) {
    player_->chord({x_key::e});  // all of them before the event loop gets to see one
    expected += "+1-1";
  }
  player_->up({x_key::shift, x_key::super});
  EXPECT_TRUE(waitForLog(expected)) << log_;
  log_.clear();
  expectSilence();
}

TEST_F(X11HotKeyTypingTest, quickPressesAreOneEachWhileTheProgramIsAwake) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down({x_key::shift, x_key::super});
  std::string expected;
  for (int press = 0; press < 50; ++press) {
    player_->down({x_key::e});
    ASSERT_TRUE(waitForLog(expected += "+1") && keyboardIsGivenBack()) << log_;
    player_->up({x_key::e});
    player_->down({x_key::e});
    ASSERT_TRUE(waitForLog(expected += "-1+1") && keyboardIsGivenBack()) << log_;
    player_->up({x_key::e});
    ASSERT_TRUE(waitForLog(expected += "-1")) << log_;
  }
}

TEST_F(X11HotKeyTypingTest, whatIsTypedNextReachesTheWindow) {
  setRepeat(QStringLiteral("off"));
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down(kShortcut);
  ASSERT_TRUE(waitForLog("+1"));
  ASSERT_TRUE(keyboardIsGivenBack());
  player_->up({x_key::super, x_key::shift});  // the key itself is still down
  player_->chord({x_key::a});
  player_->chord({x_key::b});
  player_->up({x_key::e});
  player_->chord({x_key::d});
  EXPECT_EQ(player_->takeSeen().keys, (Keys{x_key::a, x_key::b, x_key::d}));
  EXPECT_TRUE(waitForLog("+1-1"));
}

TEST_F(X11HotKeyTypingTest, whatIsTypedNextWaitsUntilItMayGo) {
  constexpr double kForever = 3600;
  X11HotKeyBackend patient({.typing = kForever});
  std::string told;
  patient.setHandler([&](std::uint32_t, HotKeyEventKind kind) {
    told += kind == HotKeyEventKind::pressed ? '+' : '-';
  });
  ASSERT_TRUE(patient.registerHotKey(1, kKeyE, kShiftCommand));
  player_->chord(kShortcut);
  ASSERT_TRUE(waitUntil([&] { return told == "+"; }));
  player_->takeSeen();
  player_->chord({x_key::a});
  EXPECT_EQ(player_->takeSeen().keys, Keys{});
  EXPECT_EQ(told, "+");
  patient.releaseTyping();
  Keys seen;
  EXPECT_TRUE(waitUntil([&] {
    for (const xcb_keycode_t key : player_->takeSeen().keys) seen.push_back(key);
    return !seen.empty();
  }));
  EXPECT_EQ(seen, Keys{x_key::a});
  EXPECT_TRUE(waitUntil([&] { return told == "+-"; }));
}

TEST_F(X11HotKeyTypingTest, aHandlerMayReplaceTheShortcut) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  told_ = [this] {
    if (log_ != "+1") return;
    backend_->unregisterHotKey(1);
    EXPECT_TRUE(backend_->registerHotKey(2, kKeyE, kShiftCommand));
  };
  player_->chord(kShortcut);
  player_->chord(kShortcut);
  // The key is down while the one follows the other, and its release is the second one's.
  EXPECT_TRUE(waitForLog("+1-2+2-2")) << log_;
}

TEST_F(X11HotKeyTypingTest, aKeyboardThatAnotherProgramHoldsIsSilent) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->grabKeyboard();
  player_->chord(kShortcut);
  player_->ungrabKeyboard();
  expectSilence();
  EXPECT_TRUE(fires());
}

}  // namespace
}  // namespace horalo
