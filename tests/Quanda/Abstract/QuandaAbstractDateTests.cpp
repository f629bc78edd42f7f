// The abstract date's edge cases: factory failures and their error chains, the quirks of month and
// year arithmetic, cycles and calendar grids, the JSON archive, hashing and ordering. The day count
// arithmetic itself is checked date by date in QuandaAbstractDateExhaustiveTests.cpp.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "ErrorChainExpectations.h"
#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace {

constexpr std::string_view kPath = "Quanda/Abstract/QuandaAbstractDate";

QuandaAbstractDate makeDate(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return QuandaAbstractDate::make(year, month, day).value();
}

using Args = std::vector<std::pair<std::string, std::string>>;

// The innermost link of a failed make(year:month:day:).
ExpectedErrorLink fieldFault(std::string message, int year, int month, int day) {
  return {"make(year:month:day:)",
          {{"proposedYear", std::to_string(year)},
           {"proposedMonth", std::to_string(month)},
           {"proposedDay", std::to_string(day)}},
          std::move(message)};
}

// ---- Construction --------------------------------------------------------------------------

struct FieldCase {
  int year, month, day;
  const char* message;  // null for a valid date
};

TEST(QuandaAbstractDate, MakeChecksYearThenMonthThenDay) {
  const FieldCase cases[] = {
      {1, 1, 1, nullptr},
      {9999, 12, 31, nullptr},
      {2000, 2, 29, nullptr},
      {2024, 2, 29, nullptr},
      {0, 1, 1, "Invalid year"},
      {10000, 1, 1, "Invalid year"},
      {65535, 12, 31, "Invalid year"},
      {2024, 0, 1, "Invalid month"},
      {2024, 13, 1, "Invalid month"},
      {2024, 1, 0, "Invalid day for month in year"},
      {2024, 4, 31, "Invalid day for month in year"},
      {1900, 2, 29, "Invalid day for month in year"},
      {2023, 2, 29, "Invalid day for month in year"},
      {2024, 1, 255, "Invalid day for month in year"},
      // The first failing check names the fault.
      {0, 13, 0, "Invalid year"},
      {2024, 13, 0, "Invalid month"},
  };
  for (const FieldCase& c : cases) {
    SCOPED_TRACE(std::to_string(c.year) + "-" + std::to_string(c.month) + "-" +
                 std::to_string(c.day));
    const auto y = static_cast<std::uint16_t>(c.year);
    const auto m = static_cast<std::uint8_t>(c.month);
    const auto d = static_cast<std::uint8_t>(c.day);
    const auto date = QuandaAbstractDate::make(y, m, d);
    const auto viaComponents = QuandaAbstractDate::make(QuandaAbstractDate::Components{y, m, d});
    if (c.message == nullptr) {
      ASSERT_TRUE(date) << date.error();
      EXPECT_EQ(date.value().components(), (QuandaAbstractDate::Components{y, m, d}));
      EXPECT_EQ(viaComponents.optionalValue(), date.value());
      EXPECT_EQ(QuandaAbstractDate::makeIfValid(y, m, d), date.value());
    } else {
      ASSERT_FALSE(date);
      expectErrorChain(date.error(), {fieldFault(c.message, c.year, c.month, c.day)}, kPath);
      ASSERT_FALSE(viaComponents);
      expectErrorChain(viaComponents.error(),
                       {{"make(components:)",
                         {{"proposedComponents", "Components(year: " + std::to_string(c.year) +
                                                     ", month: " + std::to_string(c.month) +
                                                     ", day: " + std::to_string(c.day) + ")"}}},
                        fieldFault(c.message, c.year, c.month, c.day)},
                       kPath);
      EXPECT_EQ(QuandaAbstractDate::makeIfValid(y, m, d), std::nullopt);
    }
  }
}

TEST(QuandaAbstractDate, MakeFromIso8601Numeric) {
  constexpr const char* kRange = "Invalid numeric ISO 8601 representation of abtract date";
  EXPECT_EQ(QuandaAbstractDate::makeFromIso8601Numeric(10101).value(), QuandaAbstractDate::zero);
  EXPECT_EQ(QuandaAbstractDate::makeFromIso8601Numeric(99991231).value(), makeDate(9999, 12, 31));
  EXPECT_EQ(QuandaAbstractDate::makeFromIso8601Numeric(20240305).value(), makeDate(2024, 3, 5));

  for (const std::uint64_t outside :
       {std::uint64_t{0}, std::uint64_t{10100}, std::uint64_t{99991232},
        std::numeric_limits<std::uint64_t>::max()}) {
    const auto date = QuandaAbstractDate::makeFromIso8601Numeric(outside);
    ASSERT_FALSE(date) << outside;
    expectErrorChain(
        date.error(),
        {{"make(iso8601Numeric:)", {{"iso8601Numeric", std::to_string(outside)}}, kRange}}, kPath);
  }

  const struct {
    std::uint64_t numeric;
    ExpectedErrorLink inner;
  } wrapped[] = {
      {20240230, fieldFault("Invalid day for month in year", 2024, 2, 30)},
      {20230229, fieldFault("Invalid day for month in year", 2023, 2, 29)},
      {20241301, fieldFault("Invalid month", 2024, 13, 1)},
      {10199, fieldFault("Invalid day for month in year", 1, 1, 99)},
      {99990231, fieldFault("Invalid day for month in year", 9999, 2, 31)},
  };
  for (const auto& c : wrapped) {
    const auto date = QuandaAbstractDate::makeFromIso8601Numeric(c.numeric);
    ASSERT_FALSE(date) << c.numeric;
    expectErrorChain(
        date.error(),
        {{"make(iso8601Numeric:)", {{"iso8601Numeric", std::to_string(c.numeric)}}}, c.inner},
        kPath);
  }
}

