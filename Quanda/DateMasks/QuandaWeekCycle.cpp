#include "Quanda/DateMasks/QuandaWeekCycle.h"

namespace {
QuandaCyclePattern makeWeeks(const std::vector<bool>& weeks) {
  KEEL_PRECONDITION(!weeks.empty(), "a week cycle mask needs at least one entry in weeks");
  return QuandaCyclePattern(weeks);
}
}  // namespace

QuandaWeekCycle::QuandaWeekCycle(QuandaAbstractDate anchorDate, const std::vector<bool>& weeks)
    : anchorDate_(anchorDate), weeks_(makeWeeks(weeks)) {
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    residues_[ordinal(day)] = anchorDate.weekNumberAndDay(day).week % weeks_.length();
  }
}

std::array<std::uint32_t, 7> QuandaWeekCycle::firstDaysWithEntry() const noexcept {
  std::array<std::uint32_t, 7> starts{};
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    starts[ordinal(day)] = firstDayWithEntry(day);
  }
  return starts;
}

std::optional<std::uint32_t> QuandaWeekCycle::earliestDayWithEntry(
    bool entry, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (!weeks_.containsValue(entry)) return std::nullopt;
  const std::uint32_t start = firstDayWithEntry(firstDayOfWeek);
  const std::uint32_t day = first > start ? first : start;
  if (day > last) return std::nullopt;
  const std::uint32_t s = shift(firstDayOfWeek);
  const std::uint32_t week = (day + s) / 7U;
  const std::uint32_t ahead =
      weeks_.distanceToNext(entry, weeks_.remainder(week - residue(firstDayOfWeek)));
  if (ahead == 0) return day;
  const std::uint64_t found = 7U * (std::uint64_t{week} + ahead) - s;
  if (found > last) return std::nullopt;
  return static_cast<std::uint32_t>(found);
}

std::optional<std::uint32_t> QuandaWeekCycle::latestDayWithEntry(
    bool entry, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (!weeks_.containsValue(entry)) return std::nullopt;
  if (last < firstDayWithEntry(firstDayOfWeek) || last < first) return std::nullopt;
  const std::uint32_t s = shift(firstDayOfWeek);
  const std::uint32_t week = (last + s) / 7U;
  const std::uint32_t r = residue(firstDayOfWeek);
  const std::uint32_t behind = weeks_.distanceToPrevious(entry, weeks_.remainder(week - r));
  if (behind == 0) return last;
  if (std::int64_t{week} - behind < std::int64_t{r}) return std::nullopt;
  // The last day of week (week - behind).
  const std::uint32_t found = 7U * (week - behind + 1U) - s - 1U;
  if (found < first) return std::nullopt;
  return found;
}
