// The JSON decoders of the date and the weekday on arbitrary documents: each either decodes a
// value that encodes back to the same JSON, or throws KeelDecodingError or one of nlohmann's
// exceptions. Nothing else escapes, and nothing crashes.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "FuzzDateInvariants.h"
#include "Keel/KeelDecodingError.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

namespace {

template <class T>
void decode(const nlohmann::json& json) {
  try {
    const T value = json.get<T>();
    const nlohmann::json encoded = value;
    fuzz::require(encoded.get<T>() == value, "a decoded value does not round-trip");
    if constexpr (std::is_same_v<T, QuandaAbstractDate>) {
      fuzz::requireCanonicalRoundTrips(value);
      fuzz::require(encoded == json || json.is_number_float(), "decoded from another number");
    } else {
      fuzz::require(encoded == json, "decoded from another text");
    }
  } catch (const KeelDecodingError&) {
  } catch (const nlohmann::json::exception&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const nlohmann::json json = nlohmann::json::parse(data, data + size, nullptr, false);
  if (json.is_discarded()) return 0;
  decode<QuandaAbstractDate>(json);
  decode<QuandaDayOfGregorianWeek>(json);
  // Values inside containers, as archives hold them.
  if (json.is_structured()) {
    for (const auto& element : json) {
      decode<QuandaAbstractDate>(element);
      decode<QuandaDayOfGregorianWeek>(element);
    }
  }
  return 0;
}