// A string factory's outcome: a date, a first fault of the factory itself, or a wrapped failure
// of make(year:month:day:).
struct TextCase {
  std::string_view text;
  std::optional<QuandaAbstractDate::Components> expected = std::nullopt;
  const char* message = nullptr;                          // the factory's own first fault
  std::optional<ExpectedErrorLink> inner = std::nullopt;  // else the wrapped field fault
};

void checkTextCases(KeelResult<QuandaAbstractDate> (*factory)(std::string_view),
                    const char* functionName, const std::vector<TextCase>& cases) {
  for (const TextCase& c : cases) {
    SCOPED_TRACE("\"" + std::string(c.text) + "\"");
    const auto date = factory(c.text);
    const Args args{{"iso8601String", std::string(c.text)}};
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
  checkTextCases(
      &QuandaAbstractDate::makeFromIso8601String, "make(iso8601String:)",
      {
          {"2024-03-05", QuandaAbstractDate::Components{2024, 3, 5}},
          {"0001-01-01", QuandaAbstractDate::Components{1, 1, 1}},
          {"9999-12-31", QuandaAbstractDate::Components{9999, 12, 31}},
          // Digit counts are free, leading zeros and one leading sign per token are accepted.
          {"2024-3-5", QuandaAbstractDate::Components{2024, 3, 5}},
          {"1-1-1", QuandaAbstractDate::Components{1, 1, 1}},
          {"+2024-03-05", QuandaAbstractDate::Components{2024, 3, 5}},
          {"2024-+3-+05", QuandaAbstractDate::Components{2024, 3, 5}},
          {"0000000000000000000002024-000000000003-0000000000005",
           QuandaAbstractDate::Components{2024, 3, 5}},
          // Token counts.
          {"", std::nullopt, kTokens},
          {"2024", std::nullopt, kTokens},
          {"2024-03", std::nullopt, kTokens},
          {"2024-03-05-", std::nullopt, kTokens},
          {"-2024-03-05", std::nullopt, kTokens},
          {"2024-03--0", std::nullopt, kTokens},
          {"2024/03/05", std::nullopt, kTokens},
          // Tokens that are not unsigned decimals of the field's width.
          {"--", std::nullopt, kYear},
          {"2024--05", std::nullopt, kMonth},
          {"2024-03-", std::nullopt, kDay},
          {" 2024-03-05", std::nullopt, kYear},
          {"2024-03-05 ", std::nullopt, kDay},
          {"2024-03-05\n", std::nullopt, kDay},
          {"2024-03-05\0"sv, std::nullopt, kDay},
          {"2024-03-xx", std::nullopt, kDay},
          {"2024-03-0x5", std::nullopt, kDay},
          {"2024-03-+", std::nullopt, kDay},
          {"2024-03-++5", std::nullopt, kDay},
          {"2024-03-300", std::nullopt, kDay},
          {"2024-256-05", std::nullopt, kMonth},
          {"65536-01-01", std::nullopt, kYear},
          {"99999999999999999999999999999-01-01", std::nullopt, kYear},
          {"2024-03-18446744073709551621", std::nullopt, kDay},
          {"\xEF\xBC\x92\xEF\xBC\x90\xEF\xBC\x92\xEF\xBC\x94-03-05", std::nullopt, kYear},
          {"2024-0\xD9\xA3-05", std::nullopt, kMonth},
          {"2024-03-0\xFF", std::nullopt, kDay},
          // Tokens that fit but make no date: the field check's failure, wrapped.
          {"2024-02-30", std::nullopt, nullptr,
           fieldFault("Invalid day for month in year", 2024, 2, 30)},
          {"2024-02-0", std::nullopt, nullptr,
           fieldFault("Invalid day for month in year", 2024, 2, 0)},
          {"0-01-01", std::nullopt, nullptr, fieldFault("Invalid year", 0, 1, 1)},
          {"65535-01-01", std::nullopt, nullptr, fieldFault("Invalid year", 65535, 1, 1)},
          {"2024-255-01", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 255, 1)},
          {"2024-00-01", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 0, 1)},
      });
}

