// The shape shared by the natural and the real date-time.
//
// A date-time is a QuandaAbstractDate and a time of day: whole seconds for the natural kind,
// fractional seconds for the real one. Apart from the time's kind the two behave alike: the same
// validation order (date first, then time), the same "date T time" parser, the same carry of
// clock amounts into the date, the same next occurrence of a time of day, the same rounding on
// the count of seconds since the datum and the same clamping replacement. This header holds that
// common shape once:
//
//   quanda_detail::DateTimeCore<DateTime, Traits>   the date, the time and what is built on them
//
// The public types inherit the core privately and re-export its members one by one, so each public
// header still lists its whole interface; a traits class supplies what differs (the time kind, its
// relative kind and span, the type of a second count, the source path of errors). Callers never
// name anything in this header directly.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelError.h"
#include "Keel/KeelMathUtil.h"
#include "Keel/KeelOverride.h"
#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaTextParsing.h"
#include "Quanda/QuandaConstants.h"

namespace quanda_detail {

// 0001-01-01 is 719162 days before 1970-01-01, the epoch of std::chrono's local time.
inline constexpr std::int64_t datumSecondsBeforeUnixEpoch =
    datumDaysBeforeUnixEpoch * Quanda::SecondsIn::Gregorian::Day::count;

// The unvalidated fields of a date-time, as exchanged with the calendar adapter. The fields are
// declared in alphabetical order, which is the order the adapter's records use.
template <class Second>
struct DateTimeComponents {
  std::uint8_t day = 0;
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;
  std::uint8_t month = 0;
  Second second = 0;
  std::uint16_t year = 0;

  // "Components(day: 29, hour: 23, minute: 59, month: 2, second: 59, year: 2024)".
  std::string description() const {
    return "Components(day: " + keel::describe(day) + ", hour: " + keel::describe(hour) +
           ", minute: " + keel::describe(minute) + ", month: " + keel::describe(month) +
           ", second: " + keel::describe(second) + ", year: " + keel::describe(year) + ")";
  }
  friend constexpr bool operator==(const DateTimeComponents&, const DateTimeComponents&) = default;
};

// Optional amounts for adding(...). Whatever the order written, they are applied from the
// smallest unit to the largest: seconds, minutes, hours (carrying into the date), then days,
// months, years.
template <class SecondsAmount>
struct DateTimeAmounts {
  std::optional<std::int16_t> years{};
  std::optional<std::int32_t> months{};
  std::optional<std::int32_t> days{};
  std::optional<std::int32_t> hours{};
  std::optional<std::int64_t> minutes{};
  std::optional<SecondsAmount> seconds{};
};

// Optional field overrides for replacing(...); the date's and the time's own replacing() clamp.
template <class Second>
struct DateTimeReplacement {
  KeelOverride<std::uint16_t> year{};
  KeelOverride<std::uint8_t> month{};
  KeelOverride<std::uint8_t> day{};
  KeelOverride<std::uint8_t> hour{};
  KeelOverride<std::uint8_t> minute{};
  KeelOverride<Second> second{};
};

// The canonical text "YYYY-MM-DDTHH:MM:SS" read in place, for the string factories' fast path:
// the date and the time when every character is where it belongs and the fields are valid,
// nothing otherwise (the general path then reads the text, or says what is wrong with it).
struct CanonicalDateTime {
  QuandaAbstractDate date;
  QuandaAbstractNaturalTimeOfDay time;
};

constexpr std::optional<CanonicalDateTime> parseCanonicalDateTime(std::string_view s) noexcept {
  if (s.size() != 19 || s[4] != '-' || s[7] != '-' || s[10] != 'T' || s[13] != ':' ||
      s[16] != ':') {
    return std::nullopt;
  }
  const int century = twoDigits(s, 0);
  const int yearOfCentury = twoDigits(s, 2);
  const int month = twoDigits(s, 5);
  const int day = twoDigits(s, 8);
  const int hour = twoDigits(s, 11);
  const int minute = twoDigits(s, 14);
  const int second = twoDigits(s, 17);
  // A field that is not two digits is -1, which the bitwise or keeps negative.
  if ((century | yearOfCentury | month | day | hour | minute | second) < 0 || hour > 23 ||
      minute > 59 || second > 59) {
    return std::nullopt;
  }
  const std::optional<QuandaAbstractDate> date = QuandaAbstractDate::makeIfValid(
      static_cast<std::uint16_t>(century * 100 + yearOfCentury), static_cast<std::uint8_t>(month),
      static_cast<std::uint8_t>(day));
  if (!date) return std::nullopt;
  return CanonicalDateTime{
      *date,
      QuandaAbstractNaturalTimeOfDay::makeFromSecondsSinceDayBegan(static_cast<std::uint32_t>(
          hour * Quanda::SecondsIn::Gregorian::Hour::count +
          minute * Quanda::SecondsIn::Gregorian::Minute::count + second))};
}

// Writes "YYYY-MM-DD" + 'T' + "hh:mm" (dateSeparator between the date's fields) at out, and
// returns the position after it. Years past 9999, which month arithmetic can reach, take five
// digits. out must have room for 17 characters (18 for a five-digit year).
char* writeDateTimeUpToMinute(char* out, QuandaAbstractDate date, std::uint8_t hour,
                              std::uint8_t minute, char dateSeparator) noexcept;

// The date-time text with whole seconds, in one allocation: "2024-02-29T23:59:59", or with ':'
// as dateSeparator "2024:02:29T23:59:59".
std::string formatWholeSecondDateTime(QuandaAbstractDate date, QuandaAbstractNaturalTimeOfDay time,
                                      char dateSeparator);

template <class DateTime, class Traits>
class DateTimeCore {
 public:
  using Time = typename Traits::Time;
  using Second = typename Traits::Second;
  using Relative = typename Traits::Relative;
  using Span = typename Traits::Span;
  // The type of secondsSinceDatum(): unsigned 64-bit whole seconds, or a double.
  using Count = typename Traits::Count;
  using SecondsAmount = typename Traits::SecondsAmount;
  using Components = DateTimeComponents<Second>;
  using Amounts = DateTimeAmounts<SecondsAmount>;
  using Replacement = DateTimeReplacement<Second>;

