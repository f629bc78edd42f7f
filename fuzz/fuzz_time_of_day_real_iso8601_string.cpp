// Reads arbitrary text as a real time of day. Any input gives a time or an error, never a crash;
// a time's fields lie in their domains, and its text reads back to a time on the same minute at
// most one microsecond earlier (the text cuts the shortest decimal form of the seconds to six
// digits, so it can also read back a rounding error later).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto time = QuandaAbstractRealTimeOfDay::makeFromIso8601String(text);
  if (!time) {
    if (time.error().innermost().message().empty()) std::abort();
    return 0;
  }
  const QuandaAbstractRealTimeOfDay value = time.value();
  if (value.hour() > 23 || value.minute() > 59 || !(value.second() >= 0.0) ||
      !(value.second() < 60.0)) {
    std::abort();
  }
  const std::string written = value.serializeToIso8601String();
  // The seconds are written in the default locale; only a "." separator reads back.
  if (written.size() == 15 && written[8] == '.') {
    const auto again = QuandaAbstractRealTimeOfDay::makeFromIso8601String(written);
    if (!again) std::abort();
    const double lost = value.second() - again.value().second();
    if (again.value().hour() != value.hour() || again.value().minute() != value.minute() ||
        lost < -1e-9 || lost >= 1.000001e-6) {
      std::abort();
    }
  }
  return 0;
}
