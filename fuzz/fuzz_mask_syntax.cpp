// Reads arbitrary text as a date mask in the short syntax (or, from "{", as its tagged archive).
// Reading may fail, but only with a well-formed error and never by crashing or overflowing the
// stack, whatever the nesting; a mask read archives and decodes to an equal mask, and its searches
// agree with matches day by day inside its domain, from the first weeks of year 1 (where the
// week cycles' domains begin), from a day taken from the input and from the last weeks of 9999.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "FuzzMaskInvariants.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto mask = makeDateMaskFromSyntaxOrArchive(text);
  if (!mask) {
    fuzz::require(!mask.error().innermost().message().empty(), "the first fault has no message");
    return 0;
  }
  fuzz::requireArchiveRoundTrip(*mask.value());
  std::uint32_t seed = 0;
  for (std::uint8_t byte : text) seed = seed * 31 + byte;
  const auto firstDay = static_cast<QuandaDayOfGregorianWeek>(seed % 7);
  fuzz::requireSearchesAgreeWithMatches(*mask.value(), firstDay,
                                        {0, 5, 12, 738885, seed % 3652059, 3652000});
  return 0;
}
