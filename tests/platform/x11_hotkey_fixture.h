#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/x11/x11_hotkey_backend.h"
#include "tests/x11/keyboard_player.h"
#include "tests/x11/virtual_display.h"

namespace horalo {

using Keys = std::vector<xcb_keycode_t>;

inline constexpr std::uint32_t kKeyE = 14;
inline constexpr std::uint32_t kKeyK = 40;
inline constexpr std::uint32_t kShiftCommand = carbon::shiftKey | carbon::cmdKey;
inline constexpr std::uint16_t kShiftSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
inline constexpr std::uint16_t kCapsLock = XCB_MOD_MASK_LOCK;
inline constexpr std::uint16_t kNumLock = XCB_MOD_MASK_2;

// As long as it takes a test to get there. What is typed waits for no window here: none comes.
inline constexpr X11HotKeyWaits kShortWaits{.retry = 0.02, .typing = 0.005};

inline const Keys kShortcut = {x_key::shift, x_key::super, x_key::e};

// The backend on an X server of its own, somebody at the keyboard, and what the backend tells:
// "+1" for a press of the shortcut of number 1, "-1" for its release.
class X11HotKeyFixture : public testing::Test {
 protected:
  X11HotKeyFixture() {
    EXPECT_TRUE(display_.isRunning());
    qputenv("DISPLAY", display_.name().toUtf8());
    player_ = std::make_unique<KeyboardPlayer>(display_.name());
    backend_ = std::make_unique<X11HotKeyBackend>(kShortWaits);
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

}  // namespace horalo
