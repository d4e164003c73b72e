#include "platform/x11/x11_hotkey_backend.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QStringList>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hotkey/key.h"
#include "tests/x11/keyboard_player.h"
#include "tests/x11/virtual_display.h"

namespace horalo {
namespace {

using x_key::shift;
using Keys = std::vector<xcb_keycode_t>;

constexpr std::uint32_t kKeyE = 14;
constexpr std::uint32_t kKeyK = 40;
constexpr std::uint32_t kShiftCommand = carbon::shiftKey | carbon::cmdKey;
constexpr std::uint16_t kShiftSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
constexpr std::uint16_t kCapsLock = XCB_MOD_MASK_LOCK;
constexpr std::uint16_t kNumLock = XCB_MOD_MASK_2;
constexpr double kSoon = 0.02;  // seconds until a shortcut that was taken is tried again

const Keys kShortcut = {shift, x_key::super, x_key::e};

class X11HotKeyBackendTest : public testing::Test {
 protected:
  X11HotKeyBackendTest() {
    EXPECT_TRUE(display_.isRunning());
    qputenv("DISPLAY", display_.name().toUtf8());
    player_ = std::make_unique<KeyboardPlayer>(display_.name());
    backend_ = std::make_unique<X11HotKeyBackend>(kSoon);
    backend_->setHandler([this](std::uint32_t number, HotKeyEventKind kind) {
      log_ += (kind == HotKeyEventKind::pressed ? '+' : '-') + std::to_string(number);
      if (told_) told_();
    });
  }

  void run(const QString& program, const QStringList& arguments) {
    EXPECT_EQ(ChildProgram(program, arguments, display_.name()).waitForEnd(), 0)
        << program.toStdString();
  }
  void setRepeat(const QString& howSo) {
    run(QStringLiteral("xset"), (QStringLiteral("r ") + howSo).split(QLatin1Char(' ')));
  }
  void setLayout(const QString& layout) {
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), layout});
  }
  void changeMap(const QString& expression) {
    run(QStringLiteral("xmodmap"), {QStringLiteral("-e"), expression});
  }

  bool waitForLog(const std::string& log) {
    return waitUntil([&] { return log_ == log; });
  }
  // Presses the shortcut and waits for what it tells; the log is then empty again.
  bool fires(std::uint32_t number = 1) {
    player_->chord(kShortcut);
    const std::string text = std::to_string(number);
    const bool told = waitForLog("+" + text + "-" + text);
    EXPECT_TRUE(told) << log_;
    log_.clear();
    return told;
  }
  // After a press that was told: the grab that came with it has ended.
  bool keyboardIsGivenBack() {
    int ungrabs = 0;
    return waitUntil([&] { return (ungrabs += player_->takeSeen().ungrabs) > 0; });
  }
  // Nothing was told of what happened so far: what the backend is told next comes after it.
  void expectSilence() {
    EXPECT_TRUE(backend_->registerHotKey(1000, kKeyK, carbon::controlKey));
    player_->chord({x_key::control, x_key::k});
    EXPECT_TRUE(waitForLog("+1000-1000")) << log_;
    log_.clear();
    backend_->unregisterHotKey(1000);
  }

  // The server serves programs in no order, so what was just freed is free in a moment.
  bool becomesFree(xcb_keycode_t key, std::uint16_t modifiers) {
    return waitUntil([&] { return isFree(key, modifiers); });
  }
  bool becomesWhollyFree(xcb_keycode_t key, std::uint16_t modifiers) {
    return waitUntil([&] { return isWhollyFree(key, modifiers); });
  }
  bool isFree(xcb_keycode_t key, std::uint16_t modifiers) {
    const bool free = player_->grabKey(key, modifiers);
    if (free) player_->ungrabKey(key, modifiers);
    return free;
  }
  bool isWhollyFree(xcb_keycode_t key, std::uint16_t modifiers) {
    return isFree(key, modifiers) && isFree(key, modifiers | kCapsLock) &&
           isFree(key, modifiers | kNumLock) && isFree(key, modifiers | kCapsLock | kNumLock);
  }

  VirtualDisplay display_;
  std::unique_ptr<KeyboardPlayer> player_;
  std::unique_ptr<X11HotKeyBackend> backend_;
  std::string log_;
  std::function<void()> told_;
};

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
  backend_ = std::make_unique<X11HotKeyBackend>();
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
       {Keys{x_key::e}, Keys{shift, x_key::e}, Keys{x_key::super, x_key::e},
        Keys{x_key::control, shift, x_key::super, x_key::e},
        Keys{x_key::alt, shift, x_key::super, x_key::e}, Keys{shift, x_key::super, x_key::d}}) {
    player_->chord(keys);
  }
  expectSilence();
  player_->chord({x_key::alt, x_key::control, x_key::e});
  EXPECT_TRUE(waitForLog("+2-2")) << log_;
}