TEST(QuandaAbstractDate, MakeFromIso8601StringWithoutSeparators) {
  checkTextCases(&QuandaAbstractDate::makeFromIso8601StringWithoutSeparators,
                 "make(iso8601StringWithoutSeparators:)",
                 {
                     {"20240305", QuandaAbstractDate::Components{2024, 3, 5}},
                     {"00010101", QuandaAbstractDate::Components{1, 1, 1}},
                     {"99991231", QuandaAbstractDate::Components{9999, 12, 31}},
                     // The fixed-width pieces are read like the tokens of the separated form.
                     {"+0010101", QuandaAbstractDate::Components{1, 1, 1}},
                     {"2024+3+5", QuandaAbstractDate::Components{2024, 3, 5}},
                     {"2024-3-5", std::nullopt, kMonth},
                     {"2024-0-5", std::nullopt, kDay},
                     {"2024-001", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 0, 1)},
                     {"-0000101", std::nullopt, nullptr, fieldFault("Invalid year", 0, 1, 1)},
                     {"-0010101", std::nullopt, kYear},
                     // Exactly eight characters, counted as a reader counts them.
                     {"", std::nullopt, kEightDigits},
                     {"2024035", std::nullopt, kEightDigits},
                     {"202403055", std::nullopt, kEightDigits},
                     {"2024-03-05", std::nullopt, kEightDigits},
                     {"202403\r\n", std::nullopt, kEightDigits},      // 8 bytes, 7 characters
                     {"202403\xC3\xA9", std::nullopt, kEightDigits},  // 8 bytes, 7 characters
                     {"2024030"
                      "5\xCC\x81",
                      std::nullopt, kDay},  // 10 bytes, 8 characters
                     {"\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA"
                      "2024030",
                      std::nullopt, kYear},  // a flag is one
                     {"\xEF\xBC\x92\xEF\xBC\x90\xEF\xBC\x92\xEF\xBC\x94"
                      "0305",
                      std::nullopt, kYear},
                     {"2024030\xFF", std::nullopt, kDay},
                     // Eight ASCII characters that are not a date.
                     {"x0240305", std::nullopt, kYear},
                     {" 2024030", std::nullopt, kYear},
                     {"2024x305", std::nullopt, kMonth},
                     {"202403x5", std::nullopt, kDay},
                     {"20240230", std::nullopt, nullptr,
                      fieldFault("Invalid day for month in year", 2024, 2, 30)},
                     {"00000101", std::nullopt, nullptr, fieldFault("Invalid year", 0, 1, 1)},
                     {"20241301", std::nullopt, nullptr, fieldFault("Invalid month", 2024, 13, 1)},
                 });
}

TEST(QuandaAbstractDate, MakeFromDaysSinceDatumClampsAndMakeFromDoubleRounds) {
  EXPECT_EQ(QuandaAbstractDate::makeFromDaysSinceDatum(0), QuandaAbstractDate::zero);
  EXPECT_EQ(QuandaAbstractDate::makeFromDaysSinceDatum(3652058), makeDate(9999, 12, 31));
  EXPECT_EQ(QuandaAbstractDate::makeFromDaysSinceDatum(4000000), makeDate(9999, 12, 31));
  EXPECT_EQ(QuandaAbstractDate::makeFromDaysSinceDatum(std::numeric_limits<std::uint32_t>::max()),
            makeDate(9999, 12, 31));

  const struct {
    double position;
    QuandaAbstractDate expected;
  } cases[] = {
      {0.0, QuandaAbstractDate::zero},
      {-0.0, QuandaAbstractDate::zero},
      {-0.4, QuandaAbstractDate::zero},
      {0.49, QuandaAbstractDate::zero},
      {0.5, makeDate(1, 1, 2)},  // halves round away from zero
      {738949.0, makeDate(2024, 3, 5)},
      {3652058.4, makeDate(9999, 12, 31)},
      {5e6, makeDate(9999, 12, 31)},  // beyond the range but within 32 bits: clamped
      {4294967295.4, makeDate(9999, 12, 31)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QuandaAbstractDate::makeFromDouble(c.position), c.expected) << c.position;
  }
  EXPECT_EQ(makeDate(2024, 3, 5).asDouble(), 738949.0);
}

