// The human syntax of date masks: each form gives the mask it names, combinations nest as
// documented, and unreadable rules fail with the part that could not be read.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <utility>

#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

namespace {

using nlohmann::json;

struct SyntaxCase {
  const char* syntax;
  const char* tagged;  // the tagged archive of the expected mask
};

TEST(QuandaDateMaskSyntax, EachFormNamesItsMask) {
  const SyntaxCase cases[] = {
      {"every day", R"({"kind":"everyDay","mask":{}})"},
      {"Weekdays",
       R"({"kind":"daysOfWeek","mask":["monday","tuesday","wednesday","thursday","friday"]})"},
      {"sat, Sundays", R"({"kind":"daysOfWeek","mask":["saturday","sunday"]})"},
      {"days 1,15", R"({"kind":"daysOfMonth","mask":{"oneBasedOrdinals":[1,15]}})"},
      {"last day", R"({"kind":"reverseDaysOfMonth","mask":{"oneBasedOrdinals":[1]}})"},
      {"days 1, 2 from end", R"({"kind":"reverseDaysOfMonth","mask":{"oneBasedOrdinals":[1,2]}})"},
      {"week 2", R"({"kind":"weeksOfMonth","mask":{"oneBasedWeeks":[2]}})"},
      {"last week", R"({"kind":"reverseWeeksOfMonth","mask":{"oneBasedWeeks":[1]}})"},
      {"2nd tue",
       R"({"kind":"weekdaysOfMonth","mask":{"daysOfWeek":["tuesday"],"oneBasedWeeks":[2]}})"},
      {"first,third mon,wed",
       R"({"kind":"weekdaysOfMonth","mask":{"daysOfWeek":["monday","wednesday"],"oneBasedWeeks":[1,3]}})"},
      {"last fri",
       R"({"kind":"reverseWeekdaysOfMonth","mask":{"daysOfWeek":["friday"],"oneBasedWeeks":[1]}})"},
      {"2nd last sunday",
       R"({"kind":"reverseWeekdaysOfMonth","mask":{"daysOfWeek":["sunday"],"oneBasedWeeks":[2]}})"},
      {"every 3 days from 2024-01-01",
       R"({"kind":"dayCycle","mask":{"anchorDaysSinceDatum":738885,"days":[true,false,false]}})"},
      {"pattern 110 from 0001-01-02",
       R"({"kind":"dayCycle","mask":{"anchorDaysSinceDatum":1,"days":[true,true,false]}})"},
      {"every other week from 2024-01-03",
       R"({"kind":"weekCycle","mask":{"anchorDate":20240103,"weeks":[true,false]}})"},
      {"week pattern 011 from 2024-01-03",
       R"({"kind":"weekCycle","mask":{"anchorDate":20240103,"weeks":[false,true,true]}})"},
      {"mon,thu every 3 weeks from 2024-01-01",
       R"({"kind":"daysOfWeeks","mask":{"anchorDate":20240101,"daysOfWeek":["monday","thursday"],"weeks":[true,false,false]}})"},
      {"2024-12-25",
       R"({"kind":"dateRange","mask":{"dateRangeInc":{"max":20241225,"min":20241225}}})"},
      {"holidays 2024-12-24..2024-12-26, 2024-07-01..2024-07-14",
       R"({"kind":"dateRanges","mask":{"dateRanges":[{"lowerBound":20240701,"upperBound":20240714},{"lowerBound":20241224,"upperBound":20241226}]}})"},
      {"not mon", R"({"kind":"not","mask":{"mask":{"kind":"daysOfWeek","mask":["monday"]}}})"},
      {"mon except 2024-07-01..2024-07-14",
       R"({"kind":"allOf","mask":{"masks":[{"kind":"daysOfWeek","mask":["monday"]},{"kind":"not","mask":{"mask":{"kind":"dateRange","mask":{"dateRangeInc":{"max":20240714,"min":20240701}}}}}]}})"},
      {"MARCH", R"({"kind":"monthsOfYear","mask":[3]})"},
      {"mar 14",
       R"({"kind":"allOf","mask":{"masks":[{"kind":"monthsOfYear","mask":[3]},{"kind":"daysOfMonth","mask":{"oneBasedOrdinals":[14]}}]}})"},
      {"last mon of may",
       R"({"kind":"allOf","mask":{"masks":[{"kind":"reverseWeekdaysOfMonth","mask":{"daysOfWeek":["monday"],"oneBasedWeeks":[1]}},{"kind":"monthsOfYear","mask":[5]}]}})"},
      {"every 3 months from 2024-01",
       R"({"kind":"monthCycle","mask":{"anchorDate":20240101,"months":[true,false,false]}})"},
      {"every 2 years from 2024-03 on 14",
       R"({"kind":"allOf","mask":{"masks":[{"kind":"monthCycle","mask":{"anchorDate":20240301,"months":[true,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false,false]}},{"kind":"daysOfMonth","mask":{"oneBasedOrdinals":[14]}}]}})"},
      {"month pattern 10 from 2024-02-10",
       R"({"kind":"monthCycle","mask":{"anchorDate":20240210,"months":[true,false]}})"},
      {"Every Monday", R"({"kind":"daysOfWeek","mask":["monday"]})"},
      {"every other monday from 2024-01-01",
       R"({"kind":"daysOfWeeks","mask":{"anchorDate":20240101,"daysOfWeek":["monday"],"weeks":[true,false]}})"},
      {"fri and day 13 or (last day)",
       R"({"kind":"anyOf","mask":{"masks":[{"kind":"allOf","mask":{"masks":[{"kind":"daysOfWeek","mask":["friday"]},{"kind":"daysOfMonth","mask":{"oneBasedOrdinals":[13]}}]}},{"kind":"reverseDaysOfMonth","mask":{"oneBasedOrdinals":[1]}}]}})"},
  };
  for (const SyntaxCase& test : cases) {
    const auto mask = makeDateMaskFromSyntax(test.syntax);
    ASSERT_TRUE(mask) << test.syntax << "\n" << mask.error().chainDescription();
    EXPECT_EQ(encodeTaggedDateMask(*mask.value()).dump(), test.tagged) << test.syntax;
  }
}

TEST(QuandaDateMaskSyntax, UnreadableRulesNameTheirPartAndWhy) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "", "there is no rule"},
      {"fortnightly", "fortnightly", "not a rule this syntax knows"},
      {"mon and", "", "a rule expected"},
      {"(mon", "", "\")\" expected"},
      {"days 1,x", "x", "not a number"},
      {"256th mon", "256th", "no such ordinal"},
      {"2024-07-14..2024-07-01", "2024-07-14..2024-07-01", "the range is reversed"},
      {"every 0 days from 2024-01-01", "every 0 days", "a cycle needs at least one day"},
      {"every 3 months", "every 3 months", "a cycle needs a start: \"from\" and a date"},
      {"every 2 fortnights from 2024-01-01", "fortnights",
       "not a unit of a cycle (days, weeks, months, years)"},
  };
  for (const auto& [syntax, part, reason] : cases) {
    const auto mask = makeDateMaskFromSyntax(syntax);
    ASSERT_FALSE(mask) << syntax;
    EXPECT_EQ(mask.error().message(), "Unreadable date mask") << syntax;
    EXPECT_EQ(mask.error().argument("part"), part) << syntax;
    EXPECT_EQ(mask.error().argument("reason"), reason) << syntax;
    EXPECT_EQ(mask.error().functionName(), "makeDateMask(syntax:)");
  }
  const auto badDate = makeDateMaskFromSyntax("every 2 weeks from 2023-02-29");
  ASSERT_FALSE(badDate);
  EXPECT_EQ(badDate.error().innermost().message(), "Invalid day for month in year");
  EXPECT_EQ(badDate.error().argument("syntax"), "every 2 weeks from 2023-02-29");
}

