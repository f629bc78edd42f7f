// QuandaAbstractDate: a calendar date that belongs to no time zone.
//
// A year, a month and a day of the proleptic Gregorian calendar, from 0001-01-01 to 9999-12-31.
// All day arithmetic runs on a day count from a fixed datum: 0001-01-01 is day 0 (a Monday) and
// 9999-12-31 is day 3652058. Converting between a date and its day count takes a handful of
// multiplications and shifts, no loops and no tables, so adding days, comparing distances and
// finding weekdays are O(1).
//
//   auto date = QuandaAbstractDate::make(2024, 2, 29).value();
//   date.addingDays(1);                  // 2024-03-01
//   date.addingMonths(1);                // 2024-03-29
//   date.dayOfWeek();                    // thursday
//   date.serializeToIso8601String();     // "2024-02-29"
//
// A date can only be made valid: the factories validate and report failures as KeelResult errors
// with their arguments; the counting factories clamp into the valid range instead of failing.
// Two month and year operations keep deliberate quirks, documented where they are declared.
//
// Two operations can step just outside the valid dates, deliberately: addingMonths back from
// January of year 1 reaches December of year 0, and replacing with a day override of 0 keeps
// day 0 (which stands for the last day of the month before). Such a value keeps working fields,
// text, equality, ordering, month lengths (year 0 is a leap year) and the field-wise steps
// (nextDay, previousDay, beginningOfMonth, endOfMonth, addingMonths, addingYears, replacing).
// What its result type cannot hold stops the process, as unsigned arithmetic would: the day count
// of any date in year 0 and of 0001-01-00 (they lie before the datum), and with it everything
// counted on it (dayOfWeek, week numbers, cycles, addingDays, asDouble, the date-times' seconds
// since the datum and their order); and the week of the month of day 0 (day - 1 underflows).
//
// The value is 4 bytes (day, month, year), trivially copyable, ordered as the calendar is, and
// archived in JSON as its packed yyyymmdd number (20240305).
#pragma once

#include <bit>
#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelDomain.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelOverride.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelResult.h"
#include "Quanda/QuandaConstants.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

class QuandaAbstractNaturalDateTime;
class QuandaAbstractRealDateTime;

// The library's own searches derive fields that are valid by construction and need the date made
// from them without checking again; only they may do so.
struct QuandaAbstractDateFieldsAccess;

class QuandaAbstractDate {
 public:
  // The unvalidated fields, as exchanged with the calendar adapter and taken by make(components).
  struct Components {
    std::uint16_t year = 0;
    std::uint8_t month = 0;
    std::uint8_t day = 0;

    std::string description() const;
    friend constexpr bool operator==(const Components&, const Components&) = default;
  };

  // Optional amounts for adding(...): applied as years, then months, then days.
  // The members are default-initialised explicitly so that designated initialisers naming only
  // some of them ({.days = 1}) compile without missing-initializer warnings.
  struct Amounts {
    std::optional<std::int16_t> years{};
    std::optional<std::int32_t> months{};
    std::optional<std::int32_t> days{};
  };

  // Optional field overrides for replacing(...).
  struct Replacement {
    KeelOverride<std::uint16_t> year{};
    KeelOverride<std::uint8_t> month{};
    KeelOverride<std::uint8_t> day{};
  };

  // A week number counted from the week holding the datum, and the 0-based position of the date
  // in that week (0 being the preferred first day of the week).
  struct WeekNumberAndDay {
    std::uint32_t week = 0;
    std::uint8_t zeroBasedDayOfWeek = 0;
    friend constexpr bool operator==(const WeekNumberAndDay&, const WeekNumberAndDay&) = default;
  };

  static constexpr std::string_view sourcePath = "Quanda/Abstract/QuandaAbstractDate";

  static constexpr KeelDomain<std::uint16_t> validYearRange{1, 9999};
  static constexpr KeelDomain<std::uint8_t> validMonthRange =
      Quanda::MonthsIn::Gregorian::Year::validOneBasedDomain;
  static constexpr KeelDomain<std::uint32_t> validDaysSinceDatumRange{0, 3652058};
  static const KeelDomain<QuandaAbstractDate> validRange;  // 0001-01-01 ... 9999-12-31
  static const QuandaAbstractDate zero;                    // 0001-01-01, day count 0
  static constexpr std::uint64_t minIso8601Numeric = 10101;
  static constexpr std::uint64_t maxIso8601Numeric = 99991231;

