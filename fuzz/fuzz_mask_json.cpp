// Decodes arbitrary JSON as a tagged date mask. Decoding may reject the input, but only through
// nlohmann's exceptions or KeelDecodingError; it must never crash, whatever decodes must archive
// back to a document that decodes to an equal mask, and the decoded mask must answer its searches
// (and matches on the dates they find) without stopping the process.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"

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
  const nlohmann::json archived = encodeTaggedDateMask(*mask);
  const auto again = decodeTaggedDateMask(nlohmann::json::parse(archived.dump()));
  if (!again->isEqual(*mask) || again->hashValue() != mask->hashValue()) std::abort();

  const auto firstDay = static_cast<QuandaDayOfGregorianWeek>(size % 7);
  const auto first = QuandaAbstractDate::validRange.min();
  const auto last = QuandaAbstractDate::validRange.max();
  for (const auto& found : {mask->firstMatch(QuandaAbstractDate::validRange, firstDay),
                            mask->previousMatch(last, firstDay)}) {
    if (found && !mask->matches(*found, firstDay)) std::abort();
    if (found && found > first) {
      const auto next = mask->nextMatch(found->addingDays(-1), firstDay);
      if (next != found) std::abort();
    }
  }
  return 0;
}
