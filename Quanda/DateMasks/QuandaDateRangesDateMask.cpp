#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelSortedArray.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {

using Range = QuandaDateRangesDateMask::Range;

std::shared_ptr<const std::vector<std::pair<std::uint32_t, std::uint32_t>>> merge(
    const KeelRangeSequence<QuandaAbstractDate>& sequence) {
  auto merged = std::make_shared<std::vector<std::pair<std::uint32_t, std::uint32_t>>>();
  for (const Range& range : sequence.ranges()) {
    const std::uint32_t low = range.lowerBound().daysSinceDatum();
    const std::uint32_t high = range.upperBound().daysSinceDatum();
    if (!merged->empty() && low <= merged->back().second + 1) {
      merged->back().second = std::max(merged->back().second, high);
    } else {
      merged->emplace_back(low, high);
    }
  }
  return merged;
}

}  // namespace

QuandaDateRangesDateMask::QuandaDateRangesDateMask(KeelRangeSequence<QuandaAbstractDate> dateRanges)
    : dateRanges_(std::move(dateRanges)), merged_(merge(dateRanges_)) {}

QuandaDateRangesDateMask::QuandaDateRangesDateMask(std::vector<Range> dateRanges)
    : QuandaDateRangesDateMask(KeelRangeSequence<QuandaAbstractDate>(KeelSortedArray<Range>(
          std::move(dateRanges), std::nullopt, &Range::areInIncreasingOrder))) {}

std::size_t QuandaDateRangesDateMask::firstEndingFrom(std::uint32_t day) const {
  return static_cast<std::size_t>(
      std::partition_point(merged_->begin(), merged_->end(),
                           [day](const Interval& interval) { return interval.second < day; }) -
      merged_->begin());
}

std::optional<std::uint32_t> QuandaDateRangesDateMask::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last, QuandaDayOfGregorianWeek) const {
  const std::size_t index = firstEndingFrom(first);
  const bool inside = index < merged_->size() && (*merged_)[index].first <= first;
  if (matching) {
    if (index == merged_->size()) return std::nullopt;
    const std::uint32_t found = std::max(first, (*merged_)[index].first);
    return found <= last ? std::optional(found) : std::nullopt;
  }
  if (!inside) return first;
  // Merged intervals never touch, so the day after this one is outside every range.
  const std::uint32_t high = (*merged_)[index].second;
  return high < last ? std::optional(high + 1) : std::nullopt;
}

std::optional<std::uint32_t> QuandaDateRangesDateMask::findLatest(bool matching,
                                                                  std::uint32_t first,
                                                                  std::uint32_t last,
                                                                  QuandaDayOfGregorianWeek) const {
  // The last merged interval that starts at or before `last`.
  const auto after =
      std::partition_point(merged_->begin(), merged_->end(),
                           [last](const Interval& interval) { return interval.first <= last; });
  if (after == merged_->begin()) return matching ? std::nullopt : std::optional(last);
  const Interval& interval = *(after - 1);
  if (matching) {
    const std::uint32_t found = std::min(last, interval.second);
    return found >= first ? std::optional(found) : std::nullopt;
  }
  if (interval.second < last) return last;
  return interval.first > first ? std::optional(interval.first - 1) : std::nullopt;
}

std::uint64_t QuandaDateRangesDateMask::answerWord(const quanda_detail::DayBlock& block,
                                                   std::uint64_t) const {
  const std::uint32_t start = block.start();
  if (merged_->empty() || merged_->back().second < start || merged_->front().first > start + 63) {
    return 0;
  }
  std::uint64_t days = 0;
  for (std::size_t index = firstEndingFrom(start);
       index < merged_->size() && (*merged_)[index].first <= start + 63; ++index) {
    days |= quanda_detail::daysInInterval(start, (*merged_)[index].first, (*merged_)[index].second);
  }
  return days;
}

quanda_detail::AnswerRun QuandaDateRangesDateMask::answerRun(std::uint32_t day,
                                                             QuandaDayOfGregorianWeek) const {
  const std::size_t index = firstEndingFrom(day);
  const std::uint32_t gapStart = index == 0 ? 0 : (*merged_)[index - 1].second + 1;
  if (index == merged_->size()) {
    return {gapStart, QuandaAbstractDate::validDaysSinceDatumRange.max(), 1};
  }
  const Interval& interval = (*merged_)[index];
  if (interval.first <= day) return {interval.first, interval.second, 1};
  return {gapStart, interval.first - 1, 1};
}

void nlohmann::adl_serializer<QuandaDateRangesDateMask>::to_json(
    nlohmann::json& json, const QuandaDateRangesDateMask& mask) {
  nlohmann::json ranges = nlohmann::json::array();
  for (const Range& range : mask.dateRanges().ranges()) {
    ranges.push_back({{"lowerBound", range.lowerBound()}, {"upperBound", range.upperBound()}});
  }
  json = {{"dateRanges", std::move(ranges)}};
}

QuandaDateRangesDateMask nlohmann::adl_serializer<QuandaDateRangesDateMask>::from_json(
    const nlohmann::json& json) {
  std::vector<Range> ranges;
  for (const nlohmann::json& range :
       quanda_detail::requireJsonArray(quanda_detail::requireJsonKey(json, "dateRanges"))) {
    const auto lower = quanda_detail::requireJsonKey(range, "lowerBound").get<QuandaAbstractDate>();
    const auto upper = quanda_detail::requireJsonKey(range, "upperBound").get<QuandaAbstractDate>();
    if (upper < lower) {
      throw KeelDecodingError("Date range with lowerBound after upperBound");
    }
    ranges.emplace_back(lower, upper);
  }
  return QuandaDateRangesDateMask(std::move(ranges));
}
