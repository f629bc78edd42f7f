// Decodes arbitrary JSON as a natural time of day and as a relative discrete time of day.
// Decoding may reject the input, but only through nlohmann's exceptions or KeelDecodingError; it
// must never crash, and whatever decodes must archive back to a document that decodes to the same
// value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>

#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaAbstractRelativeDiscreteTimeOfDay.h"

namespace {

template <class T>
void checkRoundTrip(const nlohmann::json& json) {
  std::optional<T> value;
  try {
    value = json.get<T>();
  } catch (const nlohmann::json::exception&) {
  } catch (const KeelDecodingError&) {
  }
  if (!value) return;
  const T again = nlohmann::json::parse(nlohmann::json(*value).dump()).template get<T>();
  if (again != *value) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const nlohmann::json json =
      nlohmann::json::parse(data, data + size, /*callback=*/nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) return 0;
  checkRoundTrip<QuandaAbstractNaturalTimeOfDay>(json);
  checkRoundTrip<QuandaAbstractRelativeDiscreteTimeOfDay>(json);
  return 0;
}
