#pragma once

#include <string>

namespace horalo {

// What the engine's hand-written matchers are measured against: the same grammars in the plainest
// form there is, the regular expressions themselves and the C library. For trimmed ASCII texts
// without NUL. Each stops the fuzzer where the two disagree about `text`.
void compareWithRegularExpressions(const std::string& text);
void compareWithStrtod(const std::string& text);

}  // namespace horalo
