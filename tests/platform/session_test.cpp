#include "platform/session.h"

#include <gtest/gtest.h>

#include <map>

namespace horalo {
namespace {

struct Case {
  const char* display;
  const char* wayland;
  const char* platform;
  SessionKind kind;
  const char* name;
};

TEST(SessionTest, ReadsTheEnvironment) {
  constexpr Case cases[] = {
      {"", "", "", SessionKind::none, ""},
      {"", "", "offscreen", SessionKind::none, ""},
      {":0", "", "", SessionKind::x11, "0"},
      {":12.1", "", "xcb", SessionKind::x11, "12"},
      {"localhost:10.0", "", "", SessionKind::x11, "localhost:10"},
      {"/private/x:0", "", "", SessionKind::x11, "_private_x:0"},
      {"", "wayland-0", "", SessionKind::wayland, "wayland-0"},
      {":0", "wayland-0", "", SessionKind::xwayland, "wayland-0"},
      {":0", "wayland-0", "xcb", SessionKind::xwayland, "wayland-0"},
      {":0", "wayland-0", "wayland;xcb", SessionKind::wayland, "wayland-0"},
      {"", "/run/w/wayland-1", "", SessionKind::wayland, "_run_w_wayland-1"},
  };
  int tried = 0;
  for (const Case& row : cases) {
    const std::map<std::string, std::string> environment{{"DISPLAY", row.display},
                                                         {"WAYLAND_DISPLAY", row.wayland},
                                                         {"QT_QPA_PLATFORM", row.platform}};
    const Session session =
        sessionFrom([&](const char* variable) { return environment.at(variable); });
    EXPECT_EQ(session.kind, row.kind) << tried;
    EXPECT_EQ(session.display, row.name) << tried;
    ++tried;
  }
  EXPECT_EQ(tried, 11);
}

TEST(SessionTest, HasNames) {
  EXPECT_EQ(nameOf(SessionKind::x11), "x11");
  EXPECT_EQ(nameOf(SessionKind::wayland), "wayland");
  EXPECT_EQ(nameOf(SessionKind::xwayland), "xwayland");
  EXPECT_EQ(nameOf(SessionKind::none), "none");
}

}  // namespace
}  // namespace horalo
