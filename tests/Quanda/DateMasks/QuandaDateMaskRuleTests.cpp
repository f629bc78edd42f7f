// The inclusion rules of each mask on the dates where they are easy to get wrong, value
// semantics (equality, hashing, the set interface), searches that must answer at once, and the
// programming errors that stop the process.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeeksOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeeksOfMonthDateMask.h"

namespace {

using Day = QuandaDayOfGregorianWeek;
constexpr Day monday = Day::monday;

QuandaAbstractDate date(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return QuandaAbstractDate::make(year, month, day).value();
}
QuandaAbstractDate dayNumber(std::uint32_t count) {
  return QuandaAbstractDate::makeFromDaysSinceDatum(count);
}

// The days of one month that a mask matches.
std::vector<int> matchingDays(const QuandaDateMasking& mask, std::uint16_t year, std::uint8_t month,
                              Day firstDay = monday) {
  std::vector<int> days;
  const QuandaAbstractDate first = date(year, month, 1);
  for (std::uint8_t day = 1; day <= first.daysInMonth(); ++day) {
    if (mask.matches(date(year, month, day), firstDay)) days.push_back(day);
  }
  return days;
}

TEST(QuandaDateMaskRules, MonthPositionMasksSelectTheirDays) {
  using std::make_shared;
  using Ordinals = QuandaOrdinalSet;
  using Days = QuandaDayOfGregorianWeekSet;
  const struct {
    std::uint16_t year;
    std::uint8_t month;
    std::vector<int> days;
    std::shared_ptr<const QuandaDateMasking> mask;
  } cases[] = {
      {2024, 2, {}, make_shared<QuandaDaysOfMonthDateMask>(Ordinals{31})},
      {2024, 2, {29}, make_shared<QuandaReverseDaysOfMonthDateMask>(Ordinals{1})},
      {2023, 2, {28}, make_shared<QuandaReverseDaysOfMonthDateMask>(Ordinals{1})},
      {2024, 2, {1}, make_shared<QuandaReverseDaysOfMonthDateMask>(Ordinals{29})},
      {2023, 2, {}, make_shared<QuandaReverseDaysOfMonthDateMask>(Ordinals{29})},
      {2024, 3, {29, 30, 31}, make_shared<QuandaWeeksOfMonthDateMask>(Ordinals{5})},
      {2024,
       2,
       {23, 24, 25, 26, 27, 28, 29},
       make_shared<QuandaReverseWeeksOfMonthDateMask>(Ordinals{1})},
      {2024, 1, {29}, make_shared<QuandaWeekdaysOfMonthDateMask>(Days{Day::monday}, Ordinals{5})},
      {2024,
       9,
       {10, 24},
       make_shared<QuandaWeekdaysOfMonthDateMask>(Days{Day::tuesday}, Ordinals{2, 4})},
      {2024,
       2,
       {23},
       make_shared<QuandaReverseWeekdaysOfMonthDateMask>(Days{Day::friday}, Ordinals{1})},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(matchingDays(*test.mask, test.year, test.month), test.days) << *test.mask;
  }
}

TEST(QuandaDateMaskRules, WeekdayMasksStartFromTheMondayDatum) {
  EXPECT_TRUE(QuandaDaysOfWeekDateMask({Day::monday}).matches(QuandaAbstractDate::zero, monday));
}

TEST(QuandaDateMaskRules, DayCycleRunsBothWaysFromItsAnchor) {
  const QuandaDayCycleDateMask alternate(10, {true, false});
  EXPECT_TRUE(alternate.matches(dayNumber(12), monday));
  EXPECT_FALSE(alternate.matches(dayNumber(9), monday));

  const QuandaDayCycleDateMask everyThird(7, {true, false, false});
  EXPECT_EQ(everyThird.indexOf(6), 2U);
  EXPECT_FALSE(everyThird.matches(dayNumber(6), monday));
  EXPECT_TRUE(everyThird.matches(dayNumber(4), monday));
  // Below the anchor's residue (7 mod 5 = 2) every day reads entry 0.
  const QuandaDayCycleDateMask floored(7, {false, true, true, true, true});
  EXPECT_FALSE(floored.matches(dayNumber(1), monday));
  EXPECT_TRUE(floored.matches(dayNumber(3), monday));
}

TEST(QuandaDateMaskRules, WeekCycleFollowsThePreferredFirstDayOfTheWeek) {
  const QuandaWeekCycleDateMask everyOtherWeek(date(2024, 1, 3), {true, false});
  EXPECT_EQ(matchingDays(everyOtherWeek, 2024, 1, monday),
            (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 15, 16, 17, 18, 19, 20, 21, 29, 30, 31}));
  // With Sunday-first weeks the anchor's week runs 2023-12-31 to 2024-01-06, and 2024-01-07
  // opens an off week.
  EXPECT_EQ(matchingDays(everyOtherWeek, 2024, 1, Day::sunday),
            (std::vector<int>{1, 2, 3, 4, 5, 6, 14, 15, 16, 17, 18, 19, 20, 28, 29, 30, 31}));

