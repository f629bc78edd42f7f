#include "Quanda/DateMasks/QuandaMonthsOfYearDateMask.h"

#include <nlohmann/json.hpp>

void nlohmann::adl_serializer<QuandaMonthsOfYearDateMask>::to_json(
    nlohmann::json& json, const QuandaMonthsOfYearDateMask& mask) {
  json = mask.monthSet();
}

QuandaMonthsOfYearDateMask nlohmann::adl_serializer<QuandaMonthsOfYearDateMask>::from_json(
    const nlohmann::json& json) {
  return QuandaMonthsOfYearDateMask(json.get<QuandaOrdinalSet>());
}
