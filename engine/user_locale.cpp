#include "engine/user_locale.h"

#include <cstdlib>

namespace horalo {
namespace {

constexpr std::string_view kFallback = "en_US";

}  // namespace

std::string localeOfPosixName(std::string_view name) {
  const std::size_t at = name.find('@');
  const std::string_view modifier = at == std::string_view::npos ? "" : name.substr(at + 1);
  std::string_view language = name.substr(0, at);
  language = language.substr(0, language.find('.'));
  if (language.empty() || language == "C" || language == "POSIX") return std::string(kFallback);

  std::string_view script;
  if (modifier == "latin") script = "_Latn";
  if (modifier == "cyrillic") script = "_Cyrl";
  if (modifier == "devanagari") script = "_Deva";
  const std::size_t territory = language.find('_');
  std::string locale(language.substr(0, territory));
  locale += script;
  if (territory != std::string_view::npos) locale += language.substr(territory);
  return locale;
}

std::string userLocale() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return localeOfPosixName(value);
  }
  return std::string(kFallback);
}

}  // namespace horalo
