#include "base/clock.h"

#include <chrono>

namespace horalo {

Instant SystemClock::now() const {
  using std::chrono::floor;
  using std::chrono::nanoseconds;
  using std::chrono::seconds;
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  const auto whole = floor<seconds>(sinceEpoch);
  const auto rest = std::chrono::duration_cast<nanoseconds>(sinceEpoch - whole);
  return {whole.count(), static_cast<std::int32_t>(rest.count())};
}

}  // namespace horalo
