// QuandaAbstractDate::makeFromIso8601StringWithoutSeparators on arbitrary bytes: a date that
// round-trips through its canonical text, or a well-formed error. An ASCII text made of eight
// digits is a date exactly when its digits make one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzDateInvariants.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto date = QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(text);
  if (date) {
    const QuandaAbstractDate value = date.value();
    fuzz::requireCanonicalRoundTrips(value);
    std::string packed = value.serializeToIso8601String();
    packed.erase(std::remove(packed.begin(), packed.end(), '-'), packed.end());
    const auto again = QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(packed);
    fuzz::require(again && again.value() == value, "eight-digit form does not round-trip");
  } else {
    fuzz::requireWellFormedError(date.error(), "make(iso8601StringWithoutSeparators:)", text);
  }
  if (size == 8 &&
      std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    const auto number = std::stoul(std::string(text));
    const auto expected = QuandaAbstractDate::makeIfValid(
        static_cast<std::uint16_t>(number / 10000), static_cast<std::uint8_t>(number / 100 % 100),
        static_cast<std::uint8_t>(number % 100));
    fuzz::require(date.optionalValue() == expected, "eight digits read wrongly");
  }
  return 0;
}
