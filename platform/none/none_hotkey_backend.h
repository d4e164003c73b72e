#pragma once

#include <string>
#include <utility>

#include "hotkey/hotkey_backend.h"

namespace horalo {

// Where the desktop lets no program have a shortcut of its own: nothing ever fires.
class NoneHotKeyBackend final : public HotKeyBackend {
 public:
  // `reason`: why, for the user, and what to do instead.
  explicit NoneHotKeyBackend(std::string reason) : reason_(std::move(reason)) {}

  void setHandler(Handler) override {}
  bool registerHotKey(std::uint32_t, std::uint32_t, std::uint32_t) override { return false; }
  void unregisterHotKey(std::uint32_t) override {}
  void setMuted(bool) override {}
  HotKeyBackendStatus status() const override { return {"none", false, reason_}; }
  std::uint32_t eventTime() const override { return 0; }

 private:
  std::string reason_;
};

}  // namespace horalo
