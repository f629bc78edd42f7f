// Every date from 0001-01-01 to 9999-12-31 against two independent calendars: Howard Hinnant's
// date library for fields, weekdays and month lengths, Abseil's civil days for the day sequence.
// One pass does every check, so the whole range stays fast even in sanitizer builds.
#include <absl/time/civil_time.h>
#include <date/date.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace {

// Collects mismatches without paying for an assertion per check; reports the first few in full.
class MismatchLog {
 public:
  void check(bool ok, const char* what, std::uint32_t daysSinceDatum) {
    if (ok) return;
    if (++count_ <= 20) {
      ADD_FAILURE() << what << " differs at day count " << daysSinceDatum << " ("
                    << QuandaAbstractDate::makeFromDaysSinceDatum(daysSinceDatum) << ")";
    }
  }
  int count() const { return count_; }

 private:
  int count_ = 0;
};

constexpr QuandaDayOfGregorianWeek kFirstDays[] = {
    QuandaDayOfGregorianWeek::monday,    QuandaDayOfGregorianWeek::tuesday,
    QuandaDayOfGregorianWeek::wednesday, QuandaDayOfGregorianWeek::thursday,
    QuandaDayOfGregorianWeek::friday,    QuandaDayOfGregorianWeek::saturday,
    QuandaDayOfGregorianWeek::sunday};

// The range is checked in four quarters, each a test of its own, so that a parallel test run
// (ctest -j) shares the work out. Each quarter starts 366 days early, so that the steps across its
// first day are checked against dates it has checked itself.
struct Quarter {
  std::uint32_t first;  // day counts, inclusive
  std::uint32_t last;
};

class QuandaAbstractDateExhaustive : public ::testing::TestWithParam<Quarter> {};

