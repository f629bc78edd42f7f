// Decodes arbitrary JSON as a natural date-time archive. Decoding may reject the input, but only
// through nlohmann's exceptions or KeelDecodingError; it must never crash, and whatever decodes
// must archive back to a document that decodes to the same value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>

#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const nlohmann::json json =
      nlohmann::json::parse(data, data + size, /*callback=*/nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) return 0;
  std::optional<QuandaAbstractNaturalDateTime> dateTime;
  try {
    dateTime = json.get<QuandaAbstractNaturalDateTime>();
  } catch (const nlohmann::json::exception&) {
    return 0;
  } catch (const KeelDecodingError&) {
    return 0;
  }
  const auto again =
      nlohmann::json::parse(nlohmann::json(*dateTime).dump()).get<QuandaAbstractNaturalDateTime>();
  if (again != *dateTime) std::abort();
  return 0;
}
