// Decodes arbitrary JSON as each archived time-axis type. Decoding may reject the input, but only
// through nlohmann's exceptions or KeelDecodingError; it must never crash, and whatever decodes
// must archive back to a document that decodes to the same value.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Quanda/QuandaInterfaceTimeInterval.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"

namespace {

bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

template <class T>
void checkRoundTrip(const nlohmann::json& json) {
  T value = [&] {
    try {
      return json.get<T>();
    } catch (const nlohmann::json::exception&) {
    } catch (const KeelDecodingError&) {
    }
    return T::zero;
  }();
  const T again = nlohmann::json::parse(nlohmann::json(value).dump()).template get<T>();
  if constexpr (requires { value.unixEpoch(); }) {
    if (!sameBits(again.unixEpoch(), value.unixEpoch())) std::abort();
  } else {
    if (again != value) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const nlohmann::json json =
      nlohmann::json::parse(data, data + size, /*callback=*/nullptr, /*allow_exceptions=*/false);
  // A number too large for a double is a parse error, so every parsed epoch is finite.
  if (json.is_discarded()) return 0;
  checkRoundTrip<QuandaNaturalTimeSpan>(json);
  checkRoundTrip<QuandaDiscreteTimeSpan>(json);
  checkRoundTrip<QuandaLogicTimeInterval>(json);
  checkRoundTrip<QuandaInterfaceTimeInterval>(json);
  return 0;
}
