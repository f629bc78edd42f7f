#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Keel/KeelDecodingError.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"

namespace {
std::optional<std::uint32_t> earlier(std::optional<std::uint32_t> a,
                                     std::optional<std::uint32_t> b) {
  if (!a) return b;
  if (!b) return a;
  return std::min(*a, *b);
}
std::optional<std::uint32_t> later(std::optional<std::uint32_t> a, std::optional<std::uint32_t> b) {
  if (!a) return b;
  if (!b) return a;
  return std::max(*a, *b);
}
}  // namespace

// A match is a wanted weekday inside a week whose entry is true: find the first such week, then
// the first wanted weekday in it. Only the first week found can be cut short (by `first`), so the
// second week found always holds one.
std::optional<std::uint32_t> QuandaDaysOfWeeksDateMask::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t start = std::max(first, cycle_.firstDayWithEntry(firstDayOfWeek));
  if (start > last) return std::nullopt;
  if (!matching) {
    // A date misses when its week is off or its weekday is not wanted.
    return earlier(cycle_.earliestDayWithEntry(false, start, last, firstDayOfWeek),
                   quanda_detail::earliestWeekday(daysOfWeek_.complement().bits(), start, last));
  }
  if (daysOfWeek_.isEmpty()) return std::nullopt;
  const std::uint32_t shift = QuandaWeekCycle::shift(firstDayOfWeek);
  std::uint32_t from = start;
  for (int round = 0; round < 3; ++round) {
    const auto inWeek = cycle_.earliestDayWithEntry(true, from, last, firstDayOfWeek);
    if (!inWeek) return std::nullopt;
    const std::uint32_t weekEnd = ((*inWeek + shift) / 7U + 1U) * 7U - shift - 1U;
    if (const auto found =
            quanda_detail::earliestWeekday(daysOfWeek_.bits(), *inWeek, std::min(weekEnd, last))) {
      return found;
    }
    if (weekEnd >= last) return std::nullopt;
    from = weekEnd + 1;
  }
  return std::nullopt;
}

std::optional<std::uint32_t> QuandaDaysOfWeeksDateMask::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t start = std::max(first, cycle_.firstDayWithEntry(firstDayOfWeek));
  if (start > last) return std::nullopt;
  if (!matching) {
    return later(cycle_.latestDayWithEntry(false, start, last, firstDayOfWeek),
                 quanda_detail::latestWeekday(daysOfWeek_.complement().bits(), start, last));
  }
  if (daysOfWeek_.isEmpty()) return std::nullopt;
  const std::uint32_t shift = QuandaWeekCycle::shift(firstDayOfWeek);
  std::uint32_t through = last;
  for (int round = 0; round < 3; ++round) {
    const auto inWeek = cycle_.latestDayWithEntry(true, start, through, firstDayOfWeek);
    if (!inWeek) return std::nullopt;
    const std::uint32_t weekFirst = (*inWeek + shift) / 7U * 7U;
    const std::uint32_t weekStart = std::max(weekFirst > shift ? weekFirst - shift : 0U, start);
    if (const auto found = quanda_detail::latestWeekday(daysOfWeek_.bits(), weekStart, *inWeek)) {
      return found;
    }
    if (weekStart <= start) return std::nullopt;
    through = weekStart - 1;
  }
  return std::nullopt;
}

void nlohmann::adl_serializer<QuandaDaysOfWeeksDateMask>::to_json(
    nlohmann::json& json, const QuandaDaysOfWeeksDateMask& mask) {
  json = {{"anchorDate", mask.anchorDate()},
          {"daysOfWeek", mask.daysOfWeekSet()},
          {"weeks", mask.weeks()}};
}

QuandaDaysOfWeeksDateMask nlohmann::adl_serializer<QuandaDaysOfWeeksDateMask>::from_json(
    const nlohmann::json& json) {
  const auto anchor = quanda_detail::requireJsonKey(json, "anchorDate").get<QuandaAbstractDate>();
  const auto days =
      quanda_detail::requireJsonKey(json, "daysOfWeek").get<QuandaDayOfGregorianWeekSet>();
  const auto weeks = quanda_detail::requireJsonKey(json, "weeks").get<std::vector<bool>>();
  if (weeks.empty()) {
    throw KeelDecodingError("Empty 'weeks' list: a week cycle needs at least one week");
  }
  return QuandaDaysOfWeeksDateMask(anchor, days, weeks);
}