// A rule inside `levels` "not"s, or inside `levels` parentheses that each add an any of.
std::string notsAround(std::size_t levels, const std::string& rule) {
  std::string text;
  for (std::size_t level = 0; level < levels; ++level) text += "not ";
  return text + rule;
}
std::string groupsAround(std::size_t levels, const std::string& rule) {
  std::string text;
  for (std::size_t level = 0; level < levels; ++level) text += "sat or (";
  return text + rule + std::string(levels, ')');
}

TEST(QuandaDateMaskSyntax, NestingStopsWhereTheArchiveStops) {
  // Nesting counts as the archive does: a rule alone is one level, each combination one more.
  const std::pair<std::string, bool> cases[] = {
      {notsAround(63, "mon"), true},
      {notsAround(64, "mon"), false},
      {groupsAround(63, "mon"), true},
      {groupsAround(64, "mon"), false},
      {std::string(64, '(') + "mon" + std::string(64, ')'), true},
      {std::string(65, '(') + "mon" + std::string(65, ')'), false},
      {notsAround(20000, "mon"), false},
      {std::string(8000, '(') + "mon" + std::string(8000, ')'), false},
  };
  for (const auto& [syntax, readable] : cases) {
    const auto mask = makeDateMaskFromSyntax(syntax);
    ASSERT_EQ(bool(mask), readable) << syntax.substr(0, 80);
    if (readable) {
      const auto again =
          decodeTaggedDateMask(json::parse(encodeTaggedDateMask(*mask.value()).dump()));
      EXPECT_TRUE(again->isEqual(*mask.value()));
    } else {
      EXPECT_EQ(mask.error().message(), "Date masks nested too deeply");
      EXPECT_EQ(mask.error().argument("maximumNesting"), "64");
    }
  }
}

TEST(QuandaDateMaskSyntax, RulesAlsoComeAsArchives) {
  const auto fromArchive =
      makeDateMaskFromSyntaxOrArchive(R"( {"kind": "daysOfWeek", "mask": ["monday"]})");
  ASSERT_TRUE(fromArchive);
  EXPECT_TRUE(fromArchive.value()->isEqual(*makeDateMaskFromSyntax("mon").value()));
  EXPECT_TRUE(makeDateMaskFromSyntaxOrArchive("last fri"));
  const auto broken = makeDateMaskFromSyntaxOrArchive(
      R"({"kind": "dayCycle", "mask": {"anchorDaysSinceDatum": 0, "days": []}})");
  ASSERT_FALSE(broken);
  EXPECT_EQ(broken.error().message(), "Undecodable date mask archive");
  EXPECT_EQ(broken.error().argument("reason"),
            "Empty 'days' list: a day cycle needs at least one day");
  EXPECT_EQ(makeDayOfGregorianWeekFromSyntax("Sun").value(), QuandaDayOfGregorianWeek::sunday);
  EXPECT_FALSE(makeDayOfGregorianWeekFromSyntax("someday"));
}

}  // namespace
