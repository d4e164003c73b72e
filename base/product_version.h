#pragma once

#include <string_view>

namespace horalo {

// The product's version, "1.3.0".
std::string_view productVersion();

}  // namespace horalo
