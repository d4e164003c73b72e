#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace horalo {

class XConnection;

// What a connection is told of the keyboard besides the keys that it has grabbed.
class XKeyboard {
 public:
  // A key that went up, whoever has the keyboard.
  struct Release {
    xcb_keycode_t code;
    xcb_timestamp_t time;
  };

  // Asks the server for notices of changed keyboard maps, and that a held key repeats as presses
  // alone: a release is then always the end of a press. `connection` must outlive this object.
  explicit XKeyboard(XConnection& connection);

  // False where the server is too old for what is needed here (before 2012), or is gone.
  bool isUsable() const { return isUsable_; }

  // While on, every key that goes up is told, whatever window has the keyboard. Off at first, and
  // to be off whenever no key of ours is down: what else is typed is nobody's business here.
  void watchReleases(bool on);

  bool isMapChange(const xcb_generic_event_t& event) const;
  // Nothing for any other event.
  std::optional<Release> releaseIn(const xcb_generic_event_t& event) const;

 private:
  XConnection& connection_;
  bool isUsable_ = false;
  bool isWatching_ = false;
  std::uint8_t xkbEvent_ = 0;
  std::uint8_t inputOpcode_ = 0;
};

}  // namespace horalo
