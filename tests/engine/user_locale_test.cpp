#include "engine/user_locale.h"

#include <gtest/gtest.h>

#include "tests/tables/scoped_variable.h"

namespace horalo {
namespace {

using Value = std::optional<std::string>;

struct Case {
  Value all, time, lang;
  const char* locale;
};

TEST(UserLocale, IsWhatTheFirstVariableSays) {
  const Case cases[]{
      {{}, {}, {}, "en_US"},
      {{}, {}, "de_DE.UTF-8", "de_DE"},
      {{}, "fr_FR.UTF-8", "de_DE.UTF-8", "fr_FR"},
      {"ja_JP.UTF-8", "fr_FR.UTF-8", "de_DE.UTF-8", "ja_JP"},
      {"ja_JP.UTF-8", {}, {}, "ja_JP"},
      {"", "", "de_DE.UTF-8", "de_DE"},
      {"", "", "", "en_US"},
      {"", "fr_FR", "", "fr_FR"},
      // Set counts, also where what it says is no language.
      {"C", "fr_FR.UTF-8", "de_DE.UTF-8", "en_US"},
      {"C.UTF-8", {}, "de_DE.UTF-8", "en_US"},
      {{}, "POSIX", "de_DE.UTF-8", "en_US"},
  };
  int compared = 0;
  for (const Case& c : cases) {
    const ScopedVariable all("LC_ALL", c.all), time("LC_TIME", c.time), lang("LANG", c.lang);
    const ScopedVariable language("LANGUAGE", "it:pl"), messages("LC_MESSAGES", "it_IT.UTF-8");
    EXPECT_EQ(userLocale(), c.locale) << "case " << compared;
    ++compared;
  }
  EXPECT_EQ(compared, 11);
}

TEST(UserLocale, HasNoEncodingAndAModifierOnlyAsAScript) {
  constexpr std::pair<const char*, const char*> kNames[]{
      {"de_DE", "de_DE"},
      {"de", "de"},
      {"de_DE.UTF-8", "de_DE"},
      {"de_DE.ISO-8859-15@euro", "de_DE"},
      {"de_DE@euro", "de_DE"},
      {"C", "en_US"},
      {"C.UTF-8", "en_US"},
      {"C.utf8", "en_US"},
      {"POSIX", "en_US"},
      {"", "en_US"},
      {".UTF-8", "en_US"},
      {"@euro", "en_US"},
      {"sr_RS@latin", "sr_Latn_RS"},
      {"sr_RS.UTF-8@latin", "sr_Latn_RS"},
      {"sr@latin", "sr_Latn"},
      {"uz_UZ@cyrillic", "uz_Cyrl_UZ"},
      {"ks_IN@devanagari", "ks_Deva_IN"},
      {"ca_ES@valencia", "ca_ES"},
      {"fil_PH.UTF-8", "fil_PH"},
      {"zh_TW.Big5", "zh_TW"},
  };
  int compared = 0;
  for (const auto& [name, locale] : kNames) {
    EXPECT_EQ(localeOfPosixName(name), locale) << name;
    ++compared;
  }
  EXPECT_EQ(compared, 20);
}

}  // namespace
}  // namespace horalo
