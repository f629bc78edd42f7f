#include "Quanda/DateMasks/QuandaOrdinalSet.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelError.h"
#include "Keel/KeelJson.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

std::set<std::uint8_t> QuandaOrdinalSet::toSet() const {
  std::set<std::uint8_t> values;
  for (unsigned value = 0; value < 256; ++value) {
    if (contains(static_cast<std::uint8_t>(value))) {
      values.insert(values.end(), static_cast<std::uint8_t>(value));
    }
  }
  return values;
}

std::string QuandaOrdinalSet::description() const { return keel::describe(toSet()); }

std::ostream& operator<<(std::ostream& stream, const QuandaOrdinalSet& set) {
  return stream << set.description();
}

void nlohmann::adl_serializer<QuandaOrdinalSet>::to_json(nlohmann::json& json,
                                                         const QuandaOrdinalSet& set) {
  json = nlohmann::json::array();
  for (std::uint8_t value : set.toSet()) json.push_back(value);
}

QuandaOrdinalSet nlohmann::adl_serializer<QuandaOrdinalSet>::from_json(const nlohmann::json& json) {
  std::set<std::uint8_t> values;
  for (const nlohmann::json& element : quanda_detail::requireJsonArray(json)) {
    values.insert(keel::decodeJsonInteger<std::uint8_t>(element));
  }
  return QuandaOrdinalSet(values);
}