  // ---- Making dates --------------------------------------------------------------------------

  // Checks, in order: year in 1...9999 ("Invalid year"), month in 1...12 ("Invalid month"), day in
  // 1...length of the month ("Invalid day for month in year").
  static KeelResult<QuandaAbstractDate> make(std::uint16_t year, std::uint8_t month,
                                             std::uint8_t day);
  static KeelResult<QuandaAbstractDate> make(const Components& components);
  // The same checks at compile time; nothing for an invalid date.
  static constexpr std::optional<QuandaAbstractDate> makeIfValid(std::uint16_t year,
                                                                 std::uint8_t month,
                                                                 std::uint8_t day) noexcept;
  // Never fails: counts above 3652058 give 9999-12-31.
  static constexpr QuandaAbstractDate makeFromDaysSinceDatum(std::uint32_t daysSinceDatum) noexcept;
  // yyyymmdd, 10101 ... 99991231, then the field checks.
  static KeelResult<QuandaAbstractDate> makeFromIso8601Numeric(std::uint64_t iso8601Numeric);
  // Three "-"-separated decimal tokens; digit counts are not checked ("2024-3-5" is 2024-03-05).
  static KeelResult<QuandaAbstractDate> makeFromIso8601String(std::string_view iso8601String);
  // Exactly eight characters, yyyymmdd.
  static KeelResult<QuandaAbstractDate> makeFromIso8601StringWithoutSeparators(
      std::string_view iso8601String);
  // The date of the day count nearest to a double position. A negative, non-finite or too large
  // position (2^32 or more after rounding) is a programming error.
  static QuandaAbstractDate makeFromDouble(double daysSinceDatum);

  // Interoperation with <chrono>: any valid date in range converts; anything else is an error.
  static KeelResult<QuandaAbstractDate> make(std::chrono::year_month_day yearMonthDay);
  static KeelResult<QuandaAbstractDate> make(std::chrono::sys_days sysDays);
  constexpr std::chrono::year_month_day yearMonthDay() const noexcept;
  constexpr std::chrono::sys_days sysDays() const noexcept;

  // ---- Fields and serialised forms -----------------------------------------------------------

  constexpr std::uint16_t year() const noexcept { return year_; }
  constexpr std::uint8_t month() const noexcept { return month_; }
  constexpr std::uint8_t day() const noexcept { return day_; }
  constexpr Components components() const noexcept { return {year_, month_, day_}; }

  // "%04d-%02d-%02d": 0005-07-09. description() is the same text.
  std::string serializeToIso8601String() const;
  std::string description() const { return serializeToIso8601String(); }
  // year * 10000 + month * 100 + day: 20240305.
  constexpr std::uint64_t serializeToIso8601Numeric() const noexcept {
    return std::uint64_t{year_} * 10000 + std::uint64_t{month_} * 100 + day_;
  }

  // ---- Counting ------------------------------------------------------------------------------