TEST(QuandaAbstractDate, ChronoConversions) {
  using namespace std::chrono;
  EXPECT_EQ(makeDate(1970, 1, 1).sysDays(), sys_days{});
  EXPECT_EQ(QuandaAbstractDate::zero.sysDays(), sys_days{days{-719162}});
  EXPECT_EQ(makeDate(2024, 2, 29).yearMonthDay(), year{2024} / February / 29);
  EXPECT_EQ(QuandaAbstractDate::make(sys_days{days{-719162}}).value(), QuandaAbstractDate::zero);
  EXPECT_EQ(QuandaAbstractDate::make(year{9999} / December / 31).value(), makeDate(9999, 12, 31));

  for (const sys_days outside : {sys_days{days{-719163}}, sys_days{days{2932897}},
                                 sys_days{days{std::numeric_limits<int>::min()}}}) {
    const auto date = QuandaAbstractDate::make(outside);
    ASSERT_FALSE(date);
    expectErrorChain(date.error(),
                     {{"make(sysDays:)",
                       {{"daysSinceUnixEpoch", std::to_string(outside.time_since_epoch().count())}},
                       "Day count outside the valid range"}},
                     kPath);
  }
  EXPECT_TRUE(QuandaAbstractDate::make(sys_days{days{2932896}}));  // 9999-12-31

  const struct {
    year_month_day fields;
    std::string text;
    ExpectedErrorLink inner;
  } invalid[] = {
      {year{2023} / February / 29, "2023-2-29",
       fieldFault("Invalid day for month in year", 2023, 2, 29)},
      {year{0} / January / 1, "0-1-1", fieldFault("Invalid year", 0, 1, 1)},
      {year{-5} / January / 1, "-5-1-1", fieldFault("Invalid year", 0, 1, 1)},
      {year{10000} / January / 1, "10000-1-1", fieldFault("Invalid year", 10000, 1, 1)},
      {year{2024} / month{13} / 1, "2024-13-1", fieldFault("Invalid month", 2024, 13, 1)},
  };
  for (const auto& c : invalid) {
    const auto date = QuandaAbstractDate::make(c.fields);
    ASSERT_FALSE(date) << c.text;
    expectErrorChain(date.error(), {{"make(yearMonthDay:)", {{"yearMonthDay", c.text}}}, c.inner},
                     kPath);
  }
}

// ---- Serialised forms, archive, hashing, ordering --------------------------------------------

TEST(QuandaAbstractDate, TextAndNumericForms) {
  const QuandaAbstractDate date = makeDate(5, 7, 9);
  EXPECT_EQ(date.description(), "0005-07-09");
  EXPECT_EQ(date.serializeToIso8601String(), "0005-07-09");
  EXPECT_EQ(date.serializeToIso8601Numeric(), 50709u);
  std::ostringstream stream;
  stream << date << ' ' << date.components();
  EXPECT_EQ(stream.str(), "0005-07-09 Components(year: 5, month: 7, day: 9)");
}

TEST(QuandaAbstractDate, JsonArchiveIsThePackedNumber) {
  for (const QuandaAbstractDate date :
       {QuandaAbstractDate::zero, makeDate(2024, 3, 5), makeDate(9999, 12, 31)}) {
    const nlohmann::json json = date;
    EXPECT_TRUE(json.is_number_unsigned());
    EXPECT_EQ(json.get<std::uint64_t>(), date.serializeToIso8601Numeric());
    EXPECT_EQ(json.get<QuandaAbstractDate>(), date);
  }
  EXPECT_EQ(nlohmann::json::parse("20240305.0").get<QuandaAbstractDate>(), makeDate(2024, 3, 5));
  EXPECT_EQ(nlohmann::json::parse(R"({"start": 20240305})")["start"].get<QuandaAbstractDate>(),
            makeDate(2024, 3, 5));
}

TEST(QuandaAbstractDate, JsonDecodingFailures) {
  // Numbers of the archived type that make no date: the decoder's own description.
  for (const char* text : {"20240230", "10100", "0", "99991232", "18446744073709551615"}) {
    SCOPED_TRACE(text);
    try {
      (void)nlohmann::json::parse(text).get<QuandaAbstractDate>();
      ADD_FAILURE() << "decoded";
    } catch (const KeelDecodingError& error) {
      EXPECT_STREQ(error.what(), "Failed to create date from int");
      EXPECT_EQ(error.kind(), KeelDecodingError::Kind::dataCorrupted);
    }
  }
  // JSON of another type, or numbers that are no unsigned 64-bit integer: nlohmann's type error.
  for (const char* text : {"-1", "20240305.5", "1e300", "18446744073709551616", "\"20240305\"",
                           "null", "[20240305]"}) {
    SCOPED_TRACE(text);
    EXPECT_THROW((void)nlohmann::json::parse(text).get<QuandaAbstractDate>(),
                 nlohmann::json::type_error);
  }
}

TEST(QuandaAbstractDate, OrderingIsCalendarOrderAndHashingSeparatesDates) {
  EXPECT_LT(makeDate(2024, 12, 31), makeDate(2025, 1, 1));
  EXPECT_GT(makeDate(2024, 2, 1), makeDate(2024, 1, 31));
  EXPECT_EQ(makeDate(2024, 3, 5) <=> makeDate(2024, 3, 5), std::strong_ordering::equal);
  EXPECT_LT(makeDate(999, 12, 31), makeDate(1000, 1, 1));

  // Every date of several centuries hashes to its own value.
  std::unordered_set<std::size_t> hashes;
  std::unordered_set<QuandaAbstractDate> dates;
  std::size_t count = 0;
  for (auto date = makeDate(1800, 1, 1); date < makeDate(2200, 1, 1); date = date.nextDay()) {
    hashes.insert(std::hash<QuandaAbstractDate>{}(date));
    dates.insert(date);
    ++count;
  }
  EXPECT_EQ(hashes.size(), count);
  EXPECT_EQ(dates.size(), count);
  EXPECT_EQ(std::hash<QuandaAbstractDate>{}(makeDate(2024, 3, 5)),
            std::hash<QuandaAbstractDate>{}(QuandaAbstractDate::make({2024, 3, 5}).value()));
}