TEST_P(QuandaAbstractDateExhaustive, EveryDateAgreesWithIndependentCalendars) {
  const std::uint32_t first = GetParam().first;
  const std::uint32_t last = GetParam().last;
  const std::uint32_t start = first < 366 ? 0 : first - 366;
  const date::sys_days datum = date::year{1} / date::January / 1;
  ASSERT_EQ(datum.time_since_epoch().count(), -719162);

  MismatchLog log;
  const date::year_month_day startFields{datum + date::days{start}};
  absl::CivilDay civil(static_cast<int>(startFields.year()),
                       static_cast<unsigned>(startFields.month()),
                       static_cast<unsigned>(startFields.day()));
  // Per first day of the week: the week number of the date, counted up on each first day.
  std::array<std::uint32_t, 7> expectedWeek{};
  for (std::size_t index = 0; index < 7 && start > 0; ++index) {
    // The datum is in week 0 of every kind of week; later quarters start from a date the quarter
    // before has checked.
    expectedWeek[index] =
        QuandaAbstractDate::makeFromDaysSinceDatum(start).weekNumberAndDay(kFirstDays[index]).week;
  }
  // The dates of the last 366 day counts, each already checked against the oracle, so the steps
  // below are checked against the oracle too without converting it again.
  constexpr std::uint32_t kHistory = 367;
  std::vector<QuandaAbstractDate> history(kHistory, QuandaAbstractDate::zero);

  for (std::uint32_t n = start; n <= last; ++n, ++civil) {
    const date::sys_days oracleDay = datum + date::days{n};
    const date::year_month_day ymd{oracleDay};
    const auto year = static_cast<unsigned>(static_cast<int>(ymd.year()));
    const auto month = static_cast<unsigned>(ymd.month());
    const auto day = static_cast<unsigned>(ymd.day());

    // Day count to date and back.
    const QuandaAbstractDate date = QuandaAbstractDate::makeFromDaysSinceDatum(n);
    log.check(date.year() == year && date.month() == month && date.day() == day,
              "makeFromDaysSinceDatum", n);
    log.check(
        civil.year() == date.year() && civil.month() == date.month() && civil.day() == date.day(),
        "civil day sequence", n);
    log.check(date.daysSinceDatum() == n, "daysSinceDatum", n);
    history[n % kHistory] = date;
    const QuandaAbstractDate previous = history[(n + kHistory - 1) % kHistory];
    if (n > start) {
      log.check(previous < date, "ordering", n);
      log.check(previous.nextDay() == date && previous.addingDays(1) == date, "next day", n);
      log.check(date.previousDay() == previous && date.addingDays(-1) == previous, "previous day",
                n);
    }
    if (n >= start + 366) {
      log.check(history[(n - 366) % kHistory].addingDays(366) == date, "addingDays(366)", n);
    }
    // Positions in the month.
    const auto daysInMonth = static_cast<unsigned>((ymd.year() / ymd.month() / date::last).day());
    const unsigned daysLeft = daysInMonth - day;
    log.check(date.daysInMonth() == daysInMonth && date.daysFromEndOfMonthZeroBased() == daysLeft &&
                  date.weekOfMonthZeroBased() == (day - 1) / 7 &&
                  date.weekFromEndOfMonthZeroBased() == daysLeft / 7,
              "month positions", n);
    log.check(date.beginningOfMonth().daysSinceDatum() == n + 1 - day &&
                  date.endOfMonth().daysSinceDatum() == n + daysLeft,
              "beginningOfMonth and endOfMonth", n);
    if (month == 1 && day == 1) {
      log.check(QuandaAbstractDate::daysFromDatumUntilBeginningOf(date.year()) == n,
                "daysFromDatumUntilBeginningOf", n);
    }

    // Weekdays: 0 for Monday. Preferred weeks start on their first day.
    const auto weekday = static_cast<unsigned>(absl::GetWeekday(civil));
    log.check(ordinal(date.dayOfWeek()) == weekday, "dayOfWeek", n);
    for (std::size_t index = 0; index < 7; ++index) {
      const auto weekAndDay = date.weekNumberAndDay(kFirstDays[index]);
      const unsigned expectedDay = (weekday + 7 - ordinal(kFirstDays[index])) % 7;
      if (n > start && expectedDay == 0) ++expectedWeek[index];
      log.check(
          weekAndDay.zeroBasedDayOfWeek == expectedDay && weekAndDay.week == expectedWeek[index],
          "weekNumberAndDay", n);
      const std::uint32_t firstDay = n - expectedDay;  // wraps below the datum, then unchecked
      if (n >= expectedDay &&
          firstDay + 6 <= QuandaAbstractDate::validRange.max().daysSinceDatum()) {
        log.check(date.firstDayOfWeek(kFirstDays[index]).daysSinceDatum() == firstDay &&
                      date.lastDayOfWeekInc(kFirstDays[index]).daysSinceDatum() == firstDay + 6,
                  "firstDayOfWeek and lastDayOfWeekInc", n);
      }
    }

    // Text and numeric forms, both ways.
    char text[40];  // room for any field width the compiler can imagine
    std::snprintf(text, sizeof text, "%04u-%02u-%02u%04u%02u%02u", year, month, day, year, month,
                  day);
    const std::string_view withSeparators(text, 10);
    const std::string_view withoutSeparators(text + 10, 8);
    log.check(date.serializeToIso8601String() == withSeparators, "serializeToIso8601String", n);
    const auto parsed = QuandaAbstractDate::makeFromIso8601String(withSeparators);
    log.check(parsed && parsed.value() == date, "makeFromIso8601String", n);
    const auto parsedPacked =
        QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(withoutSeparators);
    log.check(parsedPacked && parsedPacked.value() == date,
              "makeFromIso8601StringWithoutSeparators", n);
    const std::uint64_t numeric = year * 10000ULL + month * 100ULL + day;
    log.check(date.serializeToIso8601Numeric() == numeric, "serializeToIso8601Numeric", n);
    const auto fromNumeric = QuandaAbstractDate::makeFromIso8601Numeric(numeric);
    log.check(fromNumeric && fromNumeric.value() == date, "makeFromIso8601Numeric", n);

    // <chrono> interoperation. The factories only add a fixed offset or narrow the fields
    // before the paths checked above, so they are checked on the first of each month.
    const std::chrono::sys_days sysDays{std::chrono::days{oracleDay.time_since_epoch().count()}};
    log.check(date.sysDays() == sysDays, "sysDays", n);
    const std::chrono::year_month_day yearMonthDay = date.yearMonthDay();
    log.check(static_cast<int>(yearMonthDay.year()) == static_cast<int>(year) &&
                  static_cast<unsigned>(yearMonthDay.month()) == month &&
                  static_cast<unsigned>(yearMonthDay.day()) == day,
              "yearMonthDay", n);
    if (day == 1) {
      const auto fromSysDays = QuandaAbstractDate::make(sysDays);
      log.check(fromSysDays && fromSysDays.value() == date, "make(sysDays)", n);
      const auto fromYearMonthDay = QuandaAbstractDate::make(yearMonthDay);
      log.check(fromYearMonthDay && fromYearMonthDay.value() == date, "make(yearMonthDay)", n);
    }
  }
  if (last == QuandaAbstractDate::validDaysSinceDatumRange.max()) {
    const QuandaAbstractDate lastDate = history[last % kHistory];
    EXPECT_EQ(lastDate, QuandaAbstractDate::validRange.max());
    EXPECT_EQ(civil, absl::CivilDay(10000, 1, 1));
  }
  EXPECT_EQ(log.count(), 0);
}

constexpr std::uint32_t kQuarter = (QuandaAbstractDate::validDaysSinceDatumRange.max() + 1) / 4;
INSTANTIATE_TEST_SUITE_P(
    Quarters, QuandaAbstractDateExhaustive,
    ::testing::Values(Quarter{0, kQuarter - 1}, Quarter{kQuarter, 2 * kQuarter - 1},
                      Quarter{2 * kQuarter, 3 * kQuarter - 1},
                      Quarter{3 * kQuarter, QuandaAbstractDate::validDaysSinceDatumRange.max()}),
    [](const ::testing::TestParamInfo<Quarter>& info) {
      return "From" +
             std::to_string(QuandaAbstractDate::makeFromDaysSinceDatum(info.param.first).year());
    });

}  // namespace
