// QuandaMonthPositionDateMask<Rule>: the masks that select dates by their position in the month,
// counted from the 1st or from the last day, in days or in seven-day blocks, alone or together
// with a set of weekdays. Six masks of the library are this one template with a different Rule:
//
// clang-format off
//   QuandaDaysOfMonthDateMask              the day of the month is in oneBasedOrdinals
//   QuandaReverseDaysOfMonthDateMask       the day counted from the month's end (1 = last day) is
//                                          in oneBasedOrdinals
//   QuandaWeeksOfMonthDateMask             the week of the month (days 1-7 = 1, 8-14 = 2, ...) is
//                                          in oneBasedWeeks
//   QuandaReverseWeeksOfMonthDateMask      the week counted from the end (last 7 days = 1) is in
//                                          oneBasedWeeks
//   QuandaWeekdaysOfMonthDateMask          the weekday is in daysOfWeek and the week is in
//                                          oneBasedWeeks (second Tuesday: {tuesday}, {2})
//   QuandaReverseWeekdaysOfMonthDateMask   the same with weeks from the end (last Friday)
// clang-format on
//
// Weeks here are seven-day blocks of the month, not calendar weeks: no mask of this family
// consults the preferred first day of the week. Positions a month does not reach (31 in April,
// 29 in a common February, week 5 in it) simply do not match there; 0 and numbers above the
// month's reach are kept in the sets but never match a valid date.
//
// The sets are bit sets: a test is a division by a constant at most, a shift and an AND, and the
// weekday test comes first, so the position is not computed for a weekday outside the set. Every
// mask of the family is month-local: it keeps, from its construction, the 32-bit set of days it
// selects in each kind of month (month of the year, length, weekday of the 1st), and its searches
// take the lowest day of that set in the first month that has one (see QuandaDateMasking).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string_view>

#include "Keel/KeelHash.h"
#include "Quanda/DateMasks/QuandaDateMaskBase.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"
#include "Quanda/DateMasks/QuandaDayOfGregorianWeekSet.h"
#include "Quanda/DateMasks/QuandaOrdinalSet.h"

// A Rule names the mask and says how it counts:
// clang-format off
//   static constexpr std::string_view kind;          tag in the tagged archive
//   static constexpr std::string_view positionsKey;  "oneBasedOrdinals" or "oneBasedWeeks"
//   static constexpr std::uint32_t blockLength;      1 (days) or 7 (weeks)
//   static constexpr bool fromEnd;                   counted from the month's last day
//   static constexpr bool withWeekdays;              also requires the weekday to be in a set
// clang-format on
template <class Rule>
class QuandaMonthPositionDateMask final
    : public QuandaDateMaskBase<QuandaMonthPositionDateMask<Rule>> {
 public:
  static constexpr std::string_view kind = Rule::kind;
  static constexpr bool countsWeeks = Rule::blockLength == 7;

  // The day masks (oneBasedOrdinals) and the week masks (oneBasedWeeks), from a std::set<uint8_t>
  // or a braced list.
  explicit QuandaMonthPositionDateMask(QuandaOrdinalSet positions) noexcept
      requires(!Rule::withWeekdays)
      : QuandaMonthPositionDateMask(QuandaDayOfGregorianWeekSet::all(), positions, Tag{}) {}
  // The weekday masks: daysOfWeek and oneBasedWeeks.
  QuandaMonthPositionDateMask(QuandaDayOfGregorianWeekSet daysOfWeek,
                              QuandaOrdinalSet oneBasedWeeks) noexcept requires(Rule::withWeekdays)
      : QuandaMonthPositionDateMask(daysOfWeek, oneBasedWeeks, Tag{}) {}

  std::set<std::uint8_t> oneBasedOrdinals() const requires(!countsWeeks) {
    return positions_.toSet();
  }
  std::set<std::uint8_t> oneBasedWeeks() const requires(countsWeeks) { return positions_.toSet(); }
  std::set<QuandaDayOfGregorianWeek> daysOfWeek() const requires(Rule::withWeekdays) {
    return daysOfWeek_.toSet();
  }
  // The stored sets as bit sets.
  const QuandaOrdinalSet& positionSet() const noexcept { return positions_; }
  QuandaDayOfGregorianWeekSet daysOfWeekSet() const noexcept { return daysOfWeek_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    if constexpr (Rule::withWeekdays) {
      if (!daysOfWeek_.containsOrdinal(date.daysSinceDatum() % 7)) return false;
    }
    // The one-based block: (day - 1) / length + 1, written so that the day 0 a date can be
    // replaced with reads block 0 rather than wrapping around.
    std::uint32_t block = 0;
    if constexpr (Rule::fromEnd) {
      block = (std::uint32_t{date.daysInMonth()} - date.day()) / Rule::blockLength + 1;
    } else {
      block = (date.day() + Rule::blockLength - 1) / Rule::blockLength;
    }
    return (positions_.lowBits() >> block) & 1U;
  }

 public:
  friend bool operator==(const QuandaMonthPositionDateMask& lhs,
                         const QuandaMonthPositionDateMask& rhs) noexcept {
    return lhs.daysOfWeek_ == rhs.daysOfWeek_ && lhs.positions_ == rhs.positions_;
  }

 private:
  struct Tag {};
  QuandaMonthPositionDateMask(QuandaDayOfGregorianWeekSet daysOfWeek, QuandaOrdinalSet positions,
                              Tag) noexcept
      : daysOfWeek_(daysOfWeek), positions_(positions) {
    std::uint32_t daysByLength[4] = {};
    for (std::uint32_t length = 28; length <= 31; ++length) {
      daysByLength[length - 28] = quanda_detail::daysInBlocks(
          positions.lowBits(), Rule::blockLength, Rule::fromEnd, length);
    }
    this->setMonthDaySets(
        quanda_detail::MonthDaySets::make([&](const quanda_detail::MonthShape& shape) {
          std::uint32_t days = daysByLength[shape.length - 28];
          if constexpr (Rule::withWeekdays) {
            days &= quanda_detail::daysOnWeekdays(daysOfWeek.bits(), shape.weekdayOfFirst);
          }
          return days;
        }));
  }

  QuandaDayOfGregorianWeekSet daysOfWeek_;  // all seven days for the masks without weekdays
  QuandaOrdinalSet positions_;
};

template <class Rule>
struct std::hash<QuandaMonthPositionDateMask<Rule>> {
  std::size_t operator()(const QuandaMonthPositionDateMask<Rule>& mask) const noexcept {
    if constexpr (Rule::withWeekdays) {
      return keel::hashFields(mask.daysOfWeekSet(), mask.positionSet());
    } else {
      return keel::hashFields(mask.positionSet());
    }
  }
};

// A keyed record: {"oneBasedOrdinals": [...]} or {"oneBasedWeeks": [...]}, and for the weekday
// masks also "daysOfWeek": [...].
template <class Rule>
struct nlohmann::adl_serializer<QuandaMonthPositionDateMask<Rule>> {
  static void to_json(nlohmann::json& json, const QuandaMonthPositionDateMask<Rule>& mask);
  static QuandaMonthPositionDateMask<Rule> from_json(const nlohmann::json& json);
};