  // ---- Making date-times ----------------------------------------------------------------------

  // The date's checks first (year, month, day), then the time's (hour, minute, second); the
  // failing one is wrapped with the six proposed fields.
  static KeelResult<DateTime> make(std::uint16_t year, std::uint8_t month, std::uint8_t day,
                                   std::uint8_t hour, std::uint8_t minute, Second second);
  static KeelResult<DateTime> make(const Components& components);
  // "date T time": exactly one upper-case 'T', the date as QuandaAbstractDate and the time as the
  // time-of-day kind read their ISO 8601 strings. The canonical "YYYY-MM-DDTHH:MM:SS" is read in
  // place; every other text takes the general path, which gives the same result for it.
  static KeelResult<DateTime> makeFromRfc3339String(std::string_view rfc3339String) {
    if (const std::optional<CanonicalDateTime> canonical = parseCanonicalDateTime(rfc3339String)) {
      return DateTime(canonical->date, Time(canonical->time));
    }
    return makeFromRfc3339Tokens(rfc3339String);
  }

  // The date at 00:00:00.
  static constexpr DateTime makeAtBeginningOf(QuandaAbstractDate date) noexcept {
    return DateTime(date, Time::zero);
  }
  // Deliberately the following date at 00:00:00, the first instant after the day, not its last
  // second: ranges in this library end inclusively at that instant. The end of 9999-12-31 cannot
  // be represented, which is a programming error.
  static constexpr DateTime makeAtEndOf(QuandaAbstractDate date) {
    return DateTime(date.nextDay(), Time::zero);
  }

  // ---- Fields and counts ------------------------------------------------------------------------

  constexpr QuandaAbstractDate date() const noexcept { return date_; }
  constexpr Time time() const noexcept { return time_; }
  constexpr std::uint16_t year() const noexcept { return date_.year(); }
  constexpr std::uint8_t month() const noexcept { return date_.month(); }
  constexpr std::uint8_t day() const noexcept { return date_.day(); }
  constexpr std::uint8_t hour() const noexcept { return time_.hour(); }
  constexpr std::uint8_t minute() const noexcept { return time_.minute(); }
  constexpr Second second() const noexcept { return time_.second(); }
  constexpr Components components() const noexcept {
    return {day(), hour(), minute(), month(), second(), year()};
  }
  constexpr bool isMidnight() const noexcept { return time_.isMidnight(); }
  constexpr bool isMidday() const noexcept { return time_.isMidday(); }

