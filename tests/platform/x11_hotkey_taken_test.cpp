#include "tests/platform/x11_hotkey_fixture.h"

namespace horalo {
namespace {

using X11HotKeyTakenTest = X11HotKeyFixture;

TEST_F(X11HotKeyTakenTest, aTakenOneIsToldAndHadOnceItIsFree) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_FALSE(backend_->status().active);
  EXPECT_EQ(backend_->status().reason, "another program has this shortcut");
  EXPECT_TRUE(becomesFree(x_key::e, kShiftSuper | kNumLock)) << "half a shortcut is kept";
  player_->chord(kShortcut);
  expectSilence();
  player_->ungrabKey(x_key::e, kShiftSuper);
  EXPECT_TRUE(waitUntil([&] { return backend_->status().active; }));
  EXPECT_EQ(backend_->status().reason, "");
  EXPECT_TRUE(fires());
}

TEST_F(X11HotKeyTakenTest, oneLockTakenIsTaken) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper | kNumLock));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_TRUE(becomesFree(x_key::e, kShiftSuper));
}

TEST_F(X11HotKeyTakenTest, aChangedMapIsAReasonToTryAgain) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  X11HotKeyBackend patient({.retry = 3600, .typing = kShortWaits.typing});
  bool fired = false;
  patient.setHandler([&](std::uint32_t, HotKeyEventKind) { fired = true; });
  EXPECT_FALSE(patient.registerHotKey(7, kKeyE, kShiftCommand));
  player_->ungrabKey(x_key::e, kShiftSuper);
  EXPECT_FALSE(patient.status().active);
  setLayout(QStringLiteral("de"));
  EXPECT_TRUE(waitUntil([&] { return patient.status().active; }));
  player_->chord(kShortcut);
  EXPECT_TRUE(waitUntil([&] { return fired; }));
}

TEST_F(X11HotKeyTakenTest, givenUpWhileTakenItIsNotTakenLater) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  backend_->unregisterHotKey(1);
  EXPECT_EQ(backend_->status().reason, "");
  player_->ungrabKey(x_key::e, kShiftSuper);
  ASSERT_TRUE(player_->grabKey(x_key::d, kShiftSuper));
  EXPECT_FALSE(backend_->registerHotKey(2, 2, kShiftCommand));
  player_->ungrabKey(x_key::d, kShiftSuper);
  EXPECT_TRUE(waitUntil([&] { return backend_->status().active; }));
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper));
}

TEST_F(X11HotKeyTakenTest, mutedTheKeysReachTheWindow) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  backend_->setMuted(true);
  EXPECT_FALSE(backend_->status().active);
  EXPECT_EQ(backend_->status().reason, "a new shortcut is being recorded");
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper));
  player_->takeSeen();
  player_->chord(kShortcut);
  EXPECT_EQ(player_->takeSeen().keys, kShortcut);
  backend_->setMuted(false);
  EXPECT_TRUE(backend_->status().active);
  EXPECT_TRUE(fires());
}

TEST_F(X11HotKeyTakenTest, theKeysThatWereRecordedDoNotFireBeforeTheyWereUp) {
  setRepeat(QStringLiteral("rate 100 100"));
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyK, kShiftCommand));
  backend_->setMuted(true);
  player_->down(kShortcut);
  backend_->unregisterHotKey(1);
  EXPECT_TRUE(backend_->registerHotKey(2, kKeyE, kShiftCommand));
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper)) << "it is still muted";
  backend_->setMuted(false);
  player_->takeSeen();
  int grabs = 0;
  EXPECT_TRUE(waitUntil([&] { return (grabs += player_->takeSeen().grabs) >= 10; }))
      << "the key did not repeat";
  EXPECT_EQ(log_, "");
  player_->up({x_key::e, x_key::super, x_key::shift});
  EXPECT_TRUE(waitForLog("-2"));
  log_.clear();
  EXPECT_TRUE(fires(2));
}

TEST_F(X11HotKeyTakenTest, aTakenOneStaysTakenWhileMuted) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  backend_->setMuted(true);
  player_->ungrabKey(x_key::e, kShiftSuper);
  setLayout(QStringLiteral("de"));
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper));
  backend_->setMuted(false);
  EXPECT_TRUE(backend_->status().active);
}

TEST_F(X11HotKeyTakenTest, twoHundredRecordingsLeaveOneGrab) {
  std::uint32_t number = 0;
  for (int round = 0; round < 100; ++round) {
    for (const std::uint32_t keyCode : {kKeyK, kKeyE}) {
      if (number > 0) backend_->unregisterHotKey(number);
      ASSERT_TRUE(backend_->registerHotKey(++number, keyCode, kShiftCommand));
    }
  }
  EXPECT_EQ(number, 200U);
  EXPECT_TRUE(becomesWhollyFree(x_key::k, kShiftSuper));
  EXPECT_FALSE(isFree(x_key::e, kShiftSuper));
  EXPECT_TRUE(fires(200));
  backend_->unregisterHotKey(200);
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper));
  player_->chord(kShortcut);
  expectSilence();
}

}  // namespace
}  // namespace horalo
