#include "Quanda/DateMasks/QuandaDateMasking.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelPrecondition.h"

namespace {
constexpr std::uint32_t lastValidDayCount = QuandaAbstractDate::validDaysSinceDatumRange.max();

void requireWindow(std::uint32_t first, std::uint32_t last) {
  KEEL_PRECONDITION(first <= last && last <= lastValidDayCount,
                    "a date mask search window needs first <= last <= 3652058");
}
}  // namespace

std::optional<QuandaAbstractDate> QuandaDateMasking::nextMatchByDayCount(
    QuandaAbstractDate after, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t day = after.daysSinceDatum();
  if (day >= lastValidDayCount) return std::nullopt;
  const auto found = earliestDayCount(true, day + 1, lastValidDayCount, firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::previousMatchByDayCount(
    QuandaAbstractDate before, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t day = before.daysSinceDatum();
  if (day == 0) return std::nullopt;
  const auto found = latestDayCount(true, 0, day - 1, firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::firstMatch(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const auto found = earliestDayCount(true, range.trueMin().daysSinceDatum(),
                                      range.trueMax().daysSinceDatum(), firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::lastMatch(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const auto found = latestDayCount(true, range.trueMin().daysSinceDatum(),
                                    range.trueMax().daysSinceDatum(), firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

QuandaDateMasking::Matches QuandaDateMasking::matchingDates(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  return Matches(this, range.trueMin().daysSinceDatum(), range.trueMax().daysSinceDatum(),
                 firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::earliestDayCount(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  requireWindow(first, last);
  return findEarliest(matching, first, last, firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::latestDayCount(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  requireWindow(first, last);
  return findLatest(matching, first, last, firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (isMonthLocal_) return quanda_detail::earliestMonthDay(monthDaySets_, matching, first, last);
  for (std::uint32_t day = first;; ++day) {
    if (matches(QuandaAbstractDate::makeFromDaysSinceDatum(day), firstDayOfWeek) == matching) {
      return day;
    }
    if (day == last) return std::nullopt;
  }
}

std::optional<std::uint32_t> QuandaDateMasking::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (isMonthLocal_) return quanda_detail::latestMonthDay(monthDaySets_, matching, first, last);
  for (std::uint32_t day = last;; --day) {
    if (matches(QuandaAbstractDate::makeFromDaysSinceDatum(day), firstDayOfWeek) == matching) {
      return day;
    }
    if (day == first) return std::nullopt;
  }
}

std::string QuandaDateMasking::description() const {
  nlohmann::json json;
  encode(json);
  return std::string(archiveKind()) + " " + json.dump();
}

std::ostream& operator<<(std::ostream& stream, const QuandaDateMasking& mask) {
  return stream << mask.description();
}
