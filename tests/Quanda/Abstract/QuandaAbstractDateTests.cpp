// The abstract date's edge cases: factory failures and their error chains, the quirks of month and
// year arithmetic, cycles and calendar grids, the JSON archive and hashing. Day counts, fields,
// weekdays, month positions and the text forms of valid dates are checked date by date in
// QuandaAbstractDateExhaustiveTests.cpp.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "ErrorChainExpectations.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace {

using Date = QuandaAbstractDate;
using Day = QuandaDayOfGregorianWeek;
constexpr std::string_view kPath = "Quanda/Abstract/QuandaAbstractDate";

Date makeDate(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return Date::make(year, month, day).value();
}

// The innermost link of a failed make(year:month:day:).
ExpectedErrorLink fieldFault(std::string message, int year, int month, int day) {
  return {"make(year:month:day:)",
          {"proposedYear=" + std::to_string(year), "proposedMonth=" + std::to_string(month),
           "proposedDay=" + std::to_string(day)},
          std::move(message)};
}

constexpr const char* kInvalidDay = "Invalid day for month in year";

static_assert(Date::makeIfValid(2024, 2, 29)->daysSinceDatum() == 738944);
static_assert(Date::makeFromDaysSinceDatum(3652058) == Date::validRange.max());
static_assert(!Date::makeIfValid(2023, 2, 29).has_value());
static_assert(std::is_trivially_copyable_v<Date> && sizeof(Date) == 4);

// ---- Construction --------------------------------------------------------------------------

TEST(QuandaAbstractDate, MakeChecksYearThenMonthThenDay) {
  const struct {
    int year, month, day;
    const char* message;
  } cases[] = {
      {0, 1, 1, "Invalid year"},      {10000, 1, 1, "Invalid year"}, {2024, 0, 1, "Invalid month"},
      {2024, 13, 1, "Invalid month"}, {2024, 1, 0, kInvalidDay},     {2024, 4, 31, kInvalidDay},
      {1900, 2, 29, kInvalidDay},     {2023, 2, 29, kInvalidDay},    {0, 13, 0, "Invalid year"},
      {2024, 13, 0, "Invalid month"},  // the first check names it
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.year) + "-" + std::to_string(c.month) + "-" +
                 std::to_string(c.day));
    const Date::Components fields{static_cast<std::uint16_t>(c.year),
                                  static_cast<std::uint8_t>(c.month),
                                  static_cast<std::uint8_t>(c.day)};
    const auto date = Date::make(fields.year, fields.month, fields.day);
    ASSERT_FALSE(date);
    expectErrorChain(date.error(), {fieldFault(c.message, c.year, c.month, c.day)}, kPath);
    const auto viaComponents = Date::make(fields);
    ASSERT_FALSE(viaComponents);
    expectErrorChain(
        viaComponents.error(),
        {{"make(components:)",
          {"proposedComponents=Components(year: " + std::to_string(c.year) +
           ", month: " + std::to_string(c.month) + ", day: " + std::to_string(c.day) + ")"}},
         fieldFault(c.message, c.year, c.month, c.day)},
        kPath);
    EXPECT_EQ(Date::makeIfValid(fields.year, fields.month, fields.day), std::nullopt);
  }
  EXPECT_EQ(Date::make(Date::Components{2024, 2, 29}).value(), makeDate(2024, 2, 29));
  EXPECT_EQ(Date::makeIfValid(2024, 2, 29), makeDate(2024, 2, 29));
}

TEST(QuandaAbstractDate, MakeFromIso8601Numeric) {
  for (const std::uint64_t outside :
       {std::uint64_t{10100}, std::uint64_t{99991232}, std::numeric_limits<std::uint64_t>::max()}) {
    const auto date = Date::makeFromIso8601Numeric(outside);
    ASSERT_FALSE(date) << outside;
    expectErrorChain(date.error(),
                     {{"make(iso8601Numeric:)",
                       {"iso8601Numeric=" + std::to_string(outside)},
                       "Invalid numeric ISO 8601 representation of abtract date"}},
                     kPath);
  }
  const auto date = Date::makeFromIso8601Numeric(20230229);
  ASSERT_FALSE(date);
  expectErrorChain(date.error(),
                   {{"make(iso8601Numeric:)", {"iso8601Numeric=20230229"}},
                    fieldFault(kInvalidDay, 2023, 2, 29)},
                   kPath);
}

