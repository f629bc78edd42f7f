// Date masks: the test of one date, the search for the next occurrence and the enumeration of a
// range, each beside the plainest way to get the same answer in the same run.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <set>
#include <vector>

#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "QuandaBenchRatios.h"

namespace {

using Day = QuandaDayOfGregorianWeek;
constexpr Day monday = Day::monday;

// 1024 dates spread over four centuries, cycled through so that no answer can be precomputed.
const std::vector<QuandaAbstractDate>& dates() {
  static const auto values = [] {
    std::vector<QuandaAbstractDate> result;
    std::uint32_t state = 12345;
    for (int index = 0; index < 1024; ++index) {
      state = state * 1664525U + 1013904223U;
      result.push_back(QuandaAbstractDate::makeFromDaysSinceDatum(657000 + state % 146097));
    }
    return result;
  }();
  return values;
}

const QuandaDaysOfWeekDateMask weekdays({Day::monday, Day::tuesday, Day::wednesday, Day::thursday,
                                         Day::friday});
const std::set<std::uint8_t> weekdayOrdinals{0, 1, 2, 3, 4};
const QuandaDaysOfMonthDateMask paydays({1, 15, 28});
const std::set<std::uint8_t> paydayNumbers{1, 15, 28};

// ---- matches ----------------------------------------------------------------------------------

void BM_Quanda_DaysOfWeekMatches(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(weekdays.matches(values[index++ & 1023], monday));
  }
}
void BM_Peer_StdSetDaysOfWeek(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(weekdayOrdinals.count(
        static_cast<std::uint8_t>(values[index++ & 1023].daysSinceDatum() % 7)));
  }
}
void BM_Peer_DaysSinceDatum(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) benchmark::DoNotOptimize(values[index++ & 1023].daysSinceDatum());
}
void BM_Quanda_DaysOfMonthMatches(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(paydays.matches(values[index++ & 1023], monday));
  }
}
void BM_Peer_StdSetDaysOfMonth(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(paydayNumbers.count(values[index++ & 1023].day()));
  }
}
BENCHMARK(BM_Quanda_DaysOfWeekMatches);
BENCHMARK(BM_Peer_StdSetDaysOfWeek);
BENCHMARK(BM_Peer_DaysSinceDatum);
BENCHMARK(BM_Quanda_DaysOfMonthMatches);
BENCHMARK(BM_Peer_StdSetDaysOfMonth);
QUANDA_BENCH_RATIO("weekday mask matches vs std::set", "BM_Quanda_DaysOfWeekMatches",
                   "BM_Peer_StdSetDaysOfWeek", QuandaBenchGoal::atMost(1.0));
QUANDA_BENCH_RATIO("weekday mask matches vs daysSinceDatum", "BM_Quanda_DaysOfWeekMatches",
                   "BM_Peer_DaysSinceDatum", QuandaBenchGoal::atMost(2.0));
QUANDA_BENCH_RATIO("day-of-month mask matches vs std::set", "BM_Quanda_DaysOfMonthMatches",
                   "BM_Peer_StdSetDaysOfMonth", QuandaBenchGoal::atMost(1.0));
QUANDA_BENCH_RATIO("day-of-month mask matches vs daysSinceDatum", "BM_Quanda_DaysOfMonthMatches",
                   "BM_Peer_DaysSinceDatum", QuandaBenchGoal::atMost(2.0));

// ---- nextMatch of a monthly rule ----------------------------------------------------------

// The searches hold the mask as the interface, as a list of rules of many kinds would; so does
// the scan they are measured against, which tests day after day through matches.
//
// Two uses: the next occurrence after an arbitrary date (the 1024 spread dates, independent
// searches), and the occurrences one after another, each search starting from the previous
// match (an app listing the upcoming dates of a rule; each search waits for the one before).
// Both sides hand the date they found to DoNotOptimize, as a caller uses it; handing it the
// std::optional itself would make g++ store and reload it piecewise, a stall that costs more
// than the search.
template <class Mask>
void nextMatch(benchmark::State& state, const Mask& rule) {
  const QuandaDateMasking& mask = rule;
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        mask.nextMatch(values[index++ & 1023], monday).value_or(QuandaAbstractDate::zero));
  }
}
QuandaAbstractDate scanToNext(const QuandaDateMasking& mask, QuandaAbstractDate date) {
  do {
    date = date.nextDay();
  } while (!mask.matches(date, monday));
  return date;
}
template <class Mask>
void dayByDay(benchmark::State& state, const Mask& rule) {
  const QuandaDateMasking& mask = rule;
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) benchmark::DoNotOptimize(scanToNext(mask, values[index++ & 1023]));
}

// Successive occurrences from 1900 on, starting over on reaching the year 9000.
constexpr QuandaAbstractDate listStart = *QuandaAbstractDate::makeIfValid(1900, 1, 1);
template <class Mask>
void successiveMatches(benchmark::State& state, const Mask& rule) {
  const QuandaDateMasking& mask = rule;
  QuandaAbstractDate date = listStart;
  for (auto _ : state) {
    const auto next = mask.nextMatch(date, monday);
    date = next && next->year() < 9000 ? *next : listStart;
    benchmark::DoNotOptimize(date);
  }
}
template <class Mask>
void successiveScans(benchmark::State& state, const Mask& rule) {
  const QuandaDateMasking& mask = rule;
  QuandaAbstractDate date = listStart;
  for (auto _ : state) {
    const QuandaAbstractDate next = scanToNext(mask, date);
    date = next.year() < 9000 ? next : listStart;
    benchmark::DoNotOptimize(date);
  }
}

