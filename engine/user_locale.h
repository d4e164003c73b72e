#pragma once

#include <string>
#include <string_view>

namespace horalo {

// The locale in which the user reads dates: LC_ALL, LC_TIME, LANG, the first that is set and not
// empty. "en_US" where none is, and for C, POSIX and C.UTF-8. The result has no encoding, and a
// modifier only as a script: "de_DE.UTF-8@euro" is "de_DE", "sr_RS@latin" is "sr_Latn_RS".
std::string userLocale();

// The same for one value of such a variable.
std::string localeOfPosixName(std::string_view name);

}  // namespace horalo