// A string factory's outcome: a date, a first fault of the factory itself, or a wrapped failure
// of make(year:month:day:).
struct TextCase {
  std::string_view text;
  std::optional<Date::Components> expected = std::nullopt;
  const char* message = nullptr;                          // the factory's own first fault
  std::optional<ExpectedErrorLink> inner = std::nullopt;  // else the wrapped field fault
};

void checkTextCases(KeelResult<Date> (*factory)(std::string_view), const char* functionName,
                    const std::vector<TextCase>& cases) {
  for (const TextCase& c : cases) {
    SCOPED_TRACE("\"" + std::string(c.text) + "\"");
    const auto date = factory(c.text);
    const std::vector<std::string> args{"iso8601String=" + std::string(c.text)};
    if (c.expected) {
      ASSERT_TRUE(date) << date.error();
      EXPECT_EQ(date.value().components(), *c.expected);
    } else if (c.message != nullptr) {
      ASSERT_FALSE(date);
      expectErrorChain(date.error(), {{functionName, args, c.message}}, kPath);
    } else {
      ASSERT_FALSE(date);
      expectErrorChain(date.error(), {{functionName, args}, *c.inner}, kPath);
    }
  }
}

constexpr const char* kTokens = "Unexpected number of tokens";
constexpr const char* kYear = "Couldn't convert first token to year";
constexpr const char* kMonth = "Couldn't convert second token to month";
constexpr const char* kDay = "Couldn't convert third token to day";
constexpr const char* kEightDigits =
    "Expected 8 digits for 8601 date without separators. Use 'with separators' variant otherwise";

TEST(QuandaAbstractDate, MakeFromIso8601String) {
  using namespace std::string_view_literals;
  const Date::Components march5{2024, 3, 5};
  checkTextCases(
      &Date::makeFromIso8601String, "make(iso8601String:)",
      {
          // Digit counts are free, leading zeros and one leading sign per token pass.
          {"2024-3-5", march5},
          {"+2024-+3-+05", march5},
          {"0000000000000000000002024-000000000003-0000000000005", march5},
          {"", std::nullopt, kTokens},
          {"2024-03", std::nullopt, kTokens},
          {"2024-03-05-", std::nullopt, kTokens},
          {"-2024-03-05", std::nullopt, kTokens},
          {"2024/03/05", std::nullopt, kTokens},
          // Tokens that are not unsigned decimals of the field's width.
          {"--", std::nullopt, kYear},
          {"2024--05", std::nullopt, kMonth},
          {"2024-03-05 ", std::nullopt, kDay},
          {"2024-03-05\0"sv, std::nullopt, kDay},
          {"2024-03-0x5", std::nullopt, kDay},
          {"2024-03-++5", std::nullopt, kDay},
          {"2024-03-300", std::nullopt, kDay},
          {"65536-01-01", std::nullopt, kYear},
          {"2024-03-18446744073709551621", std::nullopt, kDay},
          {"2024-0\xD9\xA3-05", std::nullopt, kMonth},
          // Tokens that fit but make no date: the field check's failure, wrapped.
          {"2024-02-30", std::nullopt, nullptr, fieldFault(kInvalidDay, 2024, 2, 30)},
          {"65535-01-01", std::nullopt, nullptr, fieldFault("Invalid year", 65535, 1, 1)},
          {"2024-255-01", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 255, 1)},
      });
}

TEST(QuandaAbstractDate, MakeFromIso8601StringWithoutSeparators) {
  checkTextCases(&Date::makeFromIso8601StringWithoutSeparators,
                 "make(iso8601StringWithoutSeparators:)",
                 {
                     // The fixed-width pieces are read like the tokens of the separated form.
                     {"+0010101", Date::Components{1, 1, 1}},
                     {"2024+3+5", Date::Components{2024, 3, 5}},
                     {"2024-3-5", std::nullopt, kMonth},
                     {"2024-001", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 0, 1)},
                     {"-0010101", std::nullopt, kYear},
                     // Exactly eight characters, counted as a reader counts them.
                     {"2024035", std::nullopt, kEightDigits},
                     {"202403055", std::nullopt, kEightDigits},
                     {"202403\r\n", std::nullopt, kEightDigits},      // 8 bytes, 7 characters
                     {"202403\xC3\xA9", std::nullopt, kEightDigits},  // 8 bytes, 7 characters
                     {"2024030"
                      "5\xCC\x81",
                      std::nullopt, kDay},  // 10 bytes, 8 characters
                     {"\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA"
                      "2024030",
                      std::nullopt, kYear},  // a flag is one
                     {"2024x305", std::nullopt, kMonth},
                     {"202403x5", std::nullopt, kDay},
                     {"00000101", std::nullopt, nullptr, fieldFault("Invalid year", 0, 1, 1)},
                 });
}

