#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelJson.h"
#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {
QuandaCyclePattern makeDays(const std::vector<bool>& days) {
  KEEL_PRECONDITION(!days.empty(), "a day cycle mask needs at least one entry in days");
  return QuandaCyclePattern(days);
}
}  // namespace

QuandaDayCycleDateMask::QuandaDayCycleDateMask(std::uint32_t anchorDaysSinceDatum,
                                               const std::vector<bool>& days)
    : anchorDaysSinceDatum_(anchorDaysSinceDatum),
      days_(makeDays(days)),
      residue_(anchorDaysSinceDatum % days_.length()) {}

std::optional<std::uint32_t> QuandaDayCycleDateMask::findEarliest(bool matching,
                                                                  std::uint32_t first,
                                                                  std::uint32_t last,
                                                                  QuandaDayOfGregorianWeek) const {
  if (!days_.containsValue(matching)) return std::nullopt;
  std::uint32_t day = first;
  if (day < residue_) {
    // Below the residue every day reads entry 0.
    if (days_[0] == matching) return day;
    day = residue_;
    if (day > last) return std::nullopt;
  }
  const std::uint64_t found =
      std::uint64_t{day} + days_.distanceToNext(matching, days_.remainder(day - residue_));
  if (found > last) return std::nullopt;
  return static_cast<std::uint32_t>(found);
}

std::optional<std::uint32_t> QuandaDayCycleDateMask::findLatest(bool matching, std::uint32_t first,
                                                                std::uint32_t last,
                                                                QuandaDayOfGregorianWeek) const {
  if (!days_.containsValue(matching)) return std::nullopt;
  if (last >= residue_) {
    const std::int64_t found =
        std::int64_t{last} - days_.distanceToPrevious(matching, days_.remainder(last - residue_));
    if (found >= std::int64_t{residue_}) {
      if (found < std::int64_t{first}) return std::nullopt;
      return static_cast<std::uint32_t>(found);
    }
  }
  // Nothing from the residue on: the days below it read entry 0.
  if (residue_ == 0 || days_[0] != matching) return std::nullopt;
  const std::uint32_t below = last < residue_ ? last : residue_ - 1;
  if (below < first) return std::nullopt;
  return below;
}

std::uint64_t QuandaDayCycleDateMask::answerWord(const quanda_detail::DayBlock& block,
                                                 std::uint64_t) const {
  const std::uint32_t start = block.start();
  if (start >= residue_) return days_.window(days_.remainder(start - residue_));
  // The days below the residue read entry 0.
  const std::uint32_t below = residue_ - start;
  const std::uint64_t entryZero = days_[0] ? ~std::uint64_t{0} : 0;
  if (below >= quanda_detail::DayBlock::size) return entryZero;
  return (entryZero & ((std::uint64_t{1} << below) - 1)) | days_.window(0) << below;
}

quanda_detail::AnswerRun QuandaDayCycleDateMask::answerRun(std::uint32_t day,
                                                           QuandaDayOfGregorianWeek) const {
  if (day < residue_) return {0, residue_ - 1, 1};
  return {residue_, QuandaAbstractDate::validDaysSinceDatumRange.max(),
          quanda_detail::periodWithin(days_.length())};
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
