#include <QAbstractEventDispatcher>

#include "hotkey/key.h"
#include "tests/platform/x11_hotkey_fixture.h"

namespace horalo {
namespace {

using X11HotKeyBackendTest = X11HotKeyFixture;

TEST_F(X11HotKeyBackendTest, firesAndTellsSo) {
  EXPECT_EQ(backend_->status().backend, "x11");
  EXPECT_FALSE(backend_->status().active);
  EXPECT_EQ(backend_->status().reason, "") << "none was asked for";
  EXPECT_EQ(backend_->eventTime(), 0U);
  EXPECT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_TRUE(backend_->status().active);
  EXPECT_EQ(backend_->status().reason, "");
  EXPECT_TRUE(fires());
  const std::uint32_t first = backend_->eventTime();
  EXPECT_GT(first, 0U);
  EXPECT_TRUE(fires());
  EXPECT_GE(backend_->eventTime(), first);
  for (const xcb_keycode_t key : player_->takeSeen().keys) EXPECT_NE(key, x_key::e);
}

TEST_F(X11HotKeyBackendTest, locksDoNotMatter) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  int states = 0;
  for (const Keys& locks :
       {Keys{}, Keys{x_key::capsLock}, Keys{x_key::numLock}, Keys{x_key::capsLock, x_key::numLock},
        Keys{x_key::scrollLock, x_key::capsLock, x_key::numLock}}) {
    for (const xcb_keycode_t lock : locks) player_->chord({lock});
    const std::uint16_t on = player_->modifiers();
    EXPECT_EQ(on == 0, locks.empty());
    EXPECT_TRUE(fires()) << "locks " << on;
    for (const xcb_keycode_t lock : locks) player_->chord({lock});
    ASSERT_EQ(player_->modifiers(), 0);
    ++states;
  }
  EXPECT_EQ(states, 5);
}

TEST_F(X11HotKeyBackendTest, scrollLockDoesNotMatterWhereItIsAModifier) {
  changeMap(QStringLiteral("add mod3 = Scroll_Lock"));
  backend_ = nullptr;
  backend_ = std::make_unique<X11HotKeyBackend>(kShortWaits);
  backend_->setHandler([this](std::uint32_t, HotKeyEventKind) { log_ += '!'; });
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down({x_key::scrollLock});  // held it is down for sure, whatever the map makes of a tap
  ASSERT_EQ(player_->modifiers(), XCB_MOD_MASK_3);
  player_->chord(kShortcut);
  player_->up({x_key::scrollLock});
  EXPECT_TRUE(waitForLog("!!"));
}

TEST_F(X11HotKeyBackendTest, everyModifierCounts) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  ASSERT_TRUE(backend_->registerHotKey(2, kKeyE, carbon::controlKey | carbon::optionKey));
  for (const Keys& keys :
       {Keys{x_key::e}, Keys{x_key::shift, x_key::e}, Keys{x_key::super, x_key::e},
        Keys{x_key::control, x_key::shift, x_key::super, x_key::e},
        Keys{x_key::alt, x_key::shift, x_key::super, x_key::e},
        Keys{x_key::shift, x_key::super, x_key::d}}) {
    player_->chord(keys);
  }
  expectSilence();
  player_->chord({x_key::alt, x_key::control, x_key::e});
  EXPECT_TRUE(waitForLog("+2-2")) << log_;
}

TEST_F(X11HotKeyBackendTest, thePositionIsTheSameInEveryLayout) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  int layouts = 0;
  for (const char* layout : {"de", "ru", "us(dvorak)", "fr", "us,ru", "us"}) {
    setLayout(QString::fromLatin1(layout));
    EXPECT_TRUE(fires()) << layout;
    EXPECT_TRUE(backend_->status().active) << layout;
    ++layouts;
  }
  EXPECT_EQ(layouts, 6);
}

TEST_F(X11HotKeyBackendTest, startedInAnotherLayoutThePositionIsTheSame) {
  for (const char* layout : {"ru", "us(dvorak)"}) {
    setLayout(QString::fromLatin1(layout));
    X11HotKeyBackend other(kShortWaits);
    bool fired = false;
    other.setHandler([&](std::uint32_t, HotKeyEventKind) { fired = true; });
    ASSERT_TRUE(other.registerHotKey(1, kKeyE, kShiftCommand));
    player_->chord(kShortcut);
    EXPECT_TRUE(waitUntil([&] { return fired; })) << layout;
  }
}