TEST(QuandaAbstractDate, CountsClampAndDoublesRound) {
  EXPECT_EQ(Date::makeFromDaysSinceDatum(std::numeric_limits<std::uint32_t>::max()),
            Date::validRange.max());
  const std::pair<double, Date> cases[] = {
      {-0.4, Date::zero},
      {0.49, Date::zero},
      {0.5, makeDate(1, 1, 2)},  // halves round away from zero
      {4294967295.4, Date::validRange.max()},
  };
  for (const auto& [position, expected] : cases) {
    EXPECT_EQ(Date::makeFromDouble(position), expected) << position;
  }
  EXPECT_EQ(makeDate(2024, 3, 5).asDouble(), 738949.0);
}

TEST(QuandaAbstractDate, ChronoFactoriesRefuseWhatIsNoDate) {
  using namespace std::chrono;
  for (const int outside : {-719163, 2932897, std::numeric_limits<int>::min()}) {
    const auto date = Date::make(sys_days{days{outside}});
    ASSERT_FALSE(date);
    expectErrorChain(date.error(),
                     {{"make(sysDays:)",
                       {"daysSinceUnixEpoch=" + std::to_string(outside)},
                       "Day count outside the valid range"}},
                     kPath);
  }
  const struct {
    year_month_day fields;
    std::string text;
    ExpectedErrorLink inner;
  } invalid[] = {
      {year{2023} / February / 29, "2023-2-29", fieldFault(kInvalidDay, 2023, 2, 29)},
      {year{-5} / January / 1, "-5-1-1", fieldFault("Invalid year", 0, 1, 1)},
      {year{10000} / January / 1, "10000-1-1", fieldFault("Invalid year", 10000, 1, 1)},
  };
  for (const auto& c : invalid) {
    const auto date = Date::make(c.fields);
    ASSERT_FALSE(date) << c.text;
    expectErrorChain(date.error(), {{"make(yearMonthDay:)", {"yearMonthDay=" + c.text}}, c.inner},
                     kPath);
  }
}

// ---- Archive and hashing ---------------------------------------------------------------------

TEST(QuandaAbstractDate, StreamsAndArchivesThePackedNumber) {
  std::ostringstream stream;
  stream << makeDate(5, 7, 9) << ' ' << makeDate(5, 7, 9).components();
  EXPECT_EQ(stream.str(), "0005-07-09 Components(year: 5, month: 7, day: 9)");

  const nlohmann::json json = makeDate(2024, 3, 5);
  EXPECT_EQ(json.dump(), "20240305");
  EXPECT_EQ(json.get<Date>(), makeDate(2024, 3, 5));
  EXPECT_EQ(nlohmann::json::parse("20240305.0").get<Date>(), makeDate(2024, 3, 5));
  // Numbers of the archived type that make no date: the decoder's own description.
  for (const char* text : {"20240230", "0", "18446744073709551615"}) {
    expectDecodingError<Date>(text, "Failed to create date from int");
  }
  // JSON of another type, or numbers that are no unsigned 64-bit integer: nlohmann's type error.
  for (const char* text : {"-1", "20240305.5", "18446744073709551616", "\"20240305\"", "null"}) {
    EXPECT_THROW((void)nlohmann::json::parse(text).get<Date>(), nlohmann::json::type_error) << text;
  }
}

TEST(QuandaAbstractDate, EveryDateOfFourCenturiesHashesApart) {
  std::unordered_set<std::size_t> hashes;
  std::size_t count = 0;
  for (auto date = makeDate(1800, 1, 1); date < makeDate(2200, 1, 1); date = date.nextDay()) {
    hashes.insert(std::hash<Date>{}(date));
    ++count;
  }
  EXPECT_EQ(hashes.size(), count);
}