  // The time's seconds since the day began: unsigned 32-bit, or a double.
  constexpr auto secondsSinceMidnight() const noexcept { return time_.secondsSinceDayBegan(); }
  // date.daysSinceDatum() * 86400 + secondsSinceMidnight().
  constexpr Count secondsSinceDatum() const noexcept {
    return static_cast<Count>(date_.daysSinceDatum()) * Quanda::SecondsIn::Gregorian::Day::count +
           secondsSinceMidnight();
  }
  constexpr double asDouble() const noexcept { return static_cast<double>(secondsSinceDatum()); }

  // ---- Calendar and clock arithmetic ------------------------------------------------------------

  // The date's own operations; the time is kept.
  constexpr DateTime addingYears(std::int16_t years) const {
    return DateTime(date_.addingYears(years), time_);
  }
  constexpr DateTime addingMonths(std::int32_t months) const {
    return DateTime(date_.addingMonths(months), time_);
  }
  constexpr DateTime addingDays(std::int32_t days) const {
    return DateTime(date_.addingDays(days), time_);
  }
  // The time moves by the amount and the whole days it crosses move the date: 2024-12-31 23:30
  // plus one hour is 2025-01-01 00:30.
  constexpr DateTime addingHours(std::int32_t hours) const {
    return carrying(time_.addingHours(hours));
  }
  constexpr DateTime addingMinutes(std::int64_t minutes) const {
    return carrying(time_.addingMinutes(minutes));
  }
  constexpr DateTime addingSeconds(SecondsAmount seconds) const {
    return carrying(time_.addingSeconds(seconds));
  }
  // Seconds, minutes, hours, then days, months, years, skipping absent amounts: adding a month and
  // a day to January 30 adds the day first.
  constexpr DateTime adding(const Amounts& amounts) const {
    DateTime result(date_, time_);
    if (amounts.seconds) result = result.addingSeconds(*amounts.seconds);
    if (amounts.minutes) result = result.addingMinutes(*amounts.minutes);
    if (amounts.hours) result = result.addingHours(*amounts.hours);
    if (amounts.days) result = result.addingDays(*amounts.days);
    if (amounts.months) result = result.addingMonths(*amounts.months);
    if (amounts.years) result = result.addingYears(*amounts.years);
    return result;
  }

  // The first date-time at the given time of day from this one on: the same date when the time
  // is still ahead, the next date when it has passed, and for the time itself this date-time
  // (allowingSelf) or the same time on the next date.
  constexpr DateTime next(Time timeOfDay, bool allowingSelf) const {
    if (isLaterToday(timeOfDay, allowingSelf)) return DateTime(date_, timeOfDay);
    return DateTime(date_.nextDay(), timeOfDay);
  }

  // secondsSinceDatum() rounded to the nearest multiple of a minute, an hour or a day (halves away
  // from zero, KeelMathUtil), or floored to one; rounding to a day can give the next date at
  // 00:00:00.
  DateTime roundingToMinute() const { return rounded(Quanda::SecondsIn::Gregorian::Minute::count); }
  DateTime roundingToHour() const { return rounded(Quanda::SecondsIn::Gregorian::Hour::count); }
  DateTime roundingToDay() const { return rounded(Quanda::SecondsIn::Gregorian::Day::count); }
  DateTime flooringToMinute() const { return floored(Quanda::SecondsIn::Gregorian::Minute::count); }
  // The same date at 00:00:00.
  constexpr DateTime flooringToDay() const noexcept { return DateTime(date_, Time::zero); }