TEST_F(X11HotKeyBackendTest, followsModifiersThatMove) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  changeMap(QStringLiteral("remove mod4 = Super_L Super_R"));
  changeMap(QStringLiteral("add mod3 = Super_L"));
  EXPECT_TRUE(waitUntil([&] {
    if (isFree(x_key::e, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_3)) return false;
    return isWhollyFree(x_key::e, kShiftSuper);
  })) << "it did not move with the key";
  EXPECT_TRUE(fires());
}

TEST_F(X11HotKeyBackendTest, twoOfTheSameAreIndependent) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  ASSERT_TRUE(backend_->registerHotKey(2, kKeyE, kShiftCommand));
  backend_->unregisterHotKey(1);
  EXPECT_TRUE(fires(2));
}

TEST_F(X11HotKeyBackendTest, aKeyOfTwoTraditionsFiresOnBoth) {
  ASSERT_TRUE(backend_->registerHotKey(1, Key(Key::f13).carbonKeyCode(), carbon::controlKey));
  constexpr xcb_keycode_t f13 = 191;
  constexpr xcb_keycode_t printScreen = 107;
  player_->chord({x_key::control, f13});
  EXPECT_TRUE(waitForLog("+1-1"));
  player_->chord({x_key::control, printScreen});
  EXPECT_TRUE(waitForLog("+1-1+1-1"));
}

TEST_F(X11HotKeyBackendTest, aPositionThatNoKeyHasIsToldAndNotTriedAgain) {
  EXPECT_FALSE(backend_->registerHotKey(1, Key(Key::function).carbonKeyCode(), kShiftCommand));
  EXPECT_FALSE(backend_->status().active);
  EXPECT_EQ(backend_->status().reason, "no key of a keyboard here has this position");
}

TEST_F(X11HotKeyBackendTest, itsEndFreesTheKeys) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_FALSE(isFree(x_key::e, kShiftSuper));
  backend_.reset();
  EXPECT_TRUE(waitUntil([&] { return isWhollyFree(x_key::e, kShiftSuper); }));
}

TEST_F(X11HotKeyBackendTest, restsWhileNothingHappens) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_TRUE(fires());
  int wakeUps = 0;
  QObject context;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context,
                   [&] { ++wakeUps; });
  const auto isQuiet = [&] {
    wakeUps = 0;
    player_->chord({x_key::a});  // what is typed elsewhere wakes nobody
    player_->chord({x_key::shift, x_key::b});
    QEventLoop loop;
    QTimer::singleShot(200, &loop, &QEventLoop::quit);
    loop.exec();
    return wakeUps <= 2;  // the timer of this test
  };
  bool quiet = false;
  for (int round = 0; round < 20 && !quiet; ++round) quiet = isQuiet();
  EXPECT_TRUE(quiet) << wakeUps << " wake-ups in the last 200 ms";
}

TEST_F(X11HotKeyBackendTest, theServersEndIsNotOurs) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  display_.server().kill();
  EXPECT_TRUE(waitUntil([&] { return !backend_->status().active; }));
  EXPECT_EQ(backend_->status().reason, "there is no connection to an X server");
  EXPECT_FALSE(backend_->registerHotKey(2, kKeyK, kShiftCommand));
  backend_->setMuted(true);
  backend_->setMuted(false);
  backend_->unregisterHotKey(1);
  EXPECT_EQ(log_, "");
}

TEST(X11HotKeyBackendWithoutAServerTest, saysSo) {
  qputenv("DISPLAY", ":nowhere");
  X11HotKeyBackend backend;
  EXPECT_FALSE(backend.registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_FALSE(backend.status().active);
  EXPECT_EQ(backend.status().reason, "there is no connection to an X server");
  backend.setMuted(true);
  backend.setMuted(false);
  backend.unregisterHotKey(1);
}

}  // namespace
}  // namespace horalo
