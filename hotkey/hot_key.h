#pragma once

#include <QUuid>
#include <functional>
#include <memory>

#include "hotkey/key_combo.h"

namespace horalo {

class HotKeysController;

// A system-wide shortcut that is live for as long as somebody holds it: made registered, released
// with the last reference. One that another program holds stays silent.
class HotKey : public std::enable_shared_from_this<HotKey> {
 public:
  using Action = std::function<void()>;

  // `controller` must outlive the hot key. Either action may be empty.
  static std::shared_ptr<HotKey> create(HotKeysController& controller, KeyCombo keyCombo,
                                        Action keyDownHandler = {}, Action keyUpHandler = {});
  static std::shared_ptr<HotKey> create(HotKeysController& controller, std::uint32_t carbonKeyCode,
                                        std::uint32_t carbonModifiers, Action keyDownHandler = {},
                                        Action keyUpHandler = {});
  static std::shared_ptr<HotKey> create(HotKeysController& controller, Key key,
                                        ModifierFlags modifiers, Action keyDownHandler = {},
                                        Action keyUpHandler = {});
  ~HotKey();
  HotKey(const HotKey&) = delete;
  HotKey& operator=(const HotKey&) = delete;

  const QUuid& identifier() const { return identifier_; }
  const KeyCombo& keyCombo() const { return keyCombo_; }

  // Pausing unregisters; going on registers anew, under a new number.
  bool isPaused() const { return isPaused_; }
  void setPaused(bool paused);

  // Run when the shortcut is pressed, and when it is released. They may be replaced at any time,
  // and may release the hot key while they run.
  Action keyDownHandler;
  Action keyUpHandler;

 private:
  HotKey(HotKeysController& controller, KeyCombo keyCombo, Action keyDownHandler,
         Action keyUpHandler);

  HotKeysController& controller_;
  const QUuid identifier_ = QUuid::createUuid();
  const KeyCombo keyCombo_;
  bool isPaused_ = false;
};

}  // namespace horalo
