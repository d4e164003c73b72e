#include "hotkey/key_combo.h"

#include <QString>
#include <QVariant>
#include <limits>

namespace horalo {
namespace {

QString keyCodeName() {
  return QStringLiteral("keyCode");
}
QString modifiersName() {
  return QStringLiteral("modifiers");
}

std::optional<std::uint32_t> unsignedEntry(const QVariantMap& dictionary, const QString& name) {
  const QVariant value = dictionary.value(name);
  qint64 number = -1;
  switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      number = value.toLongLong();
      break;
    case QMetaType::ULongLong:  // past 2^63 it wraps to a negative number, which is refused as well
      number = static_cast<qint64>(value.toULongLong());
      break;
    default:
      break;
  }
  if (number < 0 || number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  return static_cast<std::uint32_t>(number);
}

}  // namespace

std::optional<KeyCombo> KeyCombo::fromDictionary(const QVariantMap& dictionary) {
  const auto keyCode = unsignedEntry(dictionary, keyCodeName());
  const auto modifiers = unsignedEntry(dictionary, modifiersName());
  if (!keyCode || !modifiers) return std::nullopt;
  return KeyCombo(*keyCode, *modifiers);
}

QVariantMap KeyCombo::dictionary() const {
  return {{keyCodeName(), qint64{carbonKeyCode}}, {modifiersName(), qint64{carbonModifiers}}};
}

// Neither X11 nor the desktops on it have one table of the shortcuts that are theirs.
std::vector<KeyCombo> KeyCombo::systemKeyCombos() {
  return {};
}

std::string KeyCombo::description() const {
  std::string text = modifiers().description();
  if (const auto named = key()) text += named->description();
  return text;
}

}  // namespace horalo
