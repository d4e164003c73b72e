#include "platform/x11/x_keyboard.h"

#include <xcb/xinput.h>

#include "platform/x11/x_connection.h"
#include "platform/x11/xcb_xkb.h"

namespace horalo {
namespace {

constexpr std::uint8_t kSentByClient = 0x80;  // set in the type of events that a program made up

std::uint8_t typeOf(const xcb_generic_event_t& event) {
  return event.response_type & static_cast<std::uint8_t>(~kSentByClient);
}

}  // namespace

XKeyboard::XKeyboard(XConnection& connection) : connection_(connection) {
  xcb_connection_t* const xcb = connection_.get();
  xcb_prefetch_extension_data(xcb, &xcb_xkb_id);
  xcb_prefetch_extension_data(xcb, &xcb_input_id);
  const auto* const xkb = xcb_get_extension_data(xcb, &xcb_xkb_id);
  const auto* const input = xcb_get_extension_data(xcb, &xcb_input_id);
  if (xkb == nullptr || !xkb->present || input == nullptr || !input->present) return;
  xkbEvent_ = xkb->first_event;
  inputOpcode_ = input->major_opcode;

  const auto use = xcb_xkb_use_extension(xcb, 1, 0);
  constexpr std::uint16_t events =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
  xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
  constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  const auto set = xcb_xkb_per_client_flags(xcb, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
  // From 2.1 on, raw events come also while another program has the keyboard.
  const auto version = xcb_input_xi_query_version(xcb, 2, 1);

  const auto used = connection_.reply(xcb_xkb_use_extension_reply, use);
  const auto flags = connection_.reply(xcb_xkb_per_client_flags_reply, set);
  const auto agreed = connection_.reply(xcb_input_xi_query_version_reply, version);
  const bool repeatsAreTold = used && used->supported && flags && (flags->value & flag) != 0;
  const bool releasesAreTold =
      agreed &&
      (agreed->major_version > 2 || (agreed->major_version == 2 && agreed->minor_version >= 1));
  isUsable_ = repeatsAreTold && releasesAreTold;
}

void XKeyboard::watchReleases(bool on) {
  if (on == isWatching_ || !isUsable_) return;
  isWatching_ = on;
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } request = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
               on ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE} : std::uint32_t{0}};
  xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &request.head);
}

bool XKeyboard::isMapChange(const xcb_generic_event_t& event) const {
  return isUsable_ &&
         typeOf(event) == xkbEvent_;  // no other events of that extension were asked for
}

std::optional<XKeyboard::Release> XKeyboard::releaseIn(const xcb_generic_event_t& event) const {
  if (typeOf(event) == XCB_KEY_RELEASE) {
    const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(event);
    return Release{release.detail, release.time};
  }
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (typeOf(event) != XCB_GE_GENERIC || generic.extension != inputOpcode_ ||
      generic.event_type != XCB_INPUT_RAW_KEY_RELEASE) {
    return std::nullopt;
  }
  const auto& release = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
  return Release{static_cast<xcb_keycode_t>(release.detail), release.time};
}

}  // namespace horalo
