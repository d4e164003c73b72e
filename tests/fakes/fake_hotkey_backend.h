#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "hotkey/hotkey_backend.h"
#include "hotkey/key_combo.h"

namespace horalo {

// A shortcut service without a desktop: remembers what it was asked, and presses when it is told.
class FakeHotKeyBackend final : public HotKeyBackend {
 public:
  void setHandler(Handler handler) override { handler_ = std::move(handler); }

  bool registerHotKey(std::uint32_t number, std::uint32_t carbonKeyCode,
                      std::uint32_t carbonModifiers) override {
    ++registerCalls;
    registered[number] = KeyCombo(carbonKeyCode, carbonModifiers);
    return isFree;
  }
  void unregisterHotKey(std::uint32_t number) override {
    ++unregisterCalls;
    registered.erase(number);
  }
  void setMuted(bool muted) override { isMuted = muted; }
  HotKeyBackendStatus status() const override {
    return {"none", false, "nobody has a keyboard here"};
  }
  std::uint32_t eventTime() const override { return 0; }

  void tell(std::uint32_t number, HotKeyEventKind kind) const {
    if (handler_) handler_(number, kind);
  }

  bool isFree = true;  // whether the next registration succeeds
  bool isMuted = false;
  int registerCalls = 0;
  int unregisterCalls = 0;
  std::map<std::uint32_t, KeyCombo> registered;  // by number

 private:
  Handler handler_;
};

}  // namespace horalo
