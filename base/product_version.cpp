#include "base/product_version.h"

namespace horalo {

std::string_view productVersion() {
  return HORALO_VERSION;
}

}  // namespace horalo
