#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelJson.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

QuandaDayCycleDateMask::QuandaDayCycleDateMask(std::uint32_t anchorDaysSinceDatum,
                                               const std::vector<bool>& days)
    : days_(anchorDaysSinceDatum, days, "a day cycle mask needs at least one entry in days") {}

quanda_detail::AnswerRun QuandaDayCycleDateMask::answerRun(std::uint32_t day,
                                                           QuandaDayOfGregorianWeek) const {
  const std::uint32_t residue = days_.residue();
  if (day < residue) return {0, residue - 1, 1};
  return {residue, QuandaAbstractDate::validDaysSinceDatumRange.max(),
          quanda_detail::periodWithin(dayCycleLength())};
}

void nlohmann::adl_serializer<QuandaDayCycleDateMask>::to_json(nlohmann::json& json,
                                                               const QuandaDayCycleDateMask& mask) {
  json = {{"anchorDaysSinceDatum", mask.anchorDaysSinceDatum()}, {"days", mask.days()}};
}

QuandaDayCycleDateMask nlohmann::adl_serializer<QuandaDayCycleDateMask>::from_json(
    const nlohmann::json& json) {
  const auto anchor = keel::decodeJsonInteger<std::uint32_t>(
      quanda_detail::requireJsonKey(json, "anchorDaysSinceDatum"));
  const auto days = quanda_detail::requireJsonKey(json, "days").get<std::vector<bool>>();
  if (days.empty()) {
    throw KeelDecodingError("Empty 'days' list: a day cycle needs at least one day");
  }
  return QuandaDayCycleDateMask(anchor, days);
}
