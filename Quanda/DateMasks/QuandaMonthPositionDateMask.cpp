#include "Quanda/DateMasks/QuandaMonthPositionDateMask.h"

#include <nlohmann/json.hpp>
#include <string>

#include "Quanda/DateMasks/QuandaDateMaskJson.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeeksOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeeksOfMonthDateMask.h"

template <class Rule>
void nlohmann::adl_serializer<QuandaMonthPositionDateMask<Rule>>::to_json(
    nlohmann::json& json, const QuandaMonthPositionDateMask<Rule>& mask) {
  json = nlohmann::json::object();
  if constexpr (Rule::withWeekdays) json["daysOfWeek"] = mask.daysOfWeekSet();
  json[std::string(Rule::positionsKey)] = mask.positionSet();
}

template <class Rule>
QuandaMonthPositionDateMask<Rule>
nlohmann::adl_serializer<QuandaMonthPositionDateMask<Rule>>::from_json(const nlohmann::json& json) {
  const auto positions =
      quanda_detail::requireJsonKey(json, Rule::positionsKey).template get<QuandaOrdinalSet>();
  if constexpr (Rule::withWeekdays) {
    const auto days = quanda_detail::requireJsonKey(json, "daysOfWeek")
                          .template get<QuandaDayOfGregorianWeekSet>();
    return QuandaMonthPositionDateMask<Rule>(days, positions);
  } else {
    return QuandaMonthPositionDateMask<Rule>(positions);
  }
}

template struct nlohmann::adl_serializer<QuandaDaysOfMonthDateMask>;
template struct nlohmann::adl_serializer<QuandaReverseDaysOfMonthDateMask>;
template struct nlohmann::adl_serializer<QuandaWeeksOfMonthDateMask>;
template struct nlohmann::adl_serializer<QuandaReverseWeeksOfMonthDateMask>;
template struct nlohmann::adl_serializer<QuandaWeekdaysOfMonthDateMask>;
template struct nlohmann::adl_serializer<QuandaReverseWeekdaysOfMonthDateMask>;