TEST_F(X11HotKeyBackendTest, aHeldKeyFiresOnce) {
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

TEST_F(X11HotKeyBackendTest, quickPressesAreOneEach) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down({shift, x_key::super});
  std::string expected;
  for (int press = 0; press < 10; ++press) {
    player_->chord({x_key::e});  // all of them before the event loop gets to see one
    expected += "+1-1";
  }
  player_->up({shift, x_key::super});
  EXPECT_TRUE(waitForLog(expected)) << log_;
  log_.clear();
  expectSilence();
}

TEST_F(X11HotKeyBackendTest, quickPressesAreOneEachWhileTheProgramIsAwake) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down({shift, x_key::super});
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

TEST_F(X11HotKeyBackendTest, whatIsTypedNextReachesTheWindow) {
  setRepeat(QStringLiteral("off"));
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->down(kShortcut);
  ASSERT_TRUE(waitForLog("+1"));
  ASSERT_TRUE(keyboardIsGivenBack());
  player_->up({x_key::super, shift});  // the key itself is still down
  player_->chord({x_key::a});
  player_->chord({x_key::b});
  player_->up({x_key::e});
  player_->chord({x_key::d});
  EXPECT_EQ(player_->takeSeen().keys, (Keys{x_key::a, x_key::b, x_key::d}));
  EXPECT_TRUE(waitForLog("+1-1"));
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
    X11HotKeyBackend other;
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

TEST_F(X11HotKeyBackendTest, aTakenOneIsToldAndHadOnceItIsFree) {
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

TEST_F(X11HotKeyBackendTest, oneLockTakenIsTaken) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper | kNumLock));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  EXPECT_TRUE(becomesFree(x_key::e, kShiftSuper));
}

TEST_F(X11HotKeyBackendTest, aChangedMapIsAReasonToTryAgain) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  X11HotKeyBackend patient(3600);
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

TEST_F(X11HotKeyBackendTest, givenUpWhileTakenItIsNotTakenLater) {
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

TEST_F(X11HotKeyBackendTest, mutedTheKeysReachTheWindow) {
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

TEST_F(X11HotKeyBackendTest, theKeysThatWereRecordedDoNotFireBeforeTheyWereUp) {
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
  player_->up({x_key::e, x_key::super, shift});
  EXPECT_TRUE(waitForLog("-2"));
  log_.clear();
  EXPECT_TRUE(fires(2));
}

TEST_F(X11HotKeyBackendTest, aTakenOneStaysTakenWhileMuted) {
  ASSERT_TRUE(player_->grabKey(x_key::e, kShiftSuper));
  EXPECT_FALSE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  backend_->setMuted(true);
  player_->ungrabKey(x_key::e, kShiftSuper);
  setLayout(QStringLiteral("de"));
  EXPECT_TRUE(becomesWhollyFree(x_key::e, kShiftSuper));
  backend_->setMuted(false);
  EXPECT_TRUE(backend_->status().active);
}

TEST_F(X11HotKeyBackendTest, twoHundredRecordingsLeaveOneGrab) {
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

TEST_F(X11HotKeyBackendTest, aHandlerMayReplaceTheShortcut) {
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

TEST_F(X11HotKeyBackendTest, aKeyboardThatAnotherProgramHoldsIsSilent) {
  ASSERT_TRUE(backend_->registerHotKey(1, kKeyE, kShiftCommand));
  player_->grabKeyboard();
  player_->chord(kShortcut);
  player_->ungrabKeyboard();
  expectSilence();
  EXPECT_TRUE(fires());
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
    player_->chord({shift, x_key::b});
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
