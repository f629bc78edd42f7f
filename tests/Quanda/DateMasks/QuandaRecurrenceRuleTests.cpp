// Recurrence rules in and out, against libical's own expansion: thousands of random rules read
// into masks give libical's dates, and random masks written as rules give theirs back. libical
// 3.0 is Gregorian only from 1582-10-15 and refuses starts after 2582-12-31, so every comparison
// starts and ends inside that window.
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "IcalendarOracle.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"

namespace {

using icalendar_oracle::expand;
constexpr std::size_t compared = 150;  // occurrences compared per rule

std::vector<QuandaAbstractDate> maskDates(const QuandaDateMasking& mask, QuandaAbstractDate from,
                                          QuandaDayOfGregorianWeek firstDayOfWeek,
                                          std::size_t most) {
  std::vector<QuandaAbstractDate> dates;
  for (QuandaAbstractDate date :
       mask.matchingDates(KeelDomain(from, icalendar_oracle::windowEnd), firstDayOfWeek)) {
    if (dates.size() == most) break;
    dates.push_back(date);
  }
  return dates;
}

QuandaAbstractDate randomDate(std::mt19937_64& random) {
  const std::uint32_t low = QuandaAbstractDate::make(1600, 1, 1).value().daysSinceDatum();
  const std::uint32_t high = QuandaAbstractDate::make(2500, 12, 31).value().daysSinceDatum();
  return QuandaAbstractDate::makeFromDaysSinceDatum(
      std::uniform_int_distribution<std::uint32_t>(low, high)(random));
}

int pick(std::mt19937_64& random, int low, int high) {
  return std::uniform_int_distribution<int>(low, high)(random);
}

std::string numberList(std::mt19937_64& random, int count, int low, int high, bool negatives) {
  std::set<int> values;
  for (int index = 0; index < count; ++index) {
    const int value = pick(random, low, high);
    values.insert(negatives && pick(random, 0, 2) == 0 ? -value : value);
  }
  std::string text;
  for (int value : values) text += (text.empty() ? "" : ",") + std::to_string(value);
  return text;
}

std::string randomRule(std::mt19937_64& random) {
  static const char* const frequencies[] = {"DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
  static const char* const codes[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
  const std::string frequency = frequencies[pick(random, 0, 3)];
  std::string rule = "FREQ=" + frequency;
  if (pick(random, 0, 1) == 0) rule += ";INTERVAL=" + std::to_string(pick(random, 1, 5));
  const bool byMonth = pick(random, 0, 2) == 0 || (frequency == "YEARLY" && pick(random, 0, 1));
  const bool ordinals =
      (frequency == "MONTHLY" || (frequency == "YEARLY" && byMonth)) && pick(random, 0, 1) == 0;
  const bool setPosition = ordinals && pick(random, 0, 3) == 0;
  const int byDay = pick(random, 0, 2);
  if (setPosition) {
    rule += ";BYDAY=" + std::string(codes[pick(random, 0, 6)]) +
            ";BYSETPOS=" + numberList(random, pick(random, 1, 2), 1, 5, true);
  } else if (byDay != 0) {
    std::set<std::string> days;
    for (int index = 0; index < pick(random, 1, 3); ++index) {
      const int week = ordinals ? pick(random, 1, 5) * (pick(random, 0, 1) ? 1 : -1) : 0;
      days.insert((week != 0 ? std::to_string(week) : "") + codes[pick(random, 0, 6)]);
    }
    std::string list;
    for (const auto& day : days) list += (list.empty() ? "" : ",") + day;
    rule += ";BYDAY=" + list;
  }
  // libical 3.0 never matches a negative BYMONTHDAY in a daily rule, where it is a limit like
  // the others: those are left out.
  if (frequency != "WEEKLY" && !setPosition && pick(random, 0, 2) == 0) {
    rule += ";BYMONTHDAY=" + numberList(random, pick(random, 1, 3), 1, 31, frequency != "DAILY");
  }
  if (byMonth) rule += ";BYMONTH=" + numberList(random, pick(random, 1, 3), 1, 12, false);
  // libical 3.0 counts the weeks of a weekly interval from Monday whatever WKST says, so the
  // weekly rules with an interval start their weeks on Monday here.
  const bool weeksCount = frequency == "WEEKLY" && rule.find("INTERVAL") != std::string::npos;
  rule += ";WKST=" + std::string(weeksCount ? "MO" : codes[pick(random, 0, 6)]);
  const int end = pick(random, 0, 3);
  if (end == 0) rule += ";COUNT=" + std::to_string(pick(random, 1, 40));
  if (end == 1) rule += ";UNTIL=" + icalendar_oracle::compact(randomDate(random));
  return rule;
}

// The rule without its COUNT or UNTIL, to find a start the rule itself produces.
std::string withoutEnd(const std::string& rule) {
  const std::size_t end =
      rule.find(";COUNT=") != std::string::npos ? rule.find(";COUNT=") : rule.find(";UNTIL=");
  return end == std::string::npos ? rule : rule.substr(0, end);
}

TEST(QuandaRecurrenceRule, ImportedRulesExpandAsLibicalDoes) {
  std::mt19937_64 random(20240105);
  int checked = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::string rule = randomRule(random);
    // A start the rule produces (the text leaves a start it does not produce undefined).
    const auto open = QuandaRecurrenceRule::importing(withoutEnd(rule), randomDate(random));
    if (!open) {
      // Only a position in a year of several months is left out of the generated rules' reach.
      ASSERT_EQ(open.error().argument("part"), "BYSETPOS") << rule;
      continue;
    }
    const auto start = open.value().mask->firstMatch(
        KeelDomain(open.value().start, icalendar_oracle::windowEnd), open.value().firstDayOfWeek);
    if (!start) continue;
    const auto imported = QuandaRecurrenceRule::importing(
        "DTSTART;VALUE=DATE:" + icalendar_oracle::compact(*start) + "\r\nRRULE:" + rule,
        std::nullopt);
    ASSERT_TRUE(imported) << rule;
    const auto expected = expand(rule, *start, compared);
    const auto actual =
        maskDates(*imported.value().mask, *start, imported.value().firstDayOfWeek, compared);
    ASSERT_EQ(actual, expected) << rule << " from " << *start;
    ++checked;
  }
  EXPECT_GT(checked, 1300);
}

// Random masks of the exportable kinds: a cycle or none, rules within the month, months, a
// range, dates left out or added.
std::string randomExportableSyntax(std::mt19937_64& random) {
  static const char* const days[] = {"mon", "tue", "wed", "thu", "fri", "sat", "sun"};
  static const char* const months[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                       "jul", "aug", "sep", "oct", "nov", "dec"};
  const QuandaAbstractDate anchor = randomDate(random);
  std::vector<std::string> parts;
  const int cycle = pick(random, 0, 4);
  const int within = pick(random, 0, 4);
  const std::string n = std::to_string(pick(random, 1, 4));
  if (cycle == 1 && within != 3)
    parts.push_back("every " + n + " days from " + anchor.description());
  if (cycle == 2 && within != 3 && within != 2) {
    parts.push_back(std::string(days[pick(random, 0, 6)]) + "," + days[pick(random, 0, 6)] +
                    " every " + n + " weeks from " + anchor.description());
  }
  if (cycle == 3) parts.push_back("every " + n + " months from " + anchor.description());
  if (within == 1 && cycle != 2) parts.push_back(std::string(days[pick(random, 0, 6)]) + "s");
  if (within == 2)
    parts.push_back("days " + std::to_string(pick(random, 1, 31)) + "," +
                    std::to_string(pick(random, 1, 31)));
  if (within == 3) {
    parts.push_back(std::string(pick(random, 0, 1) ? "2nd " : "last ") + days[pick(random, 0, 6)]);
  }
  // (Not beside a day cycle: libical 3.0 never matches a negative BYMONTHDAY in a daily rule.)
  if (within == 4 && cycle != 2 && (cycle != 1 || n == "1")) parts.push_back("days 1,2 from end");
  // (Not beside a week cycle: libical 3.0 steps a weekly rule with an interval and BYMONTH by
  // months, where BYMONTH only limits.)
  if (cycle != 2 && pick(random, 0, 2) == 0)
    parts.push_back(std::string(months[pick(random, 0, 11)]) + "," + months[pick(random, 0, 11)]);
  if (pick(random, 0, 3) == 0) {
    parts.push_back(anchor.description() + ".." +
                    anchor.addingDays(pick(random, 30, 3000)).description());
  }
  if (parts.empty()) parts.push_back("every day");
  std::string syntax;
  for (const auto& part : parts) syntax += (syntax.empty() ? "" : " and ") + part;
  if (pick(random, 0, 3) == 0) {
    syntax += " except " + anchor.addingDays(pick(random, 0, 400)).description() + ".." +
              anchor.addingDays(pick(random, 400, 500)).description();
  }
  if (pick(random, 0, 3) == 0) {
    syntax = "(" + syntax + ") or " + anchor.addingDays(pick(random, -30, 200)).description();
  }
  return syntax;
}

TEST(QuandaRecurrenceRule, ExportedMasksExpandToTheirOwnDates) {
  std::mt19937_64 random(7);
  int checked = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::string syntax = randomExportableSyntax(random);
    const auto mask = makeDateMaskFromSyntax(syntax);
    ASSERT_TRUE(mask) << syntax << "\n" << mask.error().chainDescription();
    const auto firstDay =
        syntax.find(" weeks ") != std::string::npos
            ? QuandaDayOfGregorianWeek::monday  // as in the imported rules above
            : makeDayOfGregorianWeek(static_cast<std::uint8_t>(pick(random, 0, 6)));
    const QuandaAbstractDate from = randomDate(random);
    const auto exported = QuandaRecurrenceRule::exporting(*mask.value(), from, firstDay);
    if (!exported) {
      // No date from the start, or an added first date off the rule's cycle.
      const std::string& message = exported.error().message();
      const std::string reason(exported.error().argument("reason").value_or(""));
      ASSERT_TRUE(message == "Date mask has no occurrence" ||
                  reason == "the first date lies off the cycle or before its first period" ||
                  reason == "the first date is an added date before the range" ||
                  reason == "more than 1000 dates to add or leave out")
          << syntax << "\n"
          << exported.error().chainDescription();
      continue;
    }
    const QuandaRecurrenceRule& rule = exported.value();
    // DTSTART always counts; then the rule's dates, less EXDATE, plus RDATE.
    std::set<QuandaAbstractDate> expected{rule.start};
    for (QuandaAbstractDate date : expand(rule.rule, rule.start, 4 * compared))
      expected.insert(date);
    for (QuandaAbstractDate date : rule.exclusions) expected.erase(date);
    for (QuandaAbstractDate date : rule.additions) expected.insert(date);
    std::vector<QuandaAbstractDate> expectedDates(expected.begin(), expected.end());
    if (expectedDates.size() > compared)
      expectedDates.erase(expectedDates.begin() + compared, expectedDates.end());
    ASSERT_EQ(maskDates(*mask.value(), from, firstDay, expectedDates.size()), expectedDates)
        << syntax << "\n"
        << rule.text();
    ++checked;
  }
  EXPECT_GT(checked, 1000);
}

TEST(QuandaRecurrenceRule, TextAndRefusals) {
  const auto monday = QuandaDayOfGregorianWeek::monday;
  const auto start = QuandaAbstractDate::make(2024, 1, 1).value();
  const std::pair<const char*, const char*> texts[] = {
      {"last fri", "DTSTART;VALUE=DATE:20240126\r\nRRULE:FREQ=MONTHLY;WKST=MO;BYDAY=-1FR\r\n"},
      {"2nd sun of mar",
       "DTSTART;VALUE=DATE:20240310\r\nRRULE:FREQ=MONTHLY;WKST=MO;BYDAY=2SU;BYMONTH=3\r\n"},
      {"mon except 2024-01-08",
       "DTSTART;VALUE=DATE:20240101\r\nRRULE:FREQ=WEEKLY;WKST=MO;BYDAY=MO\r\n"
       "EXDATE;VALUE=DATE:20240108\r\n"},
      // EXDATE wins over the rule and RDATE alike, so a date brought back is not left out.
      {"(mon except 2024-01-08..2024-01-22) or 2024-01-15",
       "DTSTART;VALUE=DATE:20240101\r\nRRULE:FREQ=WEEKLY;WKST=MO;BYDAY=MO\r\n"
       "EXDATE;VALUE=DATE:20240108,20240122\r\n"},
      {"every 2 years from 2024-03 on 14",
       "DTSTART;VALUE=DATE:20240314\r\nRRULE:FREQ=MONTHLY;INTERVAL=24;WKST=MO;BYMONTHDAY=14\r\n"},
  };
  for (const auto& [syntax, text] : texts) {
    const auto rule =
        QuandaRecurrenceRule::exporting(*makeDateMaskFromSyntax(syntax).value(), start, monday);
    ASSERT_TRUE(rule) << syntax << "\n" << rule.error().chainDescription();
    EXPECT_EQ(rule.value().text(), text) << syntax;
  }
  for (const char* syntax : {"week 2", "every 3 days from 2024-01-01 and 2nd mon",
                             "pattern 101 from 2024-01-01", "mon or tue and day 3"}) {
    const auto rule =
        QuandaRecurrenceRule::exporting(*makeDateMaskFromSyntax(syntax).value(), start, monday);
    ASSERT_FALSE(rule) << syntax;
    EXPECT_EQ(rule.error().message(), "Date mask not expressible as a recurrence rule") << syntax;
  }
  for (const char* text :
       {"FREQ=DAILY;BYHOUR=9", "FREQ=YEARLY;BYYEARDAY=100", "FREQ=YEARLY;BYWEEKNO=20",
        "FREQ=HOURLY", "FREQ=YEARLY;BYDAY=20MO", "DTSTART:20240101T090000\nRRULE:FREQ=DAILY"}) {
    const auto imported = QuandaRecurrenceRule::importing(text, start);
    ASSERT_FALSE(imported) << text;
    EXPECT_EQ(imported.error().message(), "Unsupported recurrence rule part") << text;
  }
  for (const char* text : {"FREQ=DAILY;INTERVAL=0", "BYDAY=MO", "FREQ=MONTHLY;BYMONTHDAY=32"}) {
    EXPECT_EQ(QuandaRecurrenceRule::importing(text, start).error().message(),
              "Unreadable recurrence rule")
        << text;
  }
  EXPECT_FALSE(QuandaRecurrenceRule::importing("FREQ=DAILY", std::nullopt));
}

}  // namespace