  // ---- The same, refused instead of stopped or clamped
  // ---------------------------------------------
  //
  // For amounts taken from outside (a person, a file): the result of the operation above where it
  // lies in 0001-01-01T00:00:00 ... 9999-12-31 and that operation reaches it by its own rule, and
  // nothing where it would stop, clamp, or leave those years (the date's try... forms). The
  // quirks of month arithmetic stay.
  constexpr std::optional<DateTime> tryAddingYears(std::int16_t years) const noexcept {
    return withDate(date_.tryAddingYears(years));
  }
  constexpr std::optional<DateTime> tryAddingMonths(std::int32_t months) const noexcept {
    return withDate(date_.tryAddingMonths(months));
  }
  constexpr std::optional<DateTime> tryAddingDays(std::int32_t days) const noexcept {
    return withDate(date_.tryAddingDays(days));
  }
  constexpr std::optional<DateTime> tryAddingHours(std::int32_t hours) const {
    return tryCarrying(time_.tryAddingHours(hours));
  }
  constexpr std::optional<DateTime> tryAddingMinutes(std::int64_t minutes) const {
    return tryCarrying(time_.tryAddingMinutes(minutes));
  }
  constexpr std::optional<DateTime> tryAddingSeconds(SecondsAmount seconds) const {
    return tryCarrying(time_.tryAddingSeconds(seconds));
  }
  constexpr std::optional<DateTime> tryAdding(const Amounts& amounts) const {
    std::optional<DateTime> result = DateTime(date_, time_);
    if (amounts.seconds) result = result->tryAddingSeconds(*amounts.seconds);
    if (result && amounts.minutes) result = result->tryAddingMinutes(*amounts.minutes);
    if (result && amounts.hours) result = result->tryAddingHours(*amounts.hours);
    if (result && amounts.days) result = result->tryAddingDays(*amounts.days);
    if (result && amounts.months) result = result->tryAddingMonths(*amounts.months);
    if (result && amounts.years) result = result->tryAddingYears(*amounts.years);
    return result;
  }
  constexpr std::optional<DateTime> tryNext(Time timeOfDay, bool allowingSelf) const noexcept {
    if (isLaterToday(timeOfDay, allowingSelf)) return DateTime(date_, timeOfDay);
    return withDate(date_.tryAddingDays(1), timeOfDay);
  }
  std::optional<DateTime> tryRoundingToMinute() const {
    return tryRounded(Quanda::SecondsIn::Gregorian::Minute::count);
  }
  std::optional<DateTime> tryRoundingToHour() const {
    return tryRounded(Quanda::SecondsIn::Gregorian::Hour::count);
  }
  std::optional<DateTime> tryRoundingToDay() const {
    return tryRounded(Quanda::SecondsIn::Gregorian::Day::count);
  }
  std::optional<DateTime> tryFlooringToMinute() const {
    return fromRoundedSecondsIfInRange(
        KeelMathUtil::floor(asDouble(), Quanda::SecondsIn::Gregorian::Minute::count));
  }

  // The date's replacing() takes the first three overrides and the time's the last three; both
  // clamp, so this never fails.
  constexpr DateTime replacing(const Replacement& replacement) const {
    return DateTime(date_.replacing({replacement.year, replacement.month, replacement.day}),
                    time_.replacing({replacement.hour, replacement.minute, replacement.second}));
  }

  // ---- Operators --------------------------------------------------------------------------------

  friend constexpr bool operator==(const DateTime& lhs, const DateTime& rhs) noexcept {
    return lhs.date() == rhs.date() && lhs.time() == rhs.time();
  }

  // Moving by a span of the kind's own: adding(seconds:) of its seconds, either operand order.
  friend constexpr DateTime operator+(const DateTime& dateTime, Span span) {
    return dateTime.addingSeconds(span.seconds());
  }
  friend constexpr DateTime operator+(Span span, const DateTime& dateTime) {
    return dateTime.addingSeconds(span.seconds());
  }
  // adding(seconds:) of the negated span; negating the smallest whole count stops the process.
  friend constexpr DateTime operator-(const DateTime& dateTime, Span span) {
    return dateTime.addingSeconds(negated(span.seconds()));
  }

  // Moving by days and clock time at once: the relative time's days, hours, minutes and seconds,
  // applied as adding(...) applies them.
  friend constexpr DateTime operator+(const DateTime& dateTime, Relative relative) {
    return dateTime.adding({.days = relative.days(),
                            .hours = relative.time().hour(),
                            .minutes = relative.time().minute(),
                            .seconds = relative.time().second()});
  }
  friend constexpr DateTime operator+(Relative relative, const DateTime& dateTime) {
    return dateTime + relative;
  }
  // Each of the four negated; a day count equal to the smallest signed 32-bit value stops the
  // process.
  friend constexpr DateTime operator-(const DateTime& dateTime, Relative relative) {
    return dateTime.adding({.days = keel::checkedNegate(relative.days()),
                            .hours = -std::int32_t{relative.time().hour()},
                            .minutes = -std::int64_t{relative.time().minute()},
                            .seconds = negated(SecondsAmount(relative.time().second()))});
  }

