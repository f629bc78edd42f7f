// Every mask kind, many random rules: matches against an independent reference of the rule, and
// the searches (nextMatch, previousMatch, matchingDates and both search primitives for both
// answers) against a day-by-day reading of matches, over whole years (leap and common, a century
// year, the end of the first 400-year cycle), the first months after 0001-01-01 (where the week
// cycles' domains begin) and the last months before 9999-12-31. The domain is the reference's,
// and no search reports a day outside it.
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "DateMaskTestSupport.h"

namespace {

using date_mask_test::Kind;
using date_mask_test::MaskCase;
using date_mask_test::ReferenceDay;

constexpr std::uint32_t lastValidDay = 3652058;

std::uint32_t dayCount(int year, int month, int day) {
  return QuandaAbstractDate::make(static_cast<std::uint16_t>(year),
                                  static_cast<std::uint8_t>(month), static_cast<std::uint8_t>(day))
      .value()
      .daysSinceDatum();
}

struct Window {
  std::uint32_t first;
  std::uint32_t last;
};

std::vector<Window> windows(std::mt19937_64& random) {
  const int year = std::uniform_int_distribution<int>(2, 9998)(random);
  return {{0, dayCount(1, 4, 30)},
          {dayCount(2024, 1, 1), dayCount(2024, 12, 31)},
          {dayCount(2023, 1, 15), dayCount(2023, 3, 31)},
          {dayCount(2100, 1, 1), dayCount(2100, 12, 31)},
          {dayCount(400, 11, 1), dayCount(401, 2, 28)},  // across the end of the 400-year cycle
          {dayCount(9999, 9, 1), lastValidDay},
          {dayCount(year, 1, 1), dayCount(year, 12, 31)}};
}

void checkWindow(const MaskCase& maskCase, Window window, QuandaDayOfGregorianWeek firstDay) {
  const QuandaDateMasking& mask = *maskCase.mask;
  const std::uint32_t domainStart = maskCase.firstDayWithAnswer(firstDay);
  ASSERT_EQ(mask.domain(firstDay).min().daysSinceDatum(), domainStart) << mask;
  const std::uint32_t start = std::max(window.first, domainStart);
  if (start > window.last) {
    // The window lies before the domain: nothing in it is ever reported.
    for (bool answer : {false, true}) {
      ASSERT_EQ(mask.earliestDayCount(answer, window.first, window.last, firstDay), std::nullopt);
      ASSERT_EQ(mask.latestDayCount(answer, window.first, window.last, firstDay), std::nullopt);
    }
    return;
  }
  const std::uint32_t last = window.last;
  const std::size_t size = last - start + 1;

  std::vector<bool> answers(size);
  for (std::uint32_t day = start; day <= last; ++day) {
    const auto date = QuandaAbstractDate::makeFromDaysSinceDatum(day);
    answers[day - start] = mask.matches(date, firstDay);
    ASSERT_EQ(answers[day - start], maskCase.reference(ReferenceDay::of(date), firstDay))
        << mask << " on " << date << " first day " << firstDay;
  }

  // next[answer][i]: the first index >= i with that answer; previous[answer][i]: the last <= i.
  const std::int64_t none = -1;
  std::vector<std::int64_t> next[2] = {std::vector<std::int64_t>(size + 1, none),
                                       std::vector<std::int64_t>(size + 1, none)};
  std::vector<std::int64_t> previous[2] = {std::vector<std::int64_t>(size, none),
                                           std::vector<std::int64_t>(size, none)};
  for (std::size_t index = size; index-- > 0;) {
    for (int answer = 0; answer < 2; ++answer) {
      next[answer][index] =
          answers[index] == bool(answer) ? std::int64_t(index) : next[answer][index + 1];
    }
  }
  for (std::size_t index = 0; index < size; ++index) {
    for (int answer = 0; answer < 2; ++answer) {
      previous[answer][index] = answers[index] == bool(answer) ? std::int64_t(index)
                                : index > 0                    ? previous[answer][index - 1]
                                                               : none;
    }
  }
  const auto asDay = [&](std::int64_t index) {
    return index == none ? std::optional<std::uint32_t>()
                         : std::optional<std::uint32_t>(start + std::uint32_t(index));
  };

  // Searches that begin before the domain report its days only.
  if (window.first < start) {
    for (int answer = 0; answer < 2; ++answer) {
      ASSERT_EQ(mask.earliestDayCount(answer, window.first, last, firstDay), asDay(next[answer][0]))
          << mask << " answer " << answer << " first day " << firstDay;
      ASSERT_EQ(mask.latestDayCount(answer, window.first, last, firstDay),
                asDay(previous[answer][size - 1]))
          << mask << " answer " << answer << " first day " << firstDay;
    }
    ASSERT_EQ(mask.previousMatch(QuandaAbstractDate::makeFromDaysSinceDatum(start), firstDay),
              std::nullopt)
        << mask << " first day " << firstDay;
  }

  for (std::uint32_t day = start; day <= last; ++day) {
    const std::size_t index = day - start;
    for (int answer = 0; answer < 2; ++answer) {
      ASSERT_EQ(mask.earliestDayCount(answer, day, last, firstDay), asDay(next[answer][index]))
          << mask << " answer " << answer << " from "
          << QuandaAbstractDate::makeFromDaysSinceDatum(day) << " first day " << firstDay;
      ASSERT_EQ(mask.latestDayCount(answer, start, day, firstDay), asDay(previous[answer][index]))
          << mask << " answer " << answer << " through "
          << QuandaAbstractDate::makeFromDaysSinceDatum(day) << " first day " << firstDay;
    }
    const auto date = QuandaAbstractDate::makeFromDaysSinceDatum(day);
    const auto after = mask.nextMatch(date, firstDay);
    const auto expectedAfter = asDay(next[1][index + 1]);
    if (expectedAfter) {
      ASSERT_EQ(after, QuandaAbstractDate::makeFromDaysSinceDatum(*expectedAfter)) << mask;
    } else if (after) {
      ASSERT_GT(after->daysSinceDatum(), last) << mask;
      ASSERT_TRUE(mask.matches(*after, firstDay)) << mask;
    }
    if (index > 0) {
      const auto before = mask.previousMatch(date, firstDay);
      const auto expectedBefore = asDay(previous[1][index - 1]);
      if (expectedBefore) {
        ASSERT_EQ(before, QuandaAbstractDate::makeFromDaysSinceDatum(*expectedBefore)) << mask;
      } else if (before) {
        ASSERT_LT(before->daysSinceDatum(), start) << mask;
      }
    }
  }

  // Beyond the window, as far as `reach` days: the searches that leave it skip no match.
  constexpr std::uint32_t reach = 4000;
  const auto scanned = [&](std::uint32_t from, std::uint32_t through, bool forward) {
    for (std::uint32_t step = 0; step <= through - from; ++step) {
      const std::uint32_t day = forward ? from + step : through - step;
      if (mask.matches(QuandaAbstractDate::makeFromDaysSinceDatum(day), firstDay)) {
        return std::optional(QuandaAbstractDate::makeFromDaysSinceDatum(day));
      }
    }
    return std::optional<QuandaAbstractDate>();
  };
  if (last < lastValidDay) {
    const std::uint32_t through = std::min(lastValidDay, last + reach);
    const auto after = mask.nextMatch(QuandaAbstractDate::makeFromDaysSinceDatum(last), firstDay);
    const auto expectedAfter = scanned(last + 1, through, true);
    if (expectedAfter || (after && after->daysSinceDatum() <= through)) {
      ASSERT_EQ(after, expectedAfter) << mask << " after " << last << " first day " << firstDay;
    }
  }
  if (start > domainStart) {
    const std::uint32_t from = start - domainStart > reach ? start - reach : domainStart;
    const auto before =
        mask.previousMatch(QuandaAbstractDate::makeFromDaysSinceDatum(start), firstDay);
    const auto expectedBefore = scanned(from, start - 1, false);
    if (expectedBefore || (before && before->daysSinceDatum() >= from)) {
      ASSERT_EQ(before, expectedBefore) << mask << " before " << start << " first day " << firstDay;
    }
  }

  std::vector<QuandaAbstractDate> expected;
  for (std::size_t index = 0; index < size; ++index) {
    if (answers[index])
      expected.push_back(QuandaAbstractDate::makeFromDaysSinceDatum(start + index));
  }
  const KeelDomain range(QuandaAbstractDate::makeFromDaysSinceDatum(last),
                         QuandaAbstractDate::makeFromDaysSinceDatum(start));  // reversed on purpose
  std::vector<QuandaAbstractDate> enumerated;
  for (QuandaAbstractDate date : mask.matchingDates(range, firstDay)) enumerated.push_back(date);
  ASSERT_EQ(enumerated, expected) << mask;
  ASSERT_EQ(mask.firstMatch(range, firstDay),
            expected.empty() ? std::nullopt : std::optional(expected.front()));
  ASSERT_EQ(mask.lastMatch(range, firstDay),
            expected.empty() ? std::nullopt : std::optional(expected.back()));
}

class DateMaskSearchProperty : public testing::TestWithParam<Kind> {};

TEST_P(DateMaskSearchProperty, SearchesAgreeWithADayByDayReading) {
  std::mt19937_64 random(0x5eed0000 + static_cast<unsigned>(GetParam()));
  const int masks = GetParam() == Kind::everyDay ? 2 : 25;
  for (int round = 0; round < masks; ++round) {
    for (const Window& window : windows(random)) {
      const MaskCase maskCase = date_mask_test::randomMask(GetParam(), random, window.first);
      if (GetParam() == Kind::monthLocalCombination) {
        // The combination must take the month-by-month path this kind is here to check.
        ASSERT_NE(maskCase.mask->monthDaySets(), nullptr) << *maskCase.mask;
      }
      const auto firstDay = makeDayOfGregorianWeek(
          static_cast<std::uint8_t>(std::uniform_int_distribution<int>(0, 6)(random)));
      checkWindow(maskCase, window, firstDay);
      if (HasFatalFailure()) return;
    }
  }
}

std::string kindName(const testing::TestParamInfo<Kind>& info) {
  std::istringstream names(
      "everyDay daysOfWeek daysOfMonth reverseDaysOfMonth weeksOfMonth reverseWeeksOfMonth "
      "weekdaysOfMonth reverseWeekdaysOfMonth dayCycle weekCycle daysOfWeeks dateRange dateRanges "
      "monthsOfYear monthCycle "
      "allOf anyOf negation monthLocalCombination mixedTree");
  std::string name;
  for (int index = 0; index <= static_cast<int>(info.param); ++index) names >> name;
  return name;
}

std::vector<Kind> everyKind() {
  std::vector<Kind> kinds;
  for (int kind = 0; kind <= static_cast<int>(Kind::mixedTree); ++kind)
    kinds.push_back(static_cast<Kind>(kind));
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, DateMaskSearchProperty, testing::ValuesIn(everyKind()),
                         kindName);

}  // namespace
