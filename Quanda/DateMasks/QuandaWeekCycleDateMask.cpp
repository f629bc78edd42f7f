#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

void nlohmann::adl_serializer<QuandaWeekCycleDateMask>::to_json(
    nlohmann::json& json, const QuandaWeekCycleDateMask& mask) {
  json = {{"anchorDate", mask.anchorDate()}, {"weeks", mask.weeks()}};
}

QuandaWeekCycleDateMask nlohmann::adl_serializer<QuandaWeekCycleDateMask>::from_json(
    const nlohmann::json& json) {
  const auto anchor = quanda_detail::requireJsonKey(json, "anchorDate").get<QuandaAbstractDate>();
  const auto weeks = quanda_detail::requireJsonKey(json, "weeks").get<std::vector<bool>>();
  if (weeks.empty()) {
    throw KeelDecodingError("Empty 'weeks' list: a week cycle needs at least one week");
  }
  return QuandaWeekCycleDateMask(anchor, weeks);
}