// ---- Counting --------------------------------------------------------------------------------

TEST(QuandaAbstractDate, ConstantsAndDayCounts) {
  EXPECT_EQ(QuandaAbstractDate::zero.daysSinceDatum(), 0u);
  EXPECT_EQ(QuandaAbstractDate::zero.dayOfWeek(), QuandaDayOfGregorianWeek::monday);
  EXPECT_EQ(QuandaAbstractDate::validRange.max(), makeDate(9999, 12, 31));
  EXPECT_EQ(QuandaAbstractDate::validRange.max().daysSinceDatum(),
            QuandaAbstractDate::validDaysSinceDatumRange.max());
  EXPECT_EQ(
      QuandaAbstractDate::makeFromIso8601Numeric(QuandaAbstractDate::minIso8601Numeric).value(),
      QuandaAbstractDate::validRange.min());
  EXPECT_EQ(QuandaAbstractDate::daysFromDatumUntilBeginningOf(0), 0u);
  EXPECT_EQ(QuandaAbstractDate::daysFromDatumUntilBeginningOf(1), 0u);
  EXPECT_EQ(QuandaAbstractDate::daysFromDatumUntilBeginningOf(10000), 3652059u);

  const QuandaAbstractDate a = makeDate(2024, 3, 5);
  const QuandaAbstractDate b = makeDate(2023, 3, 5);
  EXPECT_EQ(a.daysSince(b), 366);
  EXPECT_EQ(b.daysSince(a), -366);
  EXPECT_EQ(b.absoluteDaysSince(a), 366u);

  EXPECT_EQ(makeDate(1, 1, 6).weeksSinceDatum(), 0u);
  EXPECT_EQ(makeDate(1, 1, 7).weeksSinceDatum(), 1u);  // the first Sunday
  EXPECT_EQ(makeDate(1, 1, 13).weeksSinceDatum(), 1u);
  EXPECT_EQ(makeDate(1, 1, 14).weeksSinceDatum(), 2u);
}

TEST(QuandaAbstractDate, WeekNumberAndDayOfTheDatumForEachFirstDay) {
  // The datum is a Monday: its position in a week starting on each day, all in week 0.
  const std::uint8_t positions[] = {0, 6, 5, 4, 3, 2, 1};
  for (QuandaDayOfGregorianWeek firstDay : allCases<QuandaDayOfGregorianWeek>) {
    EXPECT_EQ(QuandaAbstractDate::zero.weekNumberAndDay(firstDay),
              (QuandaAbstractDate::WeekNumberAndDay{0, positions[ordinal(firstDay)]}))
        << firstDay;
  }
  // The first Sunday starts week 1 of Sunday weeks but stays in week 0 of Monday weeks.
  EXPECT_EQ(makeDate(1, 1, 7).weekNumberAndDay(QuandaDayOfGregorianWeek::sunday),
            (QuandaAbstractDate::WeekNumberAndDay{1, 0}));
  EXPECT_EQ(makeDate(1, 1, 7).weekNumberAndDay(QuandaDayOfGregorianWeek::monday),
            (QuandaAbstractDate::WeekNumberAndDay{0, 6}));
}

TEST(QuandaAbstractDate, PositionsInTheMonth) {
  const struct {
    QuandaAbstractDate date;
    int weekOfMonth, weekFromEnd, daysFromEnd, daysInMonth;  // zero-based
  } cases[] = {
      {makeDate(2024, 2, 1), 0, 4, 28, 29}, {makeDate(2024, 2, 7), 0, 3, 22, 29},
      {makeDate(2024, 2, 8), 1, 3, 21, 29}, {makeDate(2024, 2, 29), 4, 0, 0, 29},
      {makeDate(2023, 2, 28), 3, 0, 0, 28}, {makeDate(2023, 2, 22), 3, 0, 6, 28},
      {makeDate(2023, 2, 21), 2, 1, 7, 28}, {makeDate(2024, 12, 31), 4, 0, 0, 31},
      {makeDate(1900, 2, 28), 3, 0, 0, 28}, {makeDate(2000, 2, 29), 4, 0, 0, 29},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.date.description());
    EXPECT_EQ(c.date.weekOfMonthZeroBased(), c.weekOfMonth);
    EXPECT_EQ(c.date.weekOfMonthOneBased(), c.weekOfMonth + 1);
    EXPECT_EQ(c.date.weekFromEndOfMonthZeroBased(), c.weekFromEnd);
    EXPECT_EQ(c.date.weekFromEndOfMonthOneBased(), c.weekFromEnd + 1);
    EXPECT_EQ(c.date.daysFromEndOfMonthZeroBased(), c.daysFromEnd);
    EXPECT_EQ(c.date.daysFromEndOfMonthOneBased(), c.daysFromEnd + 1);
    EXPECT_EQ(c.date.daysInMonth(), c.daysInMonth);
    EXPECT_EQ(c.date.beginningOfMonth(), makeDate(c.date.year(), c.date.month(), 1));
    EXPECT_EQ(c.date.endOfMonth(), makeDate(c.date.year(), c.date.month(), c.daysInMonth));
  }
}