// ---- Counting --------------------------------------------------------------------------------

TEST(QuandaAbstractDate, DayAndWeekCounts) {
  EXPECT_EQ(Date::daysFromDatumUntilBeginningOf(0), 0u);
  EXPECT_EQ(Date::daysFromDatumUntilBeginningOf(10000), 3652059u);
  EXPECT_EQ(makeDate(2023, 3, 5).daysSince(makeDate(2024, 3, 5)), -366);
  EXPECT_EQ(makeDate(2023, 3, 5).absoluteDaysSince(makeDate(2024, 3, 5)), 366u);
  EXPECT_EQ(makeDate(1, 1, 6).weeksSinceDatum(), 0u);
  EXPECT_EQ(makeDate(1, 1, 7).weeksSinceDatum(), 1u);  // the first Sunday
  EXPECT_EQ(makeDate(1, 1, 14).weeksSinceDatum(), 2u);
}

TEST(QuandaAbstractDate, DayAndWeekCycles) {
  const Date anchor = makeDate(2024, 3, 5);  // a Tuesday
  EXPECT_EQ(anchor.dayOfCycle(3, anchor), 0u);
  EXPECT_EQ(anchor.previousDay().dayOfCycle(3, anchor), 2u);
  EXPECT_EQ(anchor.addingDays(3000).dayOfCycle(7, anchor), 3000u % 7);
  EXPECT_EQ(
      anchor.addingDays(5).dayOfCycleRelativeToAnchorDaysSinceDatum(4, anchor.daysSinceDatum()),
      1u);
  // Near the datum, dates below the anchor's residue are deliberately position 0 (a true cycle
  // would put 0001-01-01 at position 2 of a 3-day cycle anchored on 0001-01-05).
  EXPECT_EQ(Date::zero.dayOfCycle(3, makeDate(1, 1, 5)), 0u);
  EXPECT_EQ(makeDate(1, 1, 3).dayOfCycle(3, makeDate(1, 1, 5)), 1u);

  EXPECT_EQ(makeDate(2024, 3, 4).weekOfCycle(2, anchor, Day::monday), 0u);  // same Monday week
  EXPECT_EQ(makeDate(2024, 3, 10).weekOfCycle(2, anchor, Day::monday), 0u);
  EXPECT_EQ(makeDate(2024, 3, 11).weekOfCycle(2, anchor, Day::monday), 1u);
  EXPECT_EQ(makeDate(2024, 3, 3).weekOfCycle(2, anchor, Day::monday), 1u);   // the week before
  EXPECT_EQ(makeDate(2024, 3, 10).weekOfCycle(2, anchor, Day::sunday), 1u);  // a new Sunday week
  EXPECT_EQ(makeDate(2024, 3, 10)
                .weekOfCycleRelativeToAnchorWeekNumber(3, anchor.weekNumberAndDay(Day::sunday).week,
                                                       Day::sunday),
            1u);
}

// The number of rows equals the number of distinct preferred weeks the month's days fall in.
TEST(QuandaAbstractDate, CalendarWeeksInCountsTheGridRows) {
  for (std::uint16_t year : {1, 1900, 2000, 2015, 2023, 2024, 9999}) {
    for (std::uint8_t month = 1; month <= 12; ++month) {
      for (Day firstDay : allCases<Day>) {
        std::set<std::uint32_t> weeks;
        for (auto date = makeDate(year, month, 1);; date = date.nextDay()) {
          weeks.insert(date.weekNumberAndDay(firstDay).week);
          if (date == date.endOfMonth()) break;
        }
        EXPECT_EQ(Date::calendarWeeksIn(year, month, firstDay).value(), weeks.size())
            << year << "-" << +month << " " << firstDay;
      }
    }
  }
  const auto failed = Date::calendarWeeksIn(2024, 13, Day::sunday);
  ASSERT_FALSE(failed);
  expectErrorChain(failed.error(),
                   {{"calendarWeeksIn(year:month:preferredFirstDayOfWeek:)",
                     {"year=2024", "month=13", "preferredFirstDayOfWeek=sunday"}},
                    fieldFault("Invalid month", 2024, 13, 1)},
                   kPath);
}

