// Decodes arbitrary JSON as a tagged date mask. Decoding may reject the input, but only through
// nlohmann's exceptions or KeelDecodingError; it must never crash, whatever decodes must archive
// back to a document that decodes to an equal mask, and the decoded mask's searches must agree with
// matches inside its domain, never stopping the process (see FuzzMaskInvariants.h).
#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>

#include "FuzzMaskInvariants.h"
#include "Keel/KeelDecodingError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const nlohmann::json json =
      nlohmann::json::parse(data, data + size, /*callback=*/nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) return 0;
  std::shared_ptr<const QuandaDateMasking> mask;
  try {
    mask = decodeTaggedDateMask(json);
  } catch (const nlohmann::json::exception&) {
    return 0;
  } catch (const KeelDecodingError&) {
    return 0;
  }
  fuzz::requireArchiveRoundTrip(*mask);
  const auto firstDay = static_cast<QuandaDayOfGregorianWeek>(size % 7);
  fuzz::requireSearchesAgreeWithMatches(*mask, firstDay, {0, 5, 12, 738885, 3652000});
  return 0;
}