TEST(QuandaAbstractDate, FirstAndLastDayOfThePreferredWeek) {
  const QuandaAbstractDate thursday = makeDate(2024, 2, 29);
  ASSERT_EQ(thursday.dayOfWeek(), QuandaDayOfGregorianWeek::thursday);
  const struct {
    QuandaDayOfGregorianWeek firstDay;
    QuandaAbstractDate first, last;
  } cases[] = {
      {QuandaDayOfGregorianWeek::monday, makeDate(2024, 2, 26), makeDate(2024, 3, 3)},
      {QuandaDayOfGregorianWeek::thursday, thursday, makeDate(2024, 3, 6)},
      {QuandaDayOfGregorianWeek::friday, makeDate(2024, 2, 23), thursday},
      {QuandaDayOfGregorianWeek::sunday, makeDate(2024, 2, 25), makeDate(2024, 3, 2)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(thursday.firstDayOfWeek(c.firstDay), c.first) << c.firstDay;
    EXPECT_EQ(thursday.lastDayOfWeekInc(c.firstDay), c.last) << c.firstDay;
  }
}

TEST(QuandaAbstractDate, DayAndWeekCycles) {
  const QuandaAbstractDate anchor = makeDate(2024, 3, 5);
  EXPECT_EQ(anchor.dayOfCycle(3, anchor), 0u);
  EXPECT_EQ(anchor.nextDay().dayOfCycle(3, anchor), 1u);
  EXPECT_EQ(anchor.previousDay().dayOfCycle(3, anchor), 2u);
  EXPECT_EQ(anchor.addingDays(-3).dayOfCycle(3, anchor), 0u);
  EXPECT_EQ(anchor.addingDays(3000).dayOfCycle(7, anchor), 3000u % 7);
  EXPECT_EQ(anchor.addingDays(17).dayOfCycle(1, anchor), 0u);
  EXPECT_EQ(
      anchor.addingDays(5).dayOfCycleRelativeToAnchorDaysSinceDatum(4, anchor.daysSinceDatum()),
      1u);
  // Near the datum, dates below the anchor's residue are deliberately position 0 (a true cycle
  // would put 0001-01-01 at position 2 of a 3-day cycle anchored on 0001-01-05).
  EXPECT_EQ(QuandaAbstractDate::zero.dayOfCycle(3, makeDate(1, 1, 5)), 0u);
  EXPECT_EQ(makeDate(1, 1, 2).dayOfCycle(3, makeDate(1, 1, 5)), 0u);
  EXPECT_EQ(makeDate(1, 1, 3).dayOfCycle(3, makeDate(1, 1, 5)), 1u);

  constexpr auto monday = QuandaDayOfGregorianWeek::monday;
  constexpr auto sunday = QuandaDayOfGregorianWeek::sunday;
  ASSERT_EQ(anchor.dayOfWeek(), QuandaDayOfGregorianWeek::tuesday);
  EXPECT_EQ(anchor.weekOfCycle(2, anchor, monday), 0u);
  EXPECT_EQ(makeDate(2024, 3, 4).weekOfCycle(2, anchor, monday), 0u);  // same Monday week
  EXPECT_EQ(makeDate(2024, 3, 10).weekOfCycle(2, anchor, monday), 0u);
  EXPECT_EQ(makeDate(2024, 3, 11).weekOfCycle(2, anchor, monday), 1u);
  EXPECT_EQ(makeDate(2024, 3, 18).weekOfCycle(2, anchor, monday), 0u);
  EXPECT_EQ(makeDate(2024, 3, 3).weekOfCycle(2, anchor, monday), 1u);   // the week before
  EXPECT_EQ(makeDate(2024, 3, 10).weekOfCycle(2, anchor, sunday), 1u);  // a new Sunday week
  EXPECT_EQ(
      makeDate(2024, 3, 10)
          .weekOfCycleRelativeToAnchorWeekNumber(3, anchor.weekNumberAndDay(sunday).week, sunday),
      1u);
}

// The number of rows equals the number of distinct preferred weeks the month's days fall in.
TEST(QuandaAbstractDate, CalendarWeeksInCountsTheGridRows) {
  for (std::uint16_t year : {1, 1900, 2000, 2015, 2023, 2024, 9999}) {
    for (std::uint8_t month = 1; month <= 12; ++month) {
      for (QuandaDayOfGregorianWeek firstDay : allCases<QuandaDayOfGregorianWeek>) {
        std::set<std::uint32_t> weeks;
        for (auto date = makeDate(year, month, 1);; date = date.nextDay()) {
          weeks.insert(date.weekNumberAndDay(firstDay).week);
          if (date == date.endOfMonth()) break;
        }
        const auto rows = QuandaAbstractDate::calendarWeeksIn(year, month, firstDay);
        ASSERT_TRUE(rows);
        EXPECT_EQ(rows.value(), weeks.size()) << year << "-" << +month << " " << firstDay;
      }
    }
  }
  EXPECT_EQ(QuandaAbstractDate::calendarWeeksIn(2024, 2, QuandaDayOfGregorianWeek::monday).value(),
            5);
  EXPECT_EQ(QuandaAbstractDate::calendarWeeksIn(2015, 2, QuandaDayOfGregorianWeek::sunday).value(),
            4);
  EXPECT_EQ(QuandaAbstractDate::calendarWeeksIn(2024, 9, QuandaDayOfGregorianWeek::monday).value(),
            6);

  const auto failed =
      QuandaAbstractDate::calendarWeeksIn(2024, 13, QuandaDayOfGregorianWeek::sunday);
  ASSERT_FALSE(failed);
  expectErrorChain(failed.error(),
                   {{"calendarWeeksIn(year:month:preferredFirstDayOfWeek:)",
                     {{"year", "2024"}, {"month", "13"}, {"preferredFirstDayOfWeek", "sunday"}}},
                    fieldFault("Invalid month", 2024, 13, 1)},
                   kPath);
}

// ---- Stepping --------------------------------------------------------------------------------

TEST(QuandaAbstractDate, AddingMonthsLimitsTheDayWithTheLeapStatusOfTheStartingYear) {
  const struct {
    QuandaAbstractDate from;
    std::int32_t months;
    QuandaAbstractDate::Components expected;
  } cases[] = {
      {makeDate(2024, 1, 31), 13, {2025, 2, 29}},   // deliberate: 2024's February limits the day
      {makeDate(2025, 3, 31), -13, {2024, 2, 28}},  // and 2025's here
      {makeDate(2024, 3, 31), -1, {2024, 2, 29}},   {makeDate(2023, 3, 31), -1, {2023, 2, 28}},
      {makeDate(2023, 1, 31), 1, {2023, 2, 28}},    {makeDate(2024, 1, 31), 1, {2024, 2, 29}},
      {makeDate(2024, 5, 31), 1, {2024, 6, 30}},    {makeDate(2024, 5, 15), 0, {2024, 5, 15}},
      {makeDate(2023, 12, 15), 1, {2024, 1, 15}},   {makeDate(2024, 1, 15), -1, {2023, 12, 15}},
      {makeDate(2024, 5, 31), -17, {2022, 12, 31}}, {makeDate(2024, 12, 31), -12, {2023, 12, 31}},
      {makeDate(2024, 1, 1), 24, {2026, 1, 1}},     {makeDate(1, 12, 1), -11, {1, 1, 1}},
      {makeDate(9999, 12, 31), 1, {10000, 1, 31}},  // past 9999: kept as computed
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.from.addingMonths(c.months).components(), c.expected)
        << c.from << " + " << c.months << " months";
  }
  EXPECT_EQ(makeDate(9999, 12, 31).addingMonths(1).description(), "10000-01-31");
}

