// Reads arbitrary text as a natural time of day in the colon form. Any input gives a time or an
// error, never a crash; a time read back from its own text is the same time, and a text in the
// canonical "hh:mm:ss" form is exactly what the time writes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto time = QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(text);
  if (!time) {
    if (time.error().innermost().message().empty()) std::abort();
    return 0;
  }
  const std::string written = time.value().serializeToIso8601String();
  const auto again = QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(written);
  if (!again || again.value() != time.value()) std::abort();
  const bool canonical = text.size() == 8 && text[2] == ':' && text[5] == ':' &&
                         text.find_first_not_of("0123456789:") == std::string_view::npos;
  if (canonical && written != text) std::abort();
  return 0;
}