  const QuandaDaysOfWeeksDateMask mondayThursday(date(2024, 1, 3), {Day::monday, Day::thursday},
                                                 {true, false, false});
  EXPECT_EQ(matchingDays(mondayThursday, 2024, 1), (std::vector<int>{1, 4, 22, 25}));
}

TEST(QuandaDateMaskRules, DateRangeIncludesBothEndsInEitherOrder) {
  const QuandaDateRangeDateMask march(KeelDomain(date(2024, 3, 1), date(2024, 3, 31)));
  const QuandaDateRangeDateMask reversed(KeelDomain(date(2024, 3, 31), date(2024, 3, 1)));
  for (const auto* mask : {&march, &reversed}) {
    EXPECT_EQ(matchingDays(*mask, 2024, 2), std::vector<int>{});
    EXPECT_EQ(matchingDays(*mask, 2024, 3).size(), 31u);
    EXPECT_FALSE(mask->matches(date(2024, 4, 1), monday));
  }
  EXPECT_NE(reversed, march);  // the bounds are kept as given
}

TEST(QuandaDateMaskRules, DateRangesMatchAnyOfTheirRangesInAnyOrder) {
  using Range = QuandaDateRangesDateMask::Range;
  const QuandaDateRangesDateMask unordered({Range(date(2024, 3, 20), date(2024, 3, 22)),
                                            Range(date(2024, 3, 1), date(2024, 3, 10)),
                                            Range(date(2024, 3, 5), date(2024, 3, 6))});
  const QuandaDateRangesDateMask ordered({Range(date(2024, 3, 1), date(2024, 3, 10)),
                                          Range(date(2024, 3, 5), date(2024, 3, 6)),
                                          Range(date(2024, 3, 20), date(2024, 3, 22))});
  EXPECT_EQ(unordered, ordered);
  EXPECT_EQ(matchingDays(unordered, 2024, 3),
            (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 20, 21, 22}));
  EXPECT_EQ(unordered.nextMatch(date(2024, 3, 10), monday), date(2024, 3, 20));
  EXPECT_EQ(QuandaNotDateMask(std::make_shared<QuandaDateRangesDateMask>(ordered))
                .nextMatch(date(2024, 2, 29), monday),
            date(2024, 3, 11));
}

TEST(QuandaDateMaskRules, CombinationsReadLikeSentences) {
  const auto mondays =
      std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::monday});
  const auto holidays =
      std::make_shared<QuandaDateRangeDateMask>(KeelDomain(date(2024, 7, 8), date(2024, 7, 21)));
  const QuandaAllOfDateMask mondaysOutsideHolidays(
      {mondays, std::make_shared<QuandaNotDateMask>(holidays)});
  EXPECT_EQ(matchingDays(mondaysOutsideHolidays, 2024, 7), (std::vector<int>{1, 22, 29}));
  EXPECT_EQ(mondaysOutsideHolidays.nextMatch(date(2024, 7, 1), monday), date(2024, 7, 22));

  EXPECT_TRUE(QuandaAllOfDateMask({}).matches(date(2024, 1, 1), monday));
  EXPECT_FALSE(QuandaAnyOfDateMask({}).matches(date(2024, 1, 1), monday));
}

TEST(QuandaDateMaskRules, SearchesJumpAcrossTheCalendar) {
  // The next Friday the 13th after 2024-09-14 is 2024-12-13; the previous one 2024-09-13.
  const QuandaAllOfDateMask friday13(
      {std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::friday}),
       std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{13})});
  EXPECT_EQ(friday13.nextMatch(date(2024, 9, 14), monday), date(2024, 12, 13));
  EXPECT_EQ(friday13.previousMatch(date(2024, 12, 13), monday), date(2024, 9, 13));
  // February 29 on a Thursday: 2024, then 2052.
  const QuandaAllOfDateMask leapThursday(
      {std::make_shared<QuandaReverseDaysOfMonthDateMask>(QuandaOrdinalSet{1}),
       std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{29}),
       std::make_shared<QuandaWeekdaysOfMonthDateMask>(QuandaDayOfGregorianWeekSet{Day::thursday},
                                                       QuandaOrdinalSet{5})});
  EXPECT_EQ(leapThursday.nextMatch(date(2024, 3, 1), monday), date(2052, 2, 29));
  // The ends of the valid range.
  const QuandaDaysOfMonthDateMask firsts({1});
  EXPECT_EQ(firsts.nextMatch(date(9999, 12, 31), monday), std::nullopt);
  EXPECT_EQ(firsts.previousMatch(date(1, 1, 1), monday), std::nullopt);
  EXPECT_EQ(firsts.previousMatch(date(1, 1, 2), monday), date(1, 1, 1));
}

