#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Quanda/DateMasks/QuandaDateMaskJson.h"

std::optional<std::uint32_t> QuandaDateRangeDateMask::findEarliest(bool matching,
                                                                   std::uint32_t first,
                                                                   std::uint32_t last,
                                                                   QuandaDayOfGregorianWeek) const {
  const std::uint32_t low = dateRangeInc_.trueMin().daysSinceDatum();
  const std::uint32_t high = dateRangeInc_.trueMax().daysSinceDatum();
  if (matching) {
    const std::uint32_t found = std::max(first, low);
    return found <= std::min(last, high) ? std::optional(found) : std::nullopt;
  }
  if (first < low || first > high) return first;
  return high < last ? std::optional(high + 1) : std::nullopt;
}

std::optional<std::uint32_t> QuandaDateRangeDateMask::findLatest(bool matching, std::uint32_t first,
                                                                 std::uint32_t last,
                                                                 QuandaDayOfGregorianWeek) const {
  const std::uint32_t low = dateRangeInc_.trueMin().daysSinceDatum();
  const std::uint32_t high = dateRangeInc_.trueMax().daysSinceDatum();
  if (matching) {
    const std::uint32_t found = std::min(last, high);
    return found >= std::max(first, low) ? std::optional(found) : std::nullopt;
  }
  if (last < low || last > high) return last;
  return low > first ? std::optional(low - 1) : std::nullopt;
}

std::uint64_t QuandaDateRangeDateMask::answerWord(const quanda_detail::DayBlock& block,
                                                  std::uint64_t) const {
  return quanda_detail::daysInInterval(block.start(), dateRangeInc_.trueMin().daysSinceDatum(),
                                       dateRangeInc_.trueMax().daysSinceDatum());
}

quanda_detail::AnswerRun QuandaDateRangeDateMask::answerRun(std::uint32_t day,
                                                            QuandaDayOfGregorianWeek) const {
  const std::uint32_t low = dateRangeInc_.trueMin().daysSinceDatum();
  const std::uint32_t high = dateRangeInc_.trueMax().daysSinceDatum();
  if (day < low) return {0, low - 1, 1};
  if (day <= high) return {low, high, 1};
  return {high + 1, QuandaAbstractDate::validDaysSinceDatumRange.max(), 1};
}

void nlohmann::adl_serializer<QuandaDateRangeDateMask>::to_json(
    nlohmann::json& json, const QuandaDateRangeDateMask& mask) {
  json = {
      {"dateRangeInc", {{"min", mask.dateRangeInc().min()}, {"max", mask.dateRangeInc().max()}}}};
}

QuandaDateRangeDateMask nlohmann::adl_serializer<QuandaDateRangeDateMask>::from_json(
    const nlohmann::json& json) {
  const nlohmann::json& range = quanda_detail::requireJsonKey(json, "dateRangeInc");
  return QuandaDateRangeDateMask(KeelDomain<QuandaAbstractDate>(
      quanda_detail::requireJsonKey(range, "min").get<QuandaAbstractDate>(),
      quanda_detail::requireJsonKey(range, "max").get<QuandaAbstractDate>()));
}
