#include "hotkey/views/command_key.h"

#include <QKeyEvent>

#include "hotkey/key.h"

namespace horalo {
namespace {

constexpr int kLastLatin = 0xFF;
constexpr int kFirstNamed = Qt::Key_Escape;  // keys that are no characters have numbers from here

}  // namespace

Qt::Key commandKey(const QKeyEvent& event, const KeyCodeOf& keyCodeOf) {
  const auto written = static_cast<Qt::Key>(event.key());
  const bool isForeign = written > kLastLatin && written < kFirstNamed;
  if (!isForeign || !keyCodeOf) return written;
  const auto code = keyCodeOf(event.nativeScanCode());
  const auto key = code ? Key::fromCarbonKeyCode(*code) : std::nullopt;
  if (!key || key->description().size() != 1) return written;
  return static_cast<Qt::Key>(key->description().front());
}

}  // namespace horalo
