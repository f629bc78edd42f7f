// Reads arbitrary bytes as an RFC 3339 date-time text. Any input must give a date-time or an
// error, never a crash; a date-time must write back to a text that reads as the same value, and
// the canonical fast path must agree with the general path (reached by a leading '+' on the year,
// which the general path accepts and the fast path does not).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const KeelResult<QuandaAbstractNaturalDateTime> dateTime =
      QuandaAbstractNaturalDateTime::makeFromRfc3339String(text);
  if (!dateTime) {
    if (dateTime.error().innermost().message().empty()) std::abort();
    return 0;
  }
  const std::string written = dateTime.value().serializedToRfc3339String();
  const auto again = QuandaAbstractNaturalDateTime::makeFromRfc3339String(written);
  if (!again || again.value() != dateTime.value()) std::abort();
  const auto general = QuandaAbstractNaturalDateTime::makeFromRfc3339String("+" + written);
  if (!general || general.value() != dateTime.value()) std::abort();
  const auto numeric = QuandaAbstractNaturalDateTime::makeFromRfc3339Numeric(
      dateTime.value().serializedToRfc3339Numeric());
  if (!numeric || numeric.value() != dateTime.value()) std::abort();
  return 0;
}