TEST(QuandaDateMaskRules, MasksThatCanNeverMatchSaySoAtOnce) {
  const std::vector<std::shared_ptr<const QuandaDateMasking>> never = {
      std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{}),
      std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{0, 40}),
      std::make_shared<QuandaReverseDaysOfMonthDateMask>(QuandaOrdinalSet{32}),
      std::make_shared<QuandaWeeksOfMonthDateMask>(QuandaOrdinalSet{0, 6, 9}),
      std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(QuandaDayOfGregorianWeekSet{},
                                                             QuandaOrdinalSet{1}),
      std::make_shared<QuandaDayCycleDateMask>(5, std::vector<bool>{false, false, false}),
      std::make_shared<QuandaWeekCycleDateMask>(date(2024, 1, 1), std::vector<bool>(70, false)),
      std::make_shared<QuandaNotDateMask>(std::make_shared<QuandaEveryDayDateMask>()),
  };
  for (const auto& mask : never) {
    EXPECT_EQ(mask->nextMatch(date(1, 1, 1), monday), std::nullopt) << *mask;
    EXPECT_EQ(mask->previousMatch(date(9999, 12, 31), monday), std::nullopt) << *mask;
  }
}

TEST(QuandaDateMaskRules, WeekCycleSearchesStartAtTheFirstWholeCycle) {
  // Anchor in week 3 of a 5-week cycle: weeks 0 to 2 after 0001-01-01 have no entry.
  const QuandaWeekCycleDateMask cycle(date(1, 1, 22), {true, false, false, false, false});
  EXPECT_EQ(cycle.nextMatch(date(1, 1, 1), monday), date(1, 1, 22));
  EXPECT_EQ(cycle.previousMatch(date(1, 1, 22), monday), std::nullopt);
  const QuandaNotDateMask offWeeks(std::make_shared<QuandaWeekCycleDateMask>(cycle));
  EXPECT_EQ(offWeeks.nextMatch(date(1, 1, 1), monday), date(1, 1, 29));
}

TEST(QuandaDateMaskRules, CombinationsAnswerInsideTheIntersectionOfTheirDomains) {
  // Week 1 is the anchor's and the cycle's first residue: its domain begins on 0001-01-08, so
  // Saturday 0001-01-06 is outside it, whichever part of the combination comes first.
  const auto cycle = makeDateMaskFromSyntax("week pattern 01 from 0001-01-08").value();
  const auto saturdays = makeDateMaskFromSyntax("sat").value();
  for (const auto& rule :
       {QuandaAnyOfDateMask({cycle, saturdays}), QuandaAnyOfDateMask({saturdays, cycle})}) {
    EXPECT_EQ(rule.domain(monday), KeelDomain(date(1, 1, 8), date(9999, 12, 31)));
    EXPECT_EQ(rule.nextMatch(date(1, 1, 1), monday), date(1, 1, 13));
    EXPECT_EQ(rule.firstMatch(KeelDomain(date(1, 1, 1), date(1, 2, 1)), monday), date(1, 1, 13));
    EXPECT_EQ(rule.previousMatch(date(1, 1, 13), monday), std::nullopt);
    EXPECT_EQ(QuandaNotDateMask(std::make_shared<QuandaAnyOfDateMask>(rule))
                  .nextMatch(date(1, 1, 1), monday),
              date(1, 1, 8));
  }
  // With Sunday-first weeks, week 1 begins on Sunday 0001-01-07.
  EXPECT_EQ(QuandaAnyOfDateMask({saturdays, cycle}).domain(Day::sunday).min(), date(1, 1, 7));
}

