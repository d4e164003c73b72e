#include "platform/x11/desktop_properties.h"

#include <xcb/shape.h>

#include <QGuiApplication>
#include <array>
#include <cstring>
#include <utility>

#include "platform/x11/x_connection.h"

namespace horalo {
namespace {

constexpr std::uint32_t kEveryDesktop = 0xffffffff;
constexpr std::uint32_t kFromPager = 2;
constexpr std::uint32_t kMostWindows = 4096;

template <typename Value>
void setProperty(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 const std::vector<Value>& values) {
  static_assert(sizeof(Value) == 4);
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

// The values of a property of 32-bit items; empty where it has another format or is not set.
std::vector<std::uint32_t> valuesOf(const xcb_get_property_reply_t* reply) {
  if (reply == nullptr || reply->format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
  return {first, first + reply->value_len};
}

// The server's present time, asked for on a connection of its own so that no event of Qt's is
// touched; 0 where that fails.
xcb_timestamp_t serverTime() {
  xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
  xcb_timestamp_t time = XCB_CURRENT_TIME;
  if (xcb_connection_has_error(xcb) == 0) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data;
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(xcb, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    xcb_flush(xcb);
    while (const XcbOwned<xcb_generic_event_t> event{xcb_wait_for_event(xcb)}) {
      if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY) continue;
      time = reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
      break;
    }
  }
  xcb_disconnect(xcb);
  return time;
}

void appendStruts(std::vector<Strut>& struts, const std::vector<std::uint32_t>& values,
                  const QSize& xScreen) {
  using Edge = Strut::Edge;
  constexpr std::array<Edge, 4> edges{Edge::left, Edge::right, Edge::top, Edge::bottom};
  for (std::size_t i = 0; i < edges.size() && i < values.size(); ++i) {
    if (values[i] == 0) continue;
    const bool isVertical = i < 2;
    Strut strut{edges[i], static_cast<int>(values[i]), 0,
                (isVertical ? xScreen.height() : xScreen.width()) - 1};
    if (values.size() >= 12) {
      strut.from = static_cast<int>(values[4 + 2 * i]);
      strut.to = static_cast<int>(values[5 + 2 * i]);
    }
    struts.push_back(strut);
  }
}

}  // namespace

DesktopProperties::DesktopProperties() {
  const auto* x11 =
      qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr) return;
  xcb_ = x11->connection();
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data;

  const std::array<std::pair<xcb_atom_t*, const char*>, 10> names{{
      {&activeWindow_, "_NET_ACTIVE_WINDOW"},
      {&clientList_, "_NET_CLIENT_LIST"},
      {&desktop_, "_NET_WM_DESKTOP"},
      {&state_, "_NET_WM_STATE"},
      {&sticky_, "_NET_WM_STATE_STICKY"},
      {&skipTaskbar_, "_NET_WM_STATE_SKIP_TASKBAR"},
      {&skipPager_, "_NET_WM_STATE_SKIP_PAGER"},
      {&strut_, "_NET_WM_STRUT"},
      {&strutPartial_, "_NET_WM_STRUT_PARTIAL"},
      {&blurRegion_, "_KDE_NET_WM_BLUR_BEHIND_REGION"},
  }};
  std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
  for (std::size_t i = 0; i < names.size(); ++i) {
    const char* name = names[i].second;
    cookies[i] = xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb_, cookies[i], nullptr));
    if (reply) *names[i].first = reply->atom;
  }
}

void DesktopProperties::putEverywhere(xcb_window_t window) {
  if (xcb_ == nullptr) return;
  setProperty<xcb_atom_t>(xcb_, window, state_, XCB_ATOM_ATOM, {sticky_, skipTaskbar_, skipPager_});
  setProperty<std::uint32_t>(xcb_, window, desktop_, XCB_ATOM_CARDINAL, {kEveryDesktop});
}

void DesktopProperties::activate(xcb_window_t window, xcb_timestamp_t time) {
  if (xcb_ == nullptr) return;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = activeWindow_;
  message.data.data32[0] = kFromPager;
  message.data.data32[1] = time == XCB_CURRENT_TIME ? serverTime() : time;
  xcb_send_event(xcb_, 0, screen_->root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(xcb_);
}

std::vector<Strut> DesktopProperties::struts() {
  if (xcb_ == nullptr) return {};
  const auto ask = [this](xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                          std::uint32_t count) {
    return xcb_get_property(xcb_, 0, window, property, type, 0, count);
  };
  const auto answer = [this](xcb_get_property_cookie_t cookie) {
    const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb_, cookie, nullptr));
    return valuesOf(reply.get());
  };
  const auto windows = answer(ask(screen_->root, clientList_, XCB_ATOM_WINDOW, kMostWindows));
  std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> cookies;
  for (const xcb_window_t window : windows) {
    cookies.emplace_back(ask(window, strutPartial_, XCB_ATOM_CARDINAL, 12),
                         ask(window, strut_, XCB_ATOM_CARDINAL, 4));
  }
  std::vector<Strut> struts;
  for (const auto& [partialCookie, wholeCookie] : cookies) {
    const auto partial = answer(partialCookie);
    const auto whole = answer(wholeCookie);
    appendStruts(struts, partial.empty() ? whole : partial, xScreenSize());
  }
  return struts;
}

QSize DesktopProperties::xScreenSize() const {
  if (xcb_ == nullptr) return {};
  // The size in the connection's set-up is that of its beginning; the root window follows changes.
  const XcbOwned<xcb_get_geometry_reply_t> root(
      xcb_get_geometry_reply(xcb_, xcb_get_geometry(xcb_, screen_->root), nullptr));
  return root ? QSize(root->width, root->height) : QSize();
}

void DesktopProperties::setShape(xcb_window_t window, const QRegion& pixels) {
  if (xcb_ == nullptr) return;
  if (pixels.isEmpty()) {
    xcb_shape_mask(xcb_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_NONE);
    return;
  }
  std::vector<xcb_rectangle_t> rectangles;
  for (const QRect& rect : pixels) {
    rectangles.push_back({static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                          static_cast<std::uint16_t>(rect.width()),
                          static_cast<std::uint16_t>(rect.height())});
  }
  xcb_shape_rectangles(xcb_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_YX_BANDED,
                       window, 0, 0, static_cast<std::uint32_t>(rectangles.size()),
                       rectangles.data());
}

bool DesktopProperties::offersBlur() {
  if (xcb_ == nullptr) return false;
  const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      xcb_, xcb_get_property(xcb_, 0, screen_->root, blurRegion_, XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
      nullptr));
  return reply && reply->type != XCB_ATOM_NONE;
}

void DesktopProperties::setBlurRegion(xcb_window_t window, const QRegion& pixels) {
  if (xcb_ == nullptr) return;
  std::vector<std::uint32_t> values;
  for (const QRect& rect : pixels) {
    for (const int value : {rect.x(), rect.y(), rect.width(), rect.height()}) {
      values.push_back(static_cast<std::uint32_t>(value));
    }
  }
  setProperty(xcb_, window, blurRegion_, XCB_ATOM_CARDINAL, values);
}

}  // namespace horalo