// Monthly: the last Friday of every month.
const QuandaReverseWeekdaysOfMonthDateMask lastFriday({Day::friday}, {1});
// About four times a year: the fifth Monday of a month.
const QuandaWeekdaysOfMonthDateMask fifthMonday({Day::monday}, {5});
// One to three times a year, a combination: Friday the 13th.
const QuandaAllOfDateMask fridayThe13th(
    {std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{13}),
     std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::friday})});

void BM_Quanda_NextLastFriday(benchmark::State& state) { nextMatch(state, lastFriday); }
void BM_Peer_ScanLastFriday(benchmark::State& state) { dayByDay(state, lastFriday); }
void BM_Quanda_NextFifthMonday(benchmark::State& state) { nextMatch(state, fifthMonday); }
void BM_Peer_ScanFifthMonday(benchmark::State& state) { dayByDay(state, fifthMonday); }
void BM_Quanda_NextFridayThe13th(benchmark::State& state) { nextMatch(state, fridayThe13th); }
void BM_Peer_ScanFridayThe13th(benchmark::State& state) { dayByDay(state, fridayThe13th); }
void BM_Quanda_SuccessiveLastFridays(benchmark::State& state) {
  successiveMatches(state, lastFriday);
}
void BM_Peer_SuccessiveScansLastFriday(benchmark::State& state) {
  successiveScans(state, lastFriday);
}
void BM_Quanda_SuccessiveFifthMondays(benchmark::State& state) {
  successiveMatches(state, fifthMonday);
}
void BM_Peer_SuccessiveScansFifthMonday(benchmark::State& state) {
  successiveScans(state, fifthMonday);
}
void BM_Quanda_SuccessiveFridaysThe13th(benchmark::State& state) {
  successiveMatches(state, fridayThe13th);
}
void BM_Peer_SuccessiveScansFridayThe13th(benchmark::State& state) {
  successiveScans(state, fridayThe13th);
}
BENCHMARK(BM_Quanda_NextLastFriday);
BENCHMARK(BM_Peer_ScanLastFriday);
BENCHMARK(BM_Quanda_NextFifthMonday);
BENCHMARK(BM_Peer_ScanFifthMonday);
BENCHMARK(BM_Quanda_NextFridayThe13th);
BENCHMARK(BM_Peer_ScanFridayThe13th);
BENCHMARK(BM_Quanda_SuccessiveLastFridays);
BENCHMARK(BM_Peer_SuccessiveScansLastFriday);
BENCHMARK(BM_Quanda_SuccessiveFifthMondays);
BENCHMARK(BM_Peer_SuccessiveScansFifthMonday);
BENCHMARK(BM_Quanda_SuccessiveFridaysThe13th);
BENCHMARK(BM_Peer_SuccessiveScansFridayThe13th);
QUANDA_BENCH_RATIO("next last Friday vs day-by-day scan", "BM_Quanda_NextLastFriday",
                   "BM_Peer_ScanLastFriday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("next fifth Monday vs day-by-day scan", "BM_Quanda_NextFifthMonday",
                   "BM_Peer_ScanFifthMonday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("next Friday the 13th vs day-by-day scan", "BM_Quanda_NextFridayThe13th",
                   "BM_Peer_ScanFridayThe13th", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive last Fridays vs scans", "BM_Quanda_SuccessiveLastFridays",
                   "BM_Peer_SuccessiveScansLastFriday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive fifth Mondays vs scans", "BM_Quanda_SuccessiveFifthMondays",
                   "BM_Peer_SuccessiveScansFifthMonday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive Fridays the 13th vs scans", "BM_Quanda_SuccessiveFridaysThe13th",
                   "BM_Peer_SuccessiveScansFridayThe13th", QuandaBenchGoal::atLeastFaster(20.0));

// ---- a year of a weekly rule ----------------------------------------------------------------

const QuandaDaysOfWeekDateMask mondays({Day::monday});

void BM_Quanda_YearOfMondays(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    const QuandaAbstractDate start = values[index++ & 1023];
    const KeelDomain year(start, start.addingDays(364));
    for (QuandaAbstractDate monday : mondays.matchingDates(year, Day::monday)) {
      benchmark::DoNotOptimize(monday);
    }
  }
}
void BM_Peer_52WeeklySteps(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    QuandaAbstractDate date = values[index++ & 1023];
    for (int week = 0; week < 52; ++week) {
      date = date.addingDays(7);
      benchmark::DoNotOptimize(date);
    }
  }
}
BENCHMARK(BM_Quanda_YearOfMondays);
BENCHMARK(BM_Peer_52WeeklySteps);
QUANDA_BENCH_RATIO("a year of Mondays vs 52 addingDays(7)", "BM_Quanda_YearOfMondays",
                   "BM_Peer_52WeeklySteps", QuandaBenchGoal::atMost(3.0));

}  // namespace
