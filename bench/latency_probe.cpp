// latency_probe start COMMAND...     from exec to the grab of Shift+Super+E
// latency_probe grabbed              waits until some program has grabbed Shift+Super+E
// latency_probe press COMBO TITLE    from a key to the window painted
// latency_probe copy TEXT TITLE      from the start of xclip to the window painted
// latency_probe type KEYS TITLE TOP  for each key, to a change painted below TOP
//
// All print milliseconds, one a line.
//
// Keys go through XTEST, and the clock starts when the last key goes down. COMBO is "shortcut" for
// Shift+Super+E or "settings" for Control+comma. Painted is the first damage to the program's own
// window; a compositor's frame would come after. `start` ends the program that it started.
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kPatience{5000};
constexpr milliseconds kGrabInterval{1};
// Between keys, so that each has been dealt with when the next comes.
constexpr milliseconds kRest{40};
constexpr xcb_keysym_t kShift = 0xffe1;
constexpr xcb_keysym_t kControl = 0xffe3;
constexpr xcb_keysym_t kSuper = 0xffeb;

struct Combo {
  std::vector<xcb_keysym_t> modifiers;
  xcb_keysym_t key;
};

const Combo kShortcut{{kShift, kSuper}, 'e'};
const Combo kSettings{{kControl}, ','};

struct Free {
  void operator()(void* allocated) const { std::free(allocated); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

[[noreturn]] void fail(const char* why) {
  std::fprintf(stderr, "latency_probe: %s\n", why);
  std::exit(1);
}

// One connection to the X server, and the keyboard and the windows as seen through it.
class Display {
 public:
  Display()
      : connection_(xcb_connect(nullptr, nullptr)), symbols_(xcb_key_symbols_alloc(connection_)) {
    if (xcb_connection_has_error(connection_) != 0) fail("there is no display");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const Reply<xcb_damage_query_version_reply_t> version(xcb_damage_query_version_reply(
        connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
    if (!version) fail("the display has no DAMAGE");
    firstDamageEvent_ = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event;
  }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;
  ~Display() {
    xcb_key_symbols_free(symbols_);
    xcb_disconnect(connection_);
  }

  // Waits until the server has dealt with all that was asked of it.
  void synchronize() const {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }

  // Sends a combination's keys; when its last one went down.
  Clock::time_point press(const Combo& combo) const {
    for (const auto modifier : combo.modifiers) send(modifier, XCB_KEY_PRESS);
    synchronize();
    const auto start = Clock::now();
    send(combo.key, XCB_KEY_PRESS);
    send(combo.key, XCB_KEY_RELEASE);
    for (const auto modifier : combo.modifiers) send(modifier, XCB_KEY_RELEASE);
    xcb_flush(connection_);
    return start;
  }

  // Whether another program has grabbed the combination. Nobody else is served meanwhile, so that
  // no program is refused the grab because of the attempt.
  bool isGrabbed(const Combo& combo) const {
    const std::uint16_t mask = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
    const xcb_keycode_t key = codeOf(combo.key);
    xcb_grab_server(connection_);
    const Reply<xcb_generic_error_t> refused(xcb_request_check(
        connection_, xcb_grab_key_checked(connection_, 0, root_, mask, key, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC)));
    if (!refused) xcb_ungrab_key(connection_, key, root_, mask);
    xcb_ungrab_server(connection_);
    synchronize();
    return refused != nullptr;
  }

  // Watches all windows that there are, and from now on those that are made.
  void watchWindows() {
    listen(root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    watchBelow(root_, 2);
    synchronize();
  }

  std::string title(xcb_window_t window) const {
    static const xcb_atom_t name = atom("_NET_WM_NAME");
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 256),
        nullptr));
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  // A watched window of this title.
  std::optional<xcb_window_t> find(const std::string& wanted) const {
    for (const auto window : watched_) {
      if (title(window) == wanted) return window;
    }
    return std::nullopt;
  }

  // A rectangle of a window has been painted.
  using Painted = std::function<void(xcb_window_t, const xcb_rectangle_t&)>;

  // Passes events on until there are no more.
  void drain() {
    synchronize();
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      dispatch(*event, {});
    }
  }

  // Passes events on until `done` holds; whether it came to that in time.
  bool dispatchUntil(const std::function<bool()>& done, const Painted& onPainted) {
    const auto end = Clock::now() + kPatience;
    while (!done()) {
      const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)};
      if (event) {
        dispatch(*event, onPainted);
        continue;
      }
      if (Clock::now() > end || xcb_connection_has_error(connection_) != 0) return false;
      pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
      poll(&readable, 1, 100);
    }
    return true;
  }

