// QuandaWeekCycle: a pattern of weeks repeated with a fixed period from the week of an anchor
// date, the rule shared by QuandaWeekCycleDateMask and QuandaDaysOfWeeksDateMask.
//
// Weeks are the preferred weeks of QuandaAbstractDate::weekNumberAndDay: they begin on the user's
// first day of the week and are counted from the week holding 0001-01-01, so the same cycle can
// answer differently for a Monday-first and a Sunday-first user. With A the anchor's week, n the
// pattern's length and r = A mod n, a date of week W reads entry (W - r) mod n; a week below r
// (only possible in the first n weeks after 0001-01-01) has no entry, and testing a date there is
// a programming error. Searches never report such dates: for them the rule starts at week r, the
// first day of the masks' domain (QuandaDateMasking::domain).
//
// The residues of the seven possible first days of the week are computed once, so a test is a
// division by 7, a remainder and a bit; the answers of 64 days are the entries of the ten weeks
// they touch, each spread over its seven days.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "Keel/KeelPrecondition.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaCyclePattern.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"

class QuandaWeekCycle {
 public:
  // An empty `weeks`, or more entries than 32 bits count, is a programming error.
  QuandaWeekCycle(QuandaAbstractDate anchorDate, const std::vector<bool>& weeks);

  QuandaAbstractDate anchorDate() const noexcept { return anchorDate_; }
  std::uint32_t length() const noexcept { return weeks_.length(); }
  const QuandaCyclePattern& pattern() const noexcept { return weeks_; }

  // Days to add to a day count before dividing by 7 to get the preferred week.
  static constexpr std::uint32_t shift(QuandaDayOfGregorianWeek firstDayOfWeek) noexcept {
    return (7U - ordinal(firstDayOfWeek)) % 7U;
  }
  std::uint32_t residue(QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept {
    return residues_[ordinal(firstDayOfWeek)];
  }
  // The first day count that has an entry: the first day of week r (0 when that week holds
  // 0001-01-01).
  std::uint32_t firstDayWithEntry(QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept {
    const std::uint32_t start = 7U * residue(firstDayOfWeek);
    return start > shift(firstDayOfWeek) ? start - shift(firstDayOfWeek) : 0;
  }

  // firstDayWithEntry for each first day of the week, by ordinal.
  std::array<std::uint32_t, 7> firstDaysWithEntry() const noexcept;

  // The entry of the week holding this day count; a week below the residue is a programming
  // error.
  bool entryOf(std::uint32_t daysSinceDatum, QuandaDayOfGregorianWeek firstDayOfWeek) const {
    const std::uint32_t week = (daysSinceDatum + shift(firstDayOfWeek)) / 7U;
    const std::uint32_t r = residue(firstDayOfWeek);
    KEEL_PRECONDITION(week >= r, quanda_detail::dateBeforeDomainMessage);
    return weeks_[weeks_.remainder(week - r)];
  }

  // The days of a block whose week's entry is true; days before the first day with an entry read
  // anything.
  std::uint64_t daysWithEntry(const quanda_detail::DayBlock& block) const noexcept {
    const std::uint32_t r = residue(block.firstDayOfWeek());
    const std::uint32_t week = block.week();
    return block.daysOfWeeks(weeks_.window(week >= r ? weeks_.remainder(week - r) : 0));
  }
  // The run of the masks: nothing before the first day with an entry, the pattern's period of
  // 7 * length days from it on.
  quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                     QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept {
    const std::uint32_t start = firstDayWithEntry(firstDayOfWeek);
    if (day < start) return {0, start - 1, 1};
    return {start, QuandaAbstractDate::validDaysSinceDatumRange.max(),
            quanda_detail::periodWithin(std::uint64_t{7} * weeks_.length())};
  }

  // The earliest (latest) day in first...last, from the first day with an entry on, whose week's
  // entry is `entry`.
  std::optional<std::uint32_t> earliestDayWithEntry(bool entry, std::uint32_t first,
                                                    std::uint32_t last,
                                                    QuandaDayOfGregorianWeek firstDayOfWeek) const;
  std::optional<std::uint32_t> latestDayWithEntry(bool entry, std::uint32_t first,
                                                  std::uint32_t last,
                                                  QuandaDayOfGregorianWeek firstDayOfWeek) const;

  friend bool operator==(const QuandaWeekCycle& lhs, const QuandaWeekCycle& rhs) noexcept {
    return lhs.anchorDate_ == rhs.anchorDate_ && lhs.weeks_ == rhs.weeks_;
  }

 private:
  QuandaAbstractDate anchorDate_;
  QuandaCyclePattern weeks_;
  std::array<std::uint32_t, 7> residues_{};  // by ordinal of the first day of the week
};

template <>
struct std::hash<QuandaWeekCycle> {
  std::size_t operator()(const QuandaWeekCycle& cycle) const noexcept {
    return keel::hashFields(cycle.anchorDate(), cycle.length(), cycle.pattern());
  }
};