  // Days from 0001-01-01 (day 0) to this date. A date in year 0, or 0001-01-00, lies before the
  // datum: its count does not fit and asking for it is a programming error.
  constexpr std::uint32_t daysSinceDatum() const noexcept;
  // Whether the date has a day count: false only for the dates before the datum that addingMonths
  // and replacing can reach (see above).
  constexpr bool hasDayCount() const noexcept {
    return orderKey() > QuandaAbstractDate(1, 1, 0).orderKey();
  }
  // The day count of 1 January of a year (year 0 counts as year 1).
  static constexpr std::uint32_t daysFromDatumUntilBeginningOf(std::uint16_t year) noexcept;
  // This date's day count minus the other's, and its magnitude.
  constexpr std::int64_t daysSince(QuandaAbstractDate other) const noexcept {
    return std::int64_t{daysSinceDatum()} - std::int64_t{other.daysSinceDatum()};
  }
  constexpr std::uint64_t absoluteDaysSince(QuandaAbstractDate other) const noexcept {
    const std::int64_t days = daysSince(other);
    return static_cast<std::uint64_t>(days < 0 ? -days : days);
  }
  // floor((daysSinceDatum + 1) / 7): Monday-based weeks counted so that the first Sunday begins
  // week 1.
  constexpr std::uint64_t weeksSinceDatum() const noexcept {
    return (std::uint64_t{daysSinceDatum()} + 1) / 7;
  }
  constexpr QuandaDayOfGregorianWeek dayOfWeek() const noexcept {
    return static_cast<QuandaDayOfGregorianWeek>(daysSinceDatum() % 7);
  }
  // Weeks that begin on the preferred first day, counted from the week holding the datum.
  constexpr WeekNumberAndDay weekNumberAndDay(
      QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept;

  constexpr std::uint8_t daysInMonth() const noexcept {
    return Quanda::DaysIn::Gregorian::oneBasedMonth(month_, year_);
  }
  // Seven-day blocks from the 1st (days 1-7 are week 0) and from the last day of the month. Day 0
  // has no block from the 1st: asking for it is a programming error.
  constexpr std::uint8_t weekOfMonthZeroBased() const noexcept {
    KEEL_PRECONDITION(day_ >= 1, "week of the month of day 0");
    return (day_ - 1) / 7;
  }
  constexpr std::uint8_t weekOfMonthOneBased() const noexcept { return weekOfMonthZeroBased() + 1; }
  constexpr std::uint8_t weekFromEndOfMonthZeroBased() const noexcept {
    return (daysInMonth() - day_) / 7;
  }
  constexpr std::uint8_t weekFromEndOfMonthOneBased() const noexcept {
    return weekFromEndOfMonthZeroBased() + 1;
  }
  // The last day of the month is 0 (one-based: 1).
  constexpr std::uint8_t daysFromEndOfMonthZeroBased() const noexcept {
    return daysInMonth() - day_;
  }
  constexpr std::uint8_t daysFromEndOfMonthOneBased() const noexcept {
    return daysFromEndOfMonthZeroBased() + 1;
  }

  // The date's 0-based position in a cycle of `length` days whose day 0 is the anchor (and every
  // date a multiple of `length` days from it). Dates whose day count is below the anchor's
  // residue (only possible in the first cycle after the datum) are deliberately position 0.
  // A length of 0 is a programming error.
  constexpr std::uint32_t dayOfCycle(std::uint32_t length, QuandaAbstractDate anchor) const;
  constexpr std::uint32_t dayOfCycleRelativeToAnchorDaysSinceDatum(
      std::uint32_t length, std::uint32_t anchorDaysSinceDatum) const;
  // The date's 0-based position in a cycle of `length` weeks (preferred weeks, see
  // weekNumberAndDay) whose week 0 holds the anchor. Unlike the day cycle, a date whose week is
  // below the anchor's residue is a programming error, as is a length of 0.
  constexpr std::uint32_t weekOfCycle(std::uint32_t length, QuandaAbstractDate anchor,
                                      QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const;
  constexpr std::uint32_t weekOfCycleRelativeToAnchorWeekNumber(
      std::uint32_t length, std::uint32_t anchorWeekNumber,
      QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const;

  // The number of rows the month occupies in a calendar grid of preferred weeks (4 to 6).
  static KeelResult<std::uint8_t> calendarWeeksIn(std::uint16_t year, std::uint8_t month,
                                                  QuandaDayOfGregorianWeek preferredFirstDayOfWeek);

  // ---- Stepping ------------------------------------------------------------------------------

  // Moving past 0001-01-01 or 9999-12-31 is a programming error for the day steps.
  constexpr QuandaAbstractDate nextDay() const;
  constexpr QuandaAbstractDate previousDay() const;
  constexpr QuandaAbstractDate nextUp() const { return nextDay(); }
  constexpr QuandaAbstractDate nextDown() const { return previousDay(); }
  constexpr double asDouble() const noexcept { return static_cast<double>(daysSinceDatum()); }

  constexpr QuandaAbstractDate beginningOfMonth() const noexcept { return {year_, month_, 1}; }
  constexpr QuandaAbstractDate endOfMonth() const noexcept {
    return {year_, month_, daysInMonth()};
  }
  // The first and last day of the preferred week that holds this date.
  constexpr QuandaAbstractDate firstDayOfWeek(
      QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const;
  constexpr QuandaAbstractDate lastDayOfWeekInc(
      QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const;

  // The calendar date `days` days away; leaving 0001-01-01...9999-12-31 is a programming error.
  constexpr QuandaAbstractDate addingDays(std::int32_t days) const;
  // Month arithmetic with the day limited to the new month's length. Deliberate quirks: that length
  // is taken with the leap status of the year the date had BEFORE the addition, so 2024-01-31 plus
  // 13 months is 2025-02-29; and the year is unsigned, not limited to the valid years, so stepping
  // back from January of year 1 reaches December of year 0 and years past 9999 are kept as
  // computed. Only a year outside 0...65535 is a programming error.
  constexpr QuandaAbstractDate addingMonths(std::int32_t months) const;
  // The year moves by `years` (the sum must fit 16 signed bits) and is raised to at least 1; the
  // day is limited to the month's length in the new year (2024-02-29 plus one year is 2025-02-28).
  // As with months, years past 9999 are kept as computed.
  constexpr QuandaAbstractDate addingYears(std::int16_t years) const;
  // Years, then months, then days, skipping absent amounts.
  constexpr QuandaAbstractDate adding(const Amounts& amounts) const;

  // The same steps for amounts taken from outside (a person, a file), refused instead of stopped:
  // the result where the step above gives a date in the years 1...9999, and nothing where it would
  // stop or leave them (addingYears raising a year to 1 included). The quirks stay: 2024-01-31
  // plus 13 months is still 2025-02-29. A date without a day count (see above) cannot move by
  // days.
  constexpr std::optional<QuandaAbstractDate> tryAddingDays(std::int32_t days) const noexcept;
  constexpr std::optional<QuandaAbstractDate> tryAddingMonths(std::int32_t months) const noexcept;
  constexpr std::optional<QuandaAbstractDate> tryAddingYears(std::int16_t years) const noexcept;
  constexpr std::optional<QuandaAbstractDate> tryAdding(const Amounts& amounts) const noexcept;

  // Year overrides are clamped into 1...9999, month overrides into 1...12; the day (override or
  // current) is then limited to the length of the resulting month, with no lower limit: a day
  // override of 0 stays 0 (see above).
  constexpr QuandaAbstractDate replacing(const Replacement& replacement) const noexcept;

  // ---- Days as date-time ranges --------------------------------------------------------------
  // Defined with the date-times (QuandaAbstractNaturalDateTime.h, QuandaAbstractRealDateTime.h),
  // which also hold the date's + and - with times of day, relative times and spans.

  // This date at 00:00:00.
  constexpr QuandaAbstractNaturalDateTime makeNaturalBeginningOfDay() const noexcept;
  constexpr QuandaAbstractRealDateTime makeRealBeginningOfDay() const noexcept;
  // Deliberately the next date at 00:00:00, the first instant after the day, not its last second:
  // ranges in this library end inclusively at that instant. 9999-12-31 has no such end, which is
  // a programming error.
  constexpr QuandaAbstractNaturalDateTime makeNaturalEndOfDay() const;
  constexpr QuandaAbstractRealDateTime makeRealEndOfDay() const;
  // From the beginning of the day to that end, inclusive.
  constexpr KeelDomain<QuandaAbstractNaturalDateTime> makeNaturalDateTimeRange() const;
  constexpr KeelDomain<QuandaAbstractRealDateTime> makeRealDateTimeRange() const;

  // Calendar order.
  friend constexpr bool operator==(QuandaAbstractDate, QuandaAbstractDate) noexcept = default;
  friend constexpr std::strong_ordering operator<=>(QuandaAbstractDate lhs,
                                                    QuandaAbstractDate rhs) noexcept {
    return lhs.orderKey() <=> rhs.orderKey();
  }

 private:
  friend struct QuandaAbstractDateFieldsAccess;

  constexpr QuandaAbstractDate(std::uint16_t year, std::uint8_t month, std::uint8_t day) noexcept
      : day_(day), month_(month), year_(year) {}

  // makeFromDaysSinceDatum without the clamp, for counts already known to be in range.
  static constexpr QuandaAbstractDate makeFromValidDaysSinceDatum(std::uint32_t days) noexcept;
  static constexpr bool isValid(std::uint16_t year, std::uint8_t month, std::uint8_t day) noexcept {
    return validYearRange.contains(year) && validMonthRange.contains(month) && day >= 1 &&
           day <= Quanda::DaysIn::Gregorian::oneBasedMonth(month, year);
  }
  constexpr std::uint32_t orderKey() const noexcept {
    return std::uint32_t{year_} << 16 | std::uint32_t{month_} << 8 | day_;
  }
  // The year (signed, unchecked) and month that `months` months away reach, with the day limited
  // by the length of that month in this date's year (the deliberate quirk of addingMonths).
  struct MonthStep {
    std::int64_t year;
    std::uint8_t month;
    std::uint8_t day;
  };
  constexpr MonthStep monthStep(std::int32_t months) const noexcept;

  std::uint8_t day_;
  std::uint8_t month_;
  std::uint16_t year_;
};

struct QuandaAbstractDateFieldsAccess {
  // A date from fields the caller guarantees valid, built in one register: field by field, the
  // date is written a byte at a time and read back whole, a stall that costs more than a whole
  // month-by-month search. The packing follows the declared layout (day, month, year from the
  // lowest address up), which the static_assert below checks.
  static constexpr QuandaAbstractDate makeFromValidFields(std::uint32_t year, std::uint32_t month,
                                                          std::uint32_t day) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
      return std::bit_cast<QuandaAbstractDate>(day | month << 8 | year << 16);
    } else {
      return QuandaAbstractDate(static_cast<std::uint16_t>(year), static_cast<std::uint8_t>(month),
                                static_cast<std::uint8_t>(day));
    }
  }
};

// ---- Inline definitions ----------------------------------------------------------------------

constexpr std::optional<QuandaAbstractDate> QuandaAbstractDate::makeIfValid(
    std::uint16_t year, std::uint8_t month, std::uint8_t day) noexcept {
  if (!isValid(year, month, day)) return std::nullopt;
  return QuandaAbstractDate(year, month, day);
}

inline constexpr KeelDomain<QuandaAbstractDate> QuandaAbstractDate::validRange{
    QuandaAbstractDate(1, 1, 1), QuandaAbstractDate(9999, 12, 31)};
inline constexpr QuandaAbstractDate QuandaAbstractDate::zero{1, 1, 1};

static_assert(sizeof(QuandaAbstractDate) == 4 &&
              QuandaAbstractDateFieldsAccess::makeFromValidFields(2024, 2, 29) ==
                  *QuandaAbstractDate::makeIfValid(2024, 2, 29) &&
              QuandaAbstractDateFieldsAccess::makeFromValidFields(9999, 12, 31) ==
                  QuandaAbstractDate::validRange.max());

// Day counts use the Euclidean affine functions of Neri and Schneider: the year is taken to begin
// on 1 March, so that February's varying length falls at the end; then the day count of a
// (year, month, day) is a sum of three affine functions, and the inverse a few divisions by
// constants (which compile to multiplications). The inverse first folds the Gregorian century
// rule into the count, leaving plain four-year cycles, which saves two of those multiplications.
// Day 0 of the March-based count is 0000-03-01, 306 days before the datum.
namespace quanda_detail {
inline constexpr std::uint32_t marchBasedDaysBeforeDatum = 306;
}

constexpr std::uint32_t QuandaAbstractDate::daysSinceDatum() const noexcept {
  KEEL_PRECONDITION(hasDayCount(), "day count of a date before 0001-01-01");
  const std::uint32_t januaryOrFebruary = month_ < 3;
  const std::uint32_t year = std::uint32_t{year_} - januaryOrFebruary;  // year_ >= 1 checked
  const std::uint32_t month = month_ + 12 * januaryOrFebruary;          // 3 ... 14
  const std::uint32_t century = year / 100;
  const std::uint32_t yearDays = 1461 * year / 4 - century + century / 4;
  const std::uint32_t monthDays = (979 * month - 2919) / 32;
  return yearDays + monthDays + day_ - 1 - quanda_detail::marchBasedDaysBeforeDatum;
}

constexpr std::uint32_t QuandaAbstractDate::daysFromDatumUntilBeginningOf(
    std::uint16_t year) noexcept {
  const std::uint32_t y = year == 0 ? 0 : std::uint32_t{year} - 1;
  const std::uint32_t leaps = y / 4 - y / 100 + y / 400;
  return (y - leaps) * 365 + leaps * 366;
}

constexpr QuandaAbstractDate QuandaAbstractDate::makeFromDaysSinceDatum(
    std::uint32_t daysSinceDatum) noexcept {
  return makeFromValidDaysSinceDatum(daysSinceDatum < validDaysSinceDatumRange.max()
                                         ? daysSinceDatum
                                         : validDaysSinceDatumRange.max());
}

constexpr QuandaAbstractDate QuandaAbstractDate::makeFromValidDaysSinceDatum(
    std::uint32_t days) noexcept {
  const std::uint32_t marchBased = days + quanda_detail::marchBasedDaysBeforeDatum;
  // Every century of the March-based count but every fourth lacks the leap day that a plain
  // four-year cycle would give it. Adding the missing days back turns the count into one of plain
  // four-year cycles, whose year and day of year one 64-bit multiplication gives: 2939745 is
  // 2^32 / 1461 rounded up, so the high half of the product is the year and the low half the
  // fraction of the year, exact far beyond year 9999.
  const std::uint32_t century = (4 * marchBased + 3) / 146097;
  const std::uint32_t fourYearCycled = marchBased + century - century / 4;
  const std::uint64_t product = std::uint64_t{4 * fourYearCycled + 3} * 2939745;
  const auto marchBasedYear = static_cast<std::uint32_t>(product >> 32);
  const std::uint32_t dayOfYear = static_cast<std::uint32_t>(product) / (4 * 2939745);
  // Months of the March-based year: 2141 / 65536 days per month in fixed point.
  const std::uint32_t n3 = 2141 * dayOfYear + 197913;
  const std::uint32_t marchBasedMonth = n3 >> 16;
  const std::uint32_t dayOfMonth = (n3 & 0xFFFF) / 2141;
  const bool januaryOrFebruary = dayOfYear >= 306;
  return QuandaAbstractDate(
      static_cast<std::uint16_t>(marchBasedYear + januaryOrFebruary),
      static_cast<std::uint8_t>(januaryOrFebruary ? marchBasedMonth - 12 : marchBasedMonth),
      static_cast<std::uint8_t>(dayOfMonth + 1));
}

constexpr std::chrono::year_month_day QuandaAbstractDate::yearMonthDay() const noexcept {
  return std::chrono::year_month_day{std::chrono::year{year_}, std::chrono::month{month_},
                                     std::chrono::day{day_}};
}

namespace quanda_detail {
// 0001-01-01 is 719162 days before 1970-01-01.
inline constexpr std::int64_t datumDaysBeforeUnixEpoch = 719162;
}  // namespace quanda_detail

constexpr std::chrono::sys_days QuandaAbstractDate::sysDays() const noexcept {
  return std::chrono::sys_days{
      std::chrono::days{std::int64_t{daysSinceDatum()} - quanda_detail::datumDaysBeforeUnixEpoch}};
}

constexpr QuandaAbstractDate::WeekNumberAndDay QuandaAbstractDate::weekNumberAndDay(
    QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept {
  const std::uint32_t shift = (7 - ordinal(firstDayOfWeek)) % 7;
  const std::uint32_t shifted = daysSinceDatum() + shift;
  return {shifted / 7, static_cast<std::uint8_t>(shifted % 7)};
}

constexpr std::uint32_t QuandaAbstractDate::dayOfCycle(std::uint32_t length,
                                                       QuandaAbstractDate anchor) const {
  return dayOfCycleRelativeToAnchorDaysSinceDatum(length, anchor.daysSinceDatum());
}

constexpr std::uint32_t QuandaAbstractDate::dayOfCycleRelativeToAnchorDaysSinceDatum(
    std::uint32_t length, std::uint32_t anchorDaysSinceDatum) const {
  KEEL_PRECONDITION(length != 0, "day cycle of length 0");
  const std::uint32_t residue = anchorDaysSinceDatum % length;
  const std::uint32_t days = daysSinceDatum();
  return days < residue ? 0 : (days - residue) % length;
}

constexpr std::uint32_t QuandaAbstractDate::weekOfCycle(
    std::uint32_t length, QuandaAbstractDate anchor,
    QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const {
  return weekOfCycleRelativeToAnchorWeekNumber(
      length, anchor.weekNumberAndDay(preferredFirstDayOfWeek).week, preferredFirstDayOfWeek);
}

constexpr std::uint32_t QuandaAbstractDate::weekOfCycleRelativeToAnchorWeekNumber(
    std::uint32_t length, std::uint32_t anchorWeekNumber,
    QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const {
  KEEL_PRECONDITION(length != 0, "week cycle of length 0");
  const std::uint32_t residue = anchorWeekNumber % length;
  const std::uint32_t week = weekNumberAndDay(preferredFirstDayOfWeek).week;
  KEEL_PRECONDITION(week >= residue, "week before the week cycle's first residue");
  return (week - residue) % length;
}

constexpr QuandaAbstractDate QuandaAbstractDate::nextDay() const {
  if (day_ < daysInMonth()) return QuandaAbstractDate(year_, month_, day_ + 1);
  if (month_ < 12) return QuandaAbstractDate(year_, month_ + 1, 1);
  KEEL_PRECONDITION(year_ < validYearRange.max(), "day after 9999-12-31");
  return QuandaAbstractDate(year_ + 1, 1, 1);
}

constexpr QuandaAbstractDate QuandaAbstractDate::previousDay() const {
  if (day_ > 1) return QuandaAbstractDate(year_, month_, day_ - 1);
  // Day 1 steps to the last day of the month before; day 0, which stands for that day, one further.
  QuandaAbstractDate monthBefore(year_, month_ - 1, 0);
  if (month_ == 1) {
    KEEL_PRECONDITION(year_ > validYearRange.min(), "day before 0001-01-01");
    monthBefore = QuandaAbstractDate(year_ - 1, 12, 0);
  }
  monthBefore.day_ = monthBefore.daysInMonth() - (day_ == 0);
  return monthBefore;
}

constexpr QuandaAbstractDate QuandaAbstractDate::firstDayOfWeek(
    QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const {
  return addingDays(-std::int32_t{weekNumberAndDay(preferredFirstDayOfWeek).zeroBasedDayOfWeek});
}

constexpr QuandaAbstractDate QuandaAbstractDate::lastDayOfWeekInc(
    QuandaDayOfGregorianWeek preferredFirstDayOfWeek) const {
  return addingDays(6 - std::int32_t{weekNumberAndDay(preferredFirstDayOfWeek).zeroBasedDayOfWeek});
}

constexpr std::optional<QuandaAbstractDate> QuandaAbstractDate::tryAddingDays(
    std::int32_t days) const noexcept {
  if (!hasDayCount()) return std::nullopt;
  const std::int64_t target = std::int64_t{daysSinceDatum()} + days;
  if (target < 0 || target > validDaysSinceDatumRange.max()) return std::nullopt;
  return makeFromValidDaysSinceDatum(static_cast<std::uint32_t>(target));
}

constexpr QuandaAbstractDate QuandaAbstractDate::addingDays(std::int32_t days) const {
  if (days == 0) return *this;
  return keel::valueOrStop(tryAddingDays(days), "adding days leaves 0001-01-01...9999-12-31");
}

constexpr QuandaAbstractDate::MonthStep QuandaAbstractDate::monthStep(
    std::int32_t months) const noexcept {
  // Months since January of year 0; floor division gives the year and month of the target.
  const std::int64_t total = std::int64_t{year_} * 12 + (month_ - 1) + months;
  const std::int64_t year = total >= 0 ? total / 12 : -((-total + 11) / 12);
  const auto month = static_cast<std::uint8_t>(total - year * 12 + 1);
  const std::uint8_t limit = Quanda::DaysIn::Gregorian::oneBasedMonth(month, year_);
  return {year, month, day_ < limit ? day_ : limit};
}

constexpr std::optional<QuandaAbstractDate> QuandaAbstractDate::tryAddingMonths(
    std::int32_t months) const noexcept {
  const MonthStep step = monthStep(months);
  if (step.year < validYearRange.min() || step.year > validYearRange.max()) return std::nullopt;
  return QuandaAbstractDate(static_cast<std::uint16_t>(step.year), step.month, step.day);
}

constexpr QuandaAbstractDate QuandaAbstractDate::addingMonths(std::int32_t months) const {
  const MonthStep step = monthStep(months);
  KEEL_PRECONDITION(step.year >= 0 && step.year <= 65535,
                    "adding months leaves the representable years");
  return QuandaAbstractDate(static_cast<std::uint16_t>(step.year), step.month, step.day);
}

constexpr std::optional<QuandaAbstractDate> QuandaAbstractDate::tryAddingYears(
    std::int16_t years) const noexcept {
  const std::int32_t sum = std::int32_t{year_} + years;
  if (sum < validYearRange.min() || sum > validYearRange.max()) return std::nullopt;
  return addingYears(years);
}

constexpr QuandaAbstractDate QuandaAbstractDate::addingYears(std::int16_t years) const {
  const std::int32_t sum = std::int32_t{year_} + years;
  KEEL_PRECONDITION(sum <= 32767, "adding years overflows a signed 16-bit year");
  const auto year = static_cast<std::uint16_t>(sum < 1 ? 1 : sum);
  const std::uint8_t limit = Quanda::DaysIn::Gregorian::oneBasedMonth(month_, year);
  return QuandaAbstractDate(year, month_, day_ < limit ? day_ : limit);
}

constexpr QuandaAbstractDate QuandaAbstractDate::adding(const Amounts& amounts) const {
  QuandaAbstractDate result = *this;
  if (amounts.years) result = result.addingYears(*amounts.years);
  if (amounts.months) result = result.addingMonths(*amounts.months);
  if (amounts.days) result = result.addingDays(*amounts.days);
  return result;
}

constexpr std::optional<QuandaAbstractDate> QuandaAbstractDate::tryAdding(
    const Amounts& amounts) const noexcept {
  std::optional<QuandaAbstractDate> result = *this;
  if (amounts.years) result = result->tryAddingYears(*amounts.years);
  if (result && amounts.months) result = result->tryAddingMonths(*amounts.months);
  if (result && amounts.days) result = result->tryAddingDays(*amounts.days);
  return result;
}

constexpr QuandaAbstractDate QuandaAbstractDate::replacing(
    const Replacement& replacement) const noexcept {
  const std::uint16_t year =
      replacement.year.isSet() ? validYearRange.clamp(*replacement.year.value()) : year_;
  const std::uint8_t month =
      replacement.month.isSet() ? validMonthRange.clamp(*replacement.month.value()) : month_;
  const std::uint8_t day = replacement.day.resolve(day_);
  const std::uint8_t limit = Quanda::DaysIn::Gregorian::oneBasedMonth(month, year);
  return QuandaAbstractDate(year, month, day < limit ? day : limit);
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractDate date);
std::ostream& operator<<(std::ostream& stream, const QuandaAbstractDate::Components& components);

template <>
struct std::hash<QuandaAbstractDate> {
  std::size_t operator()(QuandaAbstractDate date) const noexcept {
    return keel::hashFields(date.day(), date.month(), date.year());
  }
};

template <>
struct std::hash<QuandaAbstractDate::Components> {
  std::size_t operator()(const QuandaAbstractDate::Components& components) const noexcept {
    return keel::hashFields(components.year, components.month, components.day);
  }
};

// Archived as the packed yyyymmdd number. Decoding a number that is not a valid date throws
// KeelDecodingError "Failed to create date from int".
template <>
struct nlohmann::adl_serializer<QuandaAbstractDate> {
  static void to_json(nlohmann::json& json, QuandaAbstractDate date);
  static QuandaAbstractDate from_json(const nlohmann::json& json);
};