  // The signed distance, the difference of the two secondsSinceDatum() in the kind's span: exact
  // for whole seconds; for the real kind the difference of two doubles, so a fraction below the
  // precision of the counts (some microseconds in our era) is lost, as it is in the order.
  // Subtracting the days and the times apart would keep that fraction and we would prefer it; the
  // difference of the counts is the rule, and it agrees with the order.
  friend constexpr Span operator-(const DateTime& lhs, const DateTime& rhs) {
    using Total = typename Traits::Total;
    return Span(static_cast<Total>(lhs.secondsSinceDatum()) -
                static_cast<Total>(rhs.secondsSinceDatum()));
  }

 protected:
  constexpr DateTimeCore(QuandaAbstractDate date, Time time) noexcept : date_(date), time_(time) {}

 private:
  // The general path of makeFromRfc3339String, which also reports what is wrong with a text.
  static KeelResult<DateTime> makeFromRfc3339Tokens(std::string_view rfc3339String);

  static constexpr SecondsAmount negated(SecondsAmount amount) {
    if constexpr (std::is_integral_v<SecondsAmount>) {
      return keel::checkedNegate(amount);
    } else {
      return -amount;
    }
  }

  // Whether next(timeOfDay, allowingSelf) stays on this date: the time is still ahead, or is this
  // date-time's own and allowed (the seconds since midnight say both, as doubles for the real
  // kind).
  constexpr bool isLaterToday(Time timeOfDay, bool allowingSelf) const noexcept {
    using Total = typename Traits::Total;
    const Total difference = static_cast<Total>(timeOfDay.secondsSinceDayBegan()) -
                             static_cast<Total>(time_.secondsSinceDayBegan());
    return difference > 0 || (difference == 0 && allowingSelf);
  }

  // The date moved by the relative time's days, at its time.
  constexpr DateTime carrying(Relative relative) const {
    return DateTime(relative.days() == 0 ? date_ : date_.addingDays(relative.days()),
                    relative.time());
  }
  constexpr std::optional<DateTime> tryCarrying(std::optional<Relative> relative) const {
    if (!relative) return std::nullopt;
    return withDate(relative->days() == 0 && date_.hasDayCount()
                        ? std::optional(date_)
                        : date_.tryAddingDays(relative->days()),
                    relative->time());
  }
  constexpr std::optional<DateTime> withDate(std::optional<QuandaAbstractDate> date) const {
    return withDate(date, time_);
  }
  static constexpr std::optional<DateTime> withDate(std::optional<QuandaAbstractDate> date,
                                                    Time time) {
    if (!date) return std::nullopt;
    return DateTime(*date, time);
  }

  std::optional<DateTime> tryRounded(double step) const {
    return fromRoundedSecondsIfInRange(KeelMathUtil::roundTo(asDouble(), step));
  }
  // The date-time of a rounded count, or nothing where the count has no date-time (the aborting
  // forms stop or clamp there).
  static std::optional<DateTime> fromRoundedSecondsIfInRange(double seconds) {
    constexpr double lastDay = QuandaAbstractDate::validDaysSinceDatumRange.max();
    if (!(seconds >= 0.0 &&
          std::floor(seconds / Quanda::SecondsIn::Gregorian::Day::count) <= lastDay)) {
      return std::nullopt;
    }
    return fromRoundedSeconds(seconds);
  }

  DateTime rounded(double step) const {
    return fromRoundedSeconds(KeelMathUtil::roundTo(asDouble(), step));
  }
  DateTime floored(double step) const {
    return fromRoundedSeconds(KeelMathUtil::floor(asDouble(), step));
  }
  // A whole count must be finite, above -1 and below 2^64, or the process stops.
  static DateTime fromRoundedSeconds(double seconds) {
    if constexpr (std::is_integral_v<Count>) {
      return DateTime::makeFromSecondsSinceDatum(keel::checkedFromDouble<Count>(seconds));
    } else {
      return DateTime::makeFromSecondsSinceDatum(seconds);
    }
  }

  QuandaAbstractDate date_;
  Time time_;
};

}  // namespace quanda_detail