 private:
  xcb_keycode_t codeOf(xcb_keysym_t symbol) const {
    const Reply<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols_, symbol));
    if (!codes) fail("the keyboard lacks a key");
    return *codes;
  }

  void send(xcb_keysym_t symbol, std::uint8_t type) const {
    xcb_test_fake_input(connection_, type, codeOf(symbol), XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                        0);
  }

  xcb_atom_t atom(const std::string& name) const {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }

  void listen(xcb_window_t window, std::uint32_t mask) const {
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
  }

  void watch(xcb_window_t window) {
    if (!watched_.insert(window).second) return;
    xcb_damage_create(connection_, xcb_generate_id(connection_), window,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(connection_);
  }

  void watchBelow(xcb_window_t parent, int depth) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, parent), nullptr));
    if (!tree) return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
      watch(children[i]);
      if (depth > 1) watchBelow(children[i], depth - 1);
    }
  }

  void dispatch(const xcb_generic_event_t& event, const Painted& onPainted) {
    const auto type = event.response_type & 0x7f;
    if (type == XCB_CREATE_NOTIFY) {
      watch(reinterpret_cast<const xcb_create_notify_event_t&>(event).window);
    } else if (type == firstDamageEvent_ + XCB_DAMAGE_NOTIFY && onPainted) {
      const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
      onPainted(damage.drawable, damage.area);
    }
  }

  xcb_connection_t* connection_;
  xcb_key_symbols_t* symbols_;
  xcb_window_t root_{};
  int firstDamageEvent_{};
  std::set<xcb_window_t> watched_;
};

bool waitForGrab(const Display& display) {
  const auto end = Clock::now() + kPatience;
  while (!display.isGrabbed(kShortcut)) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(kGrabInterval);
  }
  return true;
}

pid_t spawn(char** command) {
  pid_t program{};
  if (posix_spawnp(&program, command[0], nullptr, nullptr, command, environ) != 0) {
    fail("the program does not start");
  }
  return program;
}

void start(char** command) {
  const Display display;
  if (display.isGrabbed(kShortcut)) fail("the shortcut is taken already");
  const auto begin = Clock::now();
  const pid_t program = spawn(command);
  const bool isActive = waitForGrab(display);
  const double time = millisecondsSince(begin);
  kill(program, isActive ? SIGTERM : SIGKILL);
  waitpid(program, nullptr, 0);
  if (!isActive) fail("the program grabs no shortcut");
  std::printf("%.3f\n", time);
}

Clock::time_point copy(std::string text) {
  // Its output goes nowhere: what it starts outlives it, and the reader of ours waits for all ends.
  std::string words[] = {"sh", "-c",
                         "printf %s \"$1\" | xclip -selection clipboard > /dev/null 2>&1", "sh"};
  char* command[] = {words[0].data(), words[1].data(), words[2].data(),
                     words[3].data(), text.data(),     nullptr};
  const auto begin = Clock::now();
  waitpid(spawn(command), nullptr, 0);
  return begin;
}

// Times how long after `act`, which tells when it began, a window of this title is there.
void timeWindow(const std::string& title,
                const std::function<Clock::time_point(const Display&)>& act) {
  Display display;
  display.watchWindows();
  display.drain();
  std::optional<double> painted;
  const auto begin = act(display);
  const bool shown = display.dispatchUntil([&] { return painted.has_value(); },
                                           [&](xcb_window_t where, const xcb_rectangle_t&) {
                                             const double time = millisecondsSince(begin);
                                             if (display.title(where) == title) painted = time;
                                           });
  if (!shown) fail("the window does not come");
  std::printf("%.3f\n", *painted);
}

void type(const std::string& keys, const std::string& title, int top) {
  Display display;
  display.watchWindows();
  const auto window = display.find(title);
  if (!window) fail("there is no such window");
  for (const char key : keys) {
    display.drain();
    std::optional<double> painted;
    const auto begin = display.press({{}, static_cast<xcb_keysym_t>(key)});
    const bool changed =
        display.dispatchUntil([&] { return painted.has_value(); },
                              [&](xcb_window_t where, const xcb_rectangle_t& area) {
                                if (where == *window && area.y + area.height > top)
                                  painted = millisecondsSince(begin);
                              });
    if (!changed) fail("a key changes nothing");
    std::printf("%.3f\n", *painted);
    std::this_thread::sleep_for(kRest);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string verb = argc > 1 ? argv[1] : "";
  if (verb == "start" && argc > 2) {
    start(argv + 2);
  } else if (verb == "press" && argc == 4) {
    const Combo& combo = std::string(argv[2]) == "settings" ? kSettings : kShortcut;
    timeWindow(argv[3], [&combo](const Display& display) { return display.press(combo); });
  } else if (verb == "copy" && argc == 4) {
    timeWindow(argv[3], [argv](const Display&) { return copy(argv[2]); });
  } else if (verb == "grabbed" && argc == 2) {
    if (!waitForGrab(Display())) fail("nobody grabs the shortcut");
  } else if (verb == "type" && argc == 5) {
    type(argv[2], argv[3], std::atoi(argv[4]));
  } else {
    fail("what is to be measured?");
  }
}