// ---- Stepping --------------------------------------------------------------------------------

TEST(QuandaAbstractDate, AddingMonthsLimitsTheDayWithTheLeapStatusOfTheStartingYear) {
  const struct {
    Date from;
    std::int32_t months;
    Date::Components expected;
  } cases[] = {
      {makeDate(2024, 1, 31), 13, {2025, 2, 29}},   // deliberate: 2024's February limits the day
      {makeDate(2025, 3, 31), -13, {2024, 2, 28}},  // and 2025's here
      {makeDate(2023, 1, 31), 1, {2023, 2, 28}},
      {makeDate(2024, 5, 31), 1, {2024, 6, 30}},
      {makeDate(2023, 12, 15), 1, {2024, 1, 15}},
      {makeDate(2024, 1, 15), -1, {2023, 12, 15}},
      {makeDate(2024, 5, 31), -17, {2022, 12, 31}},
      {makeDate(2024, 12, 31), -12, {2023, 12, 31}},
      {makeDate(1, 12, 1), -11, {1, 1, 1}},
      {makeDate(9999, 12, 31), 1, {10000, 1, 31}},  // past 9999: kept as computed
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.from.addingMonths(c.months).components(), c.expected)
        << c.from << " + " << c.months << " months";
  }
  EXPECT_EQ(makeDate(9999, 12, 31).addingMonths(1).description(), "10000-01-31");
}

TEST(QuandaAbstractDate, AddingYearsLimitsTheDayInTheNewYear) {
  const Date leapDay = makeDate(2024, 2, 29);
  EXPECT_EQ(leapDay.addingYears(1).components(), (Date::Components{2025, 2, 28}));
  EXPECT_EQ(leapDay.addingYears(-4).components(), (Date::Components{2020, 2, 29}));
  EXPECT_EQ(leapDay.addingYears(-124).components(), (Date::Components{1900, 2, 28}));
  EXPECT_EQ(makeDate(5, 3, 1).addingYears(-10), makeDate(1, 3, 1));  // raised to the first year
  EXPECT_EQ(leapDay.addingYears(std::numeric_limits<std::int16_t>::min()), makeDate(1, 2, 28));
  // Years, then months, then days: each other order would give another date here.
  EXPECT_EQ(makeDate(2023, 1, 31).adding({.years = 1, .months = 1}), leapDay);
  EXPECT_EQ(makeDate(2024, 1, 31).adding({.months = 1, .days = -1}), makeDate(2024, 2, 28));
  EXPECT_EQ(makeDate(2024, 1, 31).adding({.years = 1, .months = 1, .days = 1}),
            makeDate(2025, 3, 1));
}

TEST(QuandaAbstractDate, ReplacingClampsFieldsAndLimitsTheDay) {
  const Date leapDay = makeDate(2024, 2, 29);
  const struct {
    Date from;
    Date::Replacement replacement;
    Date expected;
  } cases[] = {
      {leapDay, {}, leapDay},
      {leapDay, {.year = 2023}, makeDate(2023, 2, 28)},
      {leapDay, {.year = 0}, makeDate(1, 2, 28)},
      {leapDay, {.year = 65535, .month = 255, .day = 255}, makeDate(9999, 12, 31)},
      {leapDay, {.month = 0}, makeDate(2024, 1, 29)},
      {makeDate(2024, 1, 31), {.month = 2}, leapDay},
      {makeDate(2024, 4, 10), {.day = 31}, makeDate(2024, 4, 30)},

      {makeDate(2024, 4, 10), {.year = 2023, .month = 2, .day = 29}, makeDate(2023, 2, 28)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.from.replacing(c.replacement), c.expected) << c.from;
  }
}

