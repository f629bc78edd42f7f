// Strict number reading for the JSON archive decoders.
//
// nlohmann's get<std::uint64_t>() converts -1 or 2.5 silently. An archive decoder must not: a
// number that does not fit the archived type is the decoder's own type error, thrown as
// nlohmann::json::type_error like every other JSON type mismatch. Whole-valued floats (20240305.0)
// are accepted, as JSON does not distinguish them.
#pragma once

#include <cmath>
#include <concepts>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

namespace keel {

template <std::integral T>
T decodeJsonInteger(const nlohmann::json& json) {
  if (json.is_number_unsigned()) {
    const auto value = json.get<std::uint64_t>();
    if (std::in_range<T>(value)) return static_cast<T>(value);
  } else if (json.is_number_integer()) {
    const auto value = json.get<std::int64_t>();
    if (std::in_range<T>(value)) return static_cast<T>(value);
  } else if (json.is_number_float()) {
    const double value = json.get<double>();
    constexpr double upper = static_cast<double>(std::numeric_limits<T>::max()) + 1.0;
    if (std::isfinite(value) && std::trunc(value) == value && value < upper &&
        value >= static_cast<double>(std::numeric_limits<T>::min())) {
      return static_cast<T>(value);
    }
  } else {
    throw nlohmann::json::type_error::create(
        302, std::string("type must be number, but is ") + json.type_name(), &json);
  }
  throw nlohmann::json::type_error::create(
      302, "number " + json.dump() + " does not fit the archived integer type", &json);
}

}  // namespace keel