TEST(QuandaAbstractDate, AddingYearsLimitsTheDayInTheNewYear) {
  const struct {
    QuandaAbstractDate from;
    std::int16_t years;
    QuandaAbstractDate::Components expected;
  } cases[] = {
      {makeDate(2024, 2, 29), 1, {2025, 2, 28}},
      {makeDate(2024, 2, 29), 4, {2028, 2, 29}},
      {makeDate(2024, 2, 29), -4, {2020, 2, 29}},
      {makeDate(2024, 2, 29), -124, {1900, 2, 28}},
      {makeDate(2024, 3, 31), 0, {2024, 3, 31}},
      {makeDate(5, 3, 1), -10, {1, 3, 1}},  // raised to the first year
      {makeDate(2024, 2, 29), std::numeric_limits<std::int16_t>::min(), {1, 2, 28}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.from.addingYears(c.years).components(), c.expected)
        << c.from << " + " << c.years << " years";
  }
}

TEST(QuandaAbstractDate, AddingAmountsAppliesYearsThenMonthsThenDays) {
  // Each order would give another date here.
  EXPECT_EQ(makeDate(2023, 1, 31).adding({.years = 1, .months = 1}), makeDate(2024, 2, 29));
  EXPECT_EQ(makeDate(2024, 1, 31).adding({.months = 1, .days = -1}), makeDate(2024, 2, 28));
  EXPECT_EQ(makeDate(2024, 1, 31).adding({.years = 1, .months = 1, .days = 1}),
            makeDate(2025, 3, 1));
  EXPECT_EQ(makeDate(2024, 1, 31).adding({}), makeDate(2024, 1, 31));
  EXPECT_EQ(makeDate(2024, 1, 31).adding({.days = 0}), makeDate(2024, 1, 31));
}

