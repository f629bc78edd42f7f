// Reads arbitrary bytes as an RFC 3339 date-time text with fractional seconds. Any input must
// give a date-time or an error, never a crash; whatever reads must write a text (cut to six
// fraction digits) that reads back as a date-time within a microsecond of it, and convert to the
// nearest natural date-time without stopping.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const KeelResult<QuandaAbstractRealDateTime> dateTime =
      QuandaAbstractRealDateTime::makeFromRfc3339String(text);
  if (!dateTime) {
    if (dateTime.error().innermost().message().empty()) std::abort();
    return 0;
  }
  const QuandaAbstractRealDateTime value = dateTime.value();
  (void)value.makeNatural();
  const std::string written = value.serializedToRfc3339String();
  // The written seconds use the default locale's separator; the reader takes only '.'.
  if (written.find('.') == std::string::npos) return 0;
  const auto again = QuandaAbstractRealDateTime::makeFromRfc3339String(written);
  if (!again || again.value().date() != value.date() || again.value().hour() != value.hour() ||
      again.value().minute() != value.minute() ||
      !(value.second() - again.value().second() >= 0.0 &&
        value.second() - again.value().second() < 1.0000001e-6)) {
    std::abort();
  }
  return 0;
}