TEST(QuandaDateMaskRules, CombinationsOfCyclesSettleNeverAndRareMatches) {
  // Two cycles of two days that never agree, however they are nested.
  const auto never = makeDateMaskFromSyntax(
                         "(every 2 days from 2024-01-01 and every 2 days from 2024-01-02 or every "
                         "2 days from 2024-01-03) and every 2 days from 2024-01-04")
                         .value();
  EXPECT_EQ(never->nextMatch(date(2024, 1, 1), monday), std::nullopt);
  // Except on 0001-01-01, below the residues of two of them, where all four read entry 0.
  EXPECT_EQ(never->previousMatch(date(2024, 1, 1), monday), date(1, 1, 1));
  EXPECT_EQ(never->nextMatch(date(1, 1, 1), monday), std::nullopt);
  // Cycles of 199, 211 and 223 days meet once in 9363947 days: the day arithmetic finds is the
  // only match after 2024 and the last one of the range.
  const auto anchor = date(2024, 1, 1).daysSinceDatum();
  const auto rare = makeDateMaskFromSyntax(
                        "every 199 days from 2024-01-01 and every 211 days from 2024-01-03 and "
                        "every 223 days from 2024-02-11")
                        .value();
  std::uint32_t meeting = anchor;
  while ((meeting - (anchor + 2)) % 211 != 0 || (meeting - (anchor + 41)) % 223 != 0) {
    meeting += 199;
  }
  EXPECT_EQ(rare->nextMatch(date(2024, 1, 1), monday), dayNumber(meeting));
  EXPECT_EQ(rare->previousMatch(date(9999, 12, 31), monday), dayNumber(meeting));
  EXPECT_EQ(rare->nextMatch(dayNumber(meeting), monday), std::nullopt);
}

TEST(QuandaDateMaskRules, ValuesCompareAndHashByKindAndFields) {
  const QuandaDaysOfMonthDateMask a({1, 15});
  const QuandaDaysOfMonthDateMask b(std::set<std::uint8_t>{15, 1});
  const QuandaReverseDaysOfMonthDateMask reverse({1, 15});
  EXPECT_EQ(a, b);
  EXPECT_EQ(std::hash<QuandaDaysOfMonthDateMask>{}(a), std::hash<QuandaDaysOfMonthDateMask>{}(b));
  EXPECT_FALSE(a.isEqual(reverse));                      // same fields, other kind
  EXPECT_NE(a, QuandaDaysOfMonthDateMask({1, 15, 40}));  // numbers that never match still count
  EXPECT_EQ(QuandaDaysOfMonthDateMask({0, 40, 200}).oneBasedOrdinals(),
            (std::set<std::uint8_t>{0, 40, 200}));

  const QuandaDayCycleDateMask cycle(3, {true, false});
  EXPECT_EQ(cycle, QuandaDayCycleDateMask(3, {true, false}));
  EXPECT_NE(cycle, QuandaDayCycleDateMask(5, {true, false}));
  EXPECT_NE(cycle, QuandaDayCycleDateMask(3, {true, false, false}));

  const auto mondays =
      std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::monday});
  const auto otherMondays =
      std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::monday});
  EXPECT_EQ(QuandaNotDateMask(mondays).hashValue(), QuandaNotDateMask(otherMondays).hashValue());
  EXPECT_NE(QuandaAllOfDateMask({mondays}), QuandaAllOfDateMask({mondays, mondays}));
  EXPECT_FALSE(QuandaAllOfDateMask({mondays}).isEqual(QuandaAnyOfDateMask({mondays})));
}

TEST(QuandaDateMaskRulesDeathTest, ProgrammingErrorsStopTheProcess) {
  // Anchor in week 3 of a 5-week cycle: a date of week 1 is before the first residue.
  const QuandaWeekCycleDateMask cycle(date(1, 1, 22), {true, false, false, false, false});
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { QuandaDayCycleDateMask(0, {}); }, "at least one entry"},
      {[] { QuandaWeekCycleDateMask(date(2024, 1, 1), {}); }, "at least one entry"},
      {[] { QuandaDaysOfWeeksDateMask(date(2024, 1, 1), {Day::monday}, {}); },
       "at least one entry"},
      {[&] { (void)cycle.matches(date(1, 1, 8), monday); }, "first residue"},
      // A combination checks its domain before asking any part, in either order.
      {[&] {
         (void)QuandaAnyOfDateMask({std::make_shared<QuandaEveryDayDateMask>(),
                                    std::make_shared<QuandaWeekCycleDateMask>(cycle)})
             .matches(date(1, 1, 8), monday);
       },
       "first residue"},
      {[&] {
         (void)QuandaAllOfDateMask(
             {std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::tuesday}),
              std::make_shared<QuandaWeekCycleDateMask>(cycle)})
             .matches(date(1, 1, 8), monday);
       },
       "first residue"},
      {[] { QuandaNotDateMask(nullptr); }, "needs a mask"},
      {[] { QuandaAllOfDateMask({nullptr}); }, "null mask"},
      {[] { (void)QuandaDaysOfWeekDateMask({}).earliestDayCount(true, 5, 4, monday); },
       "first <= last"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

}  // namespace
