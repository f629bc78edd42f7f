#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Quanda/DateMasks/QuandaDateMaskJson.h"

std::optional<std::uint32_t> QuandaDateRangeDateMask::findEarliest(bool matching,
                                                                   std::uint32_t first,
                                                                   std::uint32_t last,
                                                                   QuandaDayOfGregorianWeek) const {
  if (matching) {
    const std::uint32_t found = std::max(first, low_);
    return found <= std::min(last, high_) ? std::optional(found) : std::nullopt;
  }
  if (first < low_ || first > high_) return first;
  return high_ < last ? std::optional(high_ + 1) : std::nullopt;
}

std::optional<std::uint32_t> QuandaDateRangeDateMask::findLatest(bool matching, std::uint32_t first,
                                                                 std::uint32_t last,
                                                                 QuandaDayOfGregorianWeek) const {
  if (matching) {
    const std::uint32_t found = std::min(last, high_);
    return found >= std::max(first, low_) ? std::optional(found) : std::nullopt;
  }
  if (last < low_ || last > high_) return last;
  return low_ > first ? std::optional(low_ - 1) : std::nullopt;
}

std::uint64_t QuandaDateRangeDateMask::answerWord(const quanda_detail::DayBlock& block,
                                                  std::uint64_t) const {
  return quanda_detail::daysInInterval(block.start(), low_, high_);
}

quanda_detail::AnswerRun QuandaDateRangeDateMask::answerRun(std::uint32_t day,
                                                            QuandaDayOfGregorianWeek) const {
  if (day < low_) return {0, low_ - 1, 1};
  if (day <= high_) return {low_, high_, 1};
  return {high_ + 1, QuandaAbstractDate::validDaysSinceDatumRange.max(), 1};
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