// Day 0 (from replacing) and year 0 (from addingMonths) lie just outside the valid dates; what
// does not need a day count keeps working.
TEST(QuandaAbstractDate, DayZeroAndYearZeroKeepTheirFieldWiseOperations) {
  const Date dayZero = makeDate(2024, 3, 5).replacing({.day = 0});
  EXPECT_EQ(dayZero.components(), (Date::Components{2024, 3, 0}));
  EXPECT_EQ(dayZero.description(), "2024-03-00");
  EXPECT_EQ(makeDate(2024, 3, 5).addingDays(-5).replacing({.day = 0}).day(), 0);  // Feb, not 1
  EXPECT_LT(dayZero, makeDate(2024, 3, 1));
  EXPECT_GT(dayZero, makeDate(2024, 2, 29));
  // It counts as the last day of the month before.
  EXPECT_EQ(dayZero.daysSinceDatum(), makeDate(2024, 2, 29).daysSinceDatum());
  EXPECT_EQ(dayZero.nextDay(), makeDate(2024, 3, 1));
  EXPECT_EQ(dayZero.previousDay(), makeDate(2024, 2, 28));
  EXPECT_EQ(makeDate(2024, 1, 9).replacing({.day = 0}).previousDay(), makeDate(2023, 12, 30));
  EXPECT_EQ(dayZero.addingDays(1), makeDate(2024, 3, 1));
  EXPECT_EQ(dayZero.daysFromEndOfMonthZeroBased(), 31);

  const Date yearZero = makeDate(1, 1, 31).addingMonths(-1);
  EXPECT_EQ(yearZero.components(), (Date::Components{0, 12, 31}));
  EXPECT_EQ(yearZero.description(), "0000-12-31");
  EXPECT_EQ(makeDate(1, 3, 31).addingMonths(-12).components(), (Date::Components{0, 3, 31}));
  EXPECT_EQ(makeDate(1, 3, 29).addingMonths(-13).components(), (Date::Components{0, 2, 28}));
  EXPECT_LT(yearZero, Date::zero);
  EXPECT_EQ(yearZero.nextDay(), Date::zero);
  EXPECT_EQ(yearZero.addingMonths(1), makeDate(1, 1, 31));
  EXPECT_EQ(yearZero.addingYears(1), makeDate(1, 12, 31));
  EXPECT_EQ(makeDate(1, 1, 1).addingMonths(-11).daysInMonth(), 29);  // year 0 is a leap year
}

// ---- Programming errors ----------------------------------------------------------------------

TEST(QuandaAbstractDateDeathTest, ProgrammingErrorsStop) {
  const Date last = Date::validRange.max();
  const Date date = makeDate(2024, 3, 5);
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { (void)last.nextDay(); }, "day after 9999-12-31"},
      {[&] { (void)Date::zero.previousDay(); }, "day before 0001-01-01"},
      {[&] { (void)last.addingDays(1); }, "adding days leaves"},
      {[&] { (void)date.addingDays(std::numeric_limits<std::int32_t>::min()); },
       "adding days leaves"},
      // The week around a date can reach past either end.
      {[&] { (void)Date::zero.firstDayOfWeek(Day::sunday); }, "adding days leaves"},
      {[&] { (void)makeDate(1, 1, 15).addingMonths(-13); }, "adding months"},
      {[&] { (void)makeDate(9999, 1, 15).addingMonths(56537 * 12); }, "adding months"},
      // Before the datum there is no day count, and before the 1st no week of the month.
      {[&] { (void)makeDate(1, 1, 15).addingMonths(-1).daysSinceDatum(); }, "day count of a date"},
      {[&] { (void)makeDate(1, 1, 15).replacing({.day = 0}).dayOfWeek(); }, "day count of a date"},
      {[&] { (void)date.replacing({.day = 0}).weekOfMonthOneBased(); }, "week of the month"},
      {[&] { (void)makeDate(9999, 1, 1).addingYears(32767); }, "adding years"},
      {[&] { (void)date.dayOfCycle(0, date); }, "day cycle of length 0"},
      {[&] { (void)date.weekOfCycle(0, date, Day::monday); }, "week cycle of length 0"},
      // Week 0 against an anchor in week 5 of a 10-week cycle: below the residue.
      {[&] { (void)Date::zero.weekOfCycle(10, makeDate(1, 2, 5), Day::monday); },
       "week before the week cycle's first residue"},
      {[] { (void)Date::makeFromDouble(-0.6); }, "double is not finite"},
      {[] { (void)Date::makeFromDouble(std::nan("")); }, "double is not finite"},
      {[] { (void)Date::makeFromDouble(4294967295.5); }, "double is not finite"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
