// Reads arbitrary text as a natural time of day in the six-character form "hhmmss". Any input
// gives a time or an error, never a crash; a time reads back from its own digits, and the colon
// form of the same tokens gives the same time.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto time = QuandaAbstractNaturalTimeOfDay::makeFromIso8601StringWithoutSeparators(text);
  if (!time) {
    if (time.error().innermost().message().empty()) std::abort();
    return 0;
  }
  const QuandaAbstractNaturalTimeOfDay value = time.value();
  std::string digits = value.serializeToIso8601String();
  digits.erase(5, 1).erase(2, 1);
  const auto again = QuandaAbstractNaturalTimeOfDay::makeFromIso8601StringWithoutSeparators(digits);
  if (!again || again.value() != value) std::abort();
  if (QuandaAbstractNaturalTimeOfDay::makeFromIso8601Numeric(value.serializeToIso8601Numeric())
          .value() != value) {
    std::abort();
  }
  // Plain ASCII input splits into the same three tokens with colons between them.
  if (size == 6) {
    const std::string colons = std::string(text.substr(0, 2)) + ':' +
                               std::string(text.substr(2, 2)) + ':' + std::string(text.substr(4));
    const auto withColons = QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(colons);
    if (text.find(':') == std::string_view::npos && (!withColons || withColons.value() != value)) {
      std::abort();
    }
  }
  return 0;
}