TEST(QuandaAbstractDate, ReplacingClampsFieldsAndLimitsTheDay) {
  const QuandaAbstractDate leapDay = makeDate(2024, 2, 29);
  const struct {
    QuandaAbstractDate from;
    QuandaAbstractDate::Replacement replacement;
    QuandaAbstractDate expected;
  } cases[] = {
      {leapDay, {}, leapDay},
      {leapDay, {.year = 2023}, makeDate(2023, 2, 28)},
      {leapDay, {.year = 0}, makeDate(1, 2, 28)},
      {leapDay, {.year = 10000}, makeDate(9999, 2, 28)},
      {leapDay, {.year = 65535, .month = 255, .day = 255}, makeDate(9999, 12, 31)},
      {leapDay, {.month = 4}, makeDate(2024, 4, 29)},
      {leapDay, {.month = 0}, makeDate(2024, 1, 29)},
      {leapDay, {.month = 13}, makeDate(2024, 12, 29)},
      {makeDate(2024, 1, 31), {.month = 2}, leapDay},
      {makeDate(2024, 4, 10), {.day = 31}, makeDate(2024, 4, 30)},
      {makeDate(2024, 4, 10), {.day = 0}, makeDate(2024, 4, 1)},
      {makeDate(2024, 4, 10), {.year = 2023, .month = 2, .day = 29}, makeDate(2023, 2, 28)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.from.replacing(c.replacement), c.expected) << c.from;
  }
}

TEST(QuandaAbstractDate, EvaluatesAtCompileTime) {
  constexpr auto date = QuandaAbstractDate::makeIfValid(2024, 2, 29);
  static_assert(date.has_value());
  static_assert(date->daysSinceDatum() == 738944);
  static_assert(date->nextDay() == QuandaAbstractDate::makeIfValid(2024, 3, 1));
  static_assert(date->addingDays(-738944) == QuandaAbstractDate::zero);
  static_assert(QuandaAbstractDate::makeFromDaysSinceDatum(3652058) ==
                QuandaAbstractDate::validRange.max());
  static_assert(!QuandaAbstractDate::makeIfValid(2023, 2, 29).has_value());
  static_assert(std::is_trivially_copyable_v<QuandaAbstractDate>);
  static_assert(sizeof(QuandaAbstractDate) == 4);
  SUCCEED();
}

// ---- Programming errors ----------------------------------------------------------------------

using QuandaAbstractDateDeathTest = ::testing::Test;

TEST_F(QuandaAbstractDateDeathTest, SteppingOutOfTheRangeStops) {
  const QuandaAbstractDate last = makeDate(9999, 12, 31);
  EXPECT_DEATH((void)last.nextDay(), "day after 9999-12-31");
  EXPECT_DEATH((void)QuandaAbstractDate::zero.previousDay(), "day before 0001-01-01");
  EXPECT_DEATH((void)last.addingDays(1), "adding days leaves");
  EXPECT_DEATH((void)QuandaAbstractDate::zero.addingDays(-1), "adding days leaves");
  EXPECT_DEATH((void)makeDate(2024, 3, 5).addingDays(std::numeric_limits<std::int32_t>::max()),
               "adding days leaves");
  EXPECT_DEATH((void)makeDate(2024, 3, 5).addingDays(std::numeric_limits<std::int32_t>::min()),
               "adding days leaves");
  // The week around a date can reach past either end.
  EXPECT_DEATH((void)QuandaAbstractDate::zero.firstDayOfWeek(QuandaDayOfGregorianWeek::sunday),
               "adding days leaves");
  EXPECT_DEATH((void)last.lastDayOfWeekInc(QuandaDayOfGregorianWeek::monday), "adding days leaves");
  EXPECT_DEATH((void)makeDate(1, 1, 15).addingMonths(-1), "adding months");
  EXPECT_DEATH((void)makeDate(9999, 1, 1).addingYears(32767), "adding years");
}

TEST_F(QuandaAbstractDateDeathTest, ZeroCycleLengthsAndEarlyWeeksStop) {
  const QuandaAbstractDate date = makeDate(2024, 3, 5);
  EXPECT_DEATH((void)date.dayOfCycle(0, date), "day cycle of length 0");
  EXPECT_DEATH((void)date.dayOfCycleRelativeToAnchorDaysSinceDatum(0, 0), "day cycle of length 0");
  EXPECT_DEATH((void)date.weekOfCycle(0, date, QuandaDayOfGregorianWeek::monday),
               "week cycle of length 0");
  // Week 0 against an anchor in week 5 of a 10-week cycle: below the residue.
  EXPECT_DEATH((void)QuandaAbstractDate::zero.weekOfCycle(10, makeDate(1, 2, 5),
                                                          QuandaDayOfGregorianWeek::monday),
               "week before the week cycle's first residue");
}

TEST_F(QuandaAbstractDateDeathTest, PositionsThatAreNoDayCountStop) {
  for (const double position :
       {-1.0, -0.6, std::nan(""), std::numeric_limits<double>::infinity(), 1e12, 4294967295.5}) {
    EXPECT_DEATH((void)QuandaAbstractDate::makeFromDouble(position), "double is not finite")
        << position;
  }
}

}  // namespace
