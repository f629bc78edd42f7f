// Date masks: the test of one date, the search for the next occurrence and the enumeration of a
// range, each beside the plainest way to get the same answer in the same run. Every benchmark
// here has "Mask" in its name: --benchmark_filter=Mask runs this file alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
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

void BM_Quanda_MaskDaysOfWeekMatches(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(weekdays.matches(values[index++ & 1023], monday));
  }
}
void BM_Peer_MaskStdSetDaysOfWeek(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(weekdayOrdinals.count(
        static_cast<std::uint8_t>(values[index++ & 1023].daysSinceDatum() % 7)));
  }
}
void BM_Peer_MaskDaysSinceDatum(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) benchmark::DoNotOptimize(values[index++ & 1023].daysSinceDatum());
}
void BM_Quanda_MaskDaysOfMonthMatches(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(paydays.matches(values[index++ & 1023], monday));
  }
}
void BM_Peer_MaskStdSetDaysOfMonth(benchmark::State& state) {
  const auto& values = dates();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(paydayNumbers.count(values[index++ & 1023].day()));
  }
}
BENCHMARK(BM_Quanda_MaskDaysOfWeekMatches);
BENCHMARK(BM_Peer_MaskStdSetDaysOfWeek);
BENCHMARK(BM_Peer_MaskDaysSinceDatum);
BENCHMARK(BM_Quanda_MaskDaysOfMonthMatches);
BENCHMARK(BM_Peer_MaskStdSetDaysOfMonth);
QUANDA_BENCH_RATIO("weekday mask matches vs std::set", "BM_Quanda_MaskDaysOfWeekMatches",
                   "BM_Peer_MaskStdSetDaysOfWeek", QuandaBenchGoal::atMost(1.0));
QUANDA_BENCH_RATIO("weekday mask matches vs daysSinceDatum", "BM_Quanda_MaskDaysOfWeekMatches",
                   "BM_Peer_MaskDaysSinceDatum", QuandaBenchGoal::atMost(2.0));
QUANDA_BENCH_RATIO("day-of-month mask matches vs std::set", "BM_Quanda_MaskDaysOfMonthMatches",
                   "BM_Peer_MaskStdSetDaysOfMonth", QuandaBenchGoal::atMost(1.0));
QUANDA_BENCH_RATIO("day-of-month mask matches vs daysSinceDatum",
                   "BM_Quanda_MaskDaysOfMonthMatches", "BM_Peer_MaskDaysSinceDatum",
                   QuandaBenchGoal::atMost(2.0));

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

void BM_Quanda_MaskNextLastFriday(benchmark::State& state) { nextMatch(state, lastFriday); }
void BM_Peer_MaskScanLastFriday(benchmark::State& state) { dayByDay(state, lastFriday); }
void BM_Quanda_MaskNextFifthMonday(benchmark::State& state) { nextMatch(state, fifthMonday); }
void BM_Peer_MaskScanFifthMonday(benchmark::State& state) { dayByDay(state, fifthMonday); }
void BM_Quanda_MaskNextFridayThe13th(benchmark::State& state) { nextMatch(state, fridayThe13th); }
void BM_Peer_MaskScanFridayThe13th(benchmark::State& state) { dayByDay(state, fridayThe13th); }
void BM_Quanda_MaskSuccessiveLastFridays(benchmark::State& state) {
  successiveMatches(state, lastFriday);
}
void BM_Peer_MaskSuccessiveScansLastFriday(benchmark::State& state) {
  successiveScans(state, lastFriday);
}
void BM_Quanda_MaskSuccessiveFifthMondays(benchmark::State& state) {
  successiveMatches(state, fifthMonday);
}
void BM_Peer_MaskSuccessiveScansFifthMonday(benchmark::State& state) {
  successiveScans(state, fifthMonday);
}
void BM_Quanda_MaskSuccessiveFridaysThe13th(benchmark::State& state) {
  successiveMatches(state, fridayThe13th);
}
void BM_Peer_MaskSuccessiveScansFridayThe13th(benchmark::State& state) {
  successiveScans(state, fridayThe13th);
}
BENCHMARK(BM_Quanda_MaskNextLastFriday);
BENCHMARK(BM_Peer_MaskScanLastFriday);
BENCHMARK(BM_Quanda_MaskNextFifthMonday);
BENCHMARK(BM_Peer_MaskScanFifthMonday);
BENCHMARK(BM_Quanda_MaskNextFridayThe13th);
BENCHMARK(BM_Peer_MaskScanFridayThe13th);
BENCHMARK(BM_Quanda_MaskSuccessiveLastFridays);
BENCHMARK(BM_Peer_MaskSuccessiveScansLastFriday);
BENCHMARK(BM_Quanda_MaskSuccessiveFifthMondays);
BENCHMARK(BM_Peer_MaskSuccessiveScansFifthMonday);
BENCHMARK(BM_Quanda_MaskSuccessiveFridaysThe13th);
BENCHMARK(BM_Peer_MaskSuccessiveScansFridayThe13th);
QUANDA_BENCH_RATIO("next last Friday vs day-by-day scan", "BM_Quanda_MaskNextLastFriday",
                   "BM_Peer_MaskScanLastFriday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("next fifth Monday vs day-by-day scan", "BM_Quanda_MaskNextFifthMonday",
                   "BM_Peer_MaskScanFifthMonday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("next Friday the 13th vs day-by-day scan", "BM_Quanda_MaskNextFridayThe13th",
                   "BM_Peer_MaskScanFridayThe13th", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive last Fridays vs scans", "BM_Quanda_MaskSuccessiveLastFridays",
                   "BM_Peer_MaskSuccessiveScansLastFriday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive fifth Mondays vs scans", "BM_Quanda_MaskSuccessiveFifthMondays",
                   "BM_Peer_MaskSuccessiveScansFifthMonday", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("successive Fridays the 13th vs scans", "BM_Quanda_MaskSuccessiveFridaysThe13th",
                   "BM_Peer_MaskSuccessiveScansFridayThe13th",
                   QuandaBenchGoal::atLeastFaster(20.0));

// ---- a year of a weekly rule ----------------------------------------------------------------

const QuandaDaysOfWeekDateMask mondays({Day::monday});

void BM_Quanda_MaskYearOfMondays(benchmark::State& state) {
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
void BM_Peer_Mask52WeeklySteps(benchmark::State& state) {
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
BENCHMARK(BM_Quanda_MaskYearOfMondays);
BENCHMARK(BM_Peer_Mask52WeeklySteps);
QUANDA_BENCH_RATIO("a year of Mondays vs 52 addingDays(7)", "BM_Quanda_MaskYearOfMondays",
                   "BM_Peer_Mask52WeeklySteps", QuandaBenchGoal::atMost(3.0));

// ---- adversarial combinations ------------------------------------------------------------
//
// Rules built against searches that step from one part of a combination to the next: the cycles
// of the issue that never agree, twelve levels of alternating all of / any of, a few cycles of
// prime lengths that meet once in millennia or never, and trees of 64 parts alternating all of,
// any of and not over day cycles and week cycles with patterns, month-local rules and date
// ranges, drawn with a fixed seed. Each search is measured beside the plainest way to the same
// answer: matches on each day in turn, from the start to the answer, or through the end of the
// range (of the domain, going back) when there is none. Every search is allowed twice the scan.

using Mask = std::shared_ptr<const QuandaDateMasking>;

Mask rule(const char* syntax) { return makeDateMaskFromSyntax(syntax).value(); }

// A fixed sequence of draws (a 64-bit linear congruential generator), the same on every machine.
class Draws {
 public:
  explicit Draws(std::uint64_t seed) : state_(seed) {}
  std::uint32_t below(std::uint32_t bound) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>((state_ >> 33) % bound);
  }

 private:
  std::uint64_t state_;
};

std::vector<bool> drawPattern(Draws& draws, std::uint32_t length) {
  std::vector<bool> pattern(length);
  for (std::size_t index = 0; index < pattern.size(); ++index) pattern[index] = draws.below(2);
  pattern[draws.below(length)] = true;
  pattern[draws.below(length)] = false;
  return pattern;
}
QuandaAbstractDate drawAnchor(Draws& draws) {
  return QuandaAbstractDate::makeFromDaysSinceDatum(738000 + draws.below(3000));  // 2021...2029
}
QuandaAbstractDate drawRangeStart(Draws& draws) {
  return QuandaAbstractDate::makeFromDaysSinceDatum(730000 + draws.below(15000));  // 2000...2041
}

Mask drawPart(Draws& draws) {
  static const char* const monthly[] = {"last fri",    "2nd tue", "day 13", "days 1,15",
                                        "weekdays",    "5th mon", "week 2", "last day",
                                        "1st,3rd wed", "weekends"};
  switch (draws.below(6)) {
    case 0:
      return std::make_shared<QuandaDayCycleDateMask>(drawAnchor(draws).daysSinceDatum(),
                                                      drawPattern(draws, 2 + draws.below(8)));
    case 1:
      return std::make_shared<QuandaDaysOfWeeksDateMask>(
          drawAnchor(draws),
          QuandaDayOfGregorianWeekSet::makeFromBits(
              static_cast<std::uint8_t>(1 + draws.below(127))),
          drawPattern(draws, 2 + draws.below(3)));
    case 2:
      return std::make_shared<QuandaWeekCycleDateMask>(drawAnchor(draws),
                                                       drawPattern(draws, 2 + draws.below(4)));
    case 3:
      return rule(monthly[draws.below(10)]);
    case 4: {
      const QuandaAbstractDate start = drawRangeStart(draws);
      return std::make_shared<QuandaDateRangeDateMask>(
          KeelDomain(start, start.addingDays(static_cast<std::int32_t>(30 + draws.below(370)))));
    }
    default: {
      std::vector<QuandaDateRangesDateMask::Range> ranges;
      for (int index = 0; index < 3; ++index) {
        const QuandaAbstractDate start = drawRangeStart(draws);
        ranges.emplace_back(start,
                            start.addingDays(static_cast<std::int32_t>(10 + draws.below(100))));
      }
      return std::make_shared<QuandaDateRangesDateMask>(ranges);
    }
  }
}

// A tree of `parts` parts: all of (any of) two to four subtrees that alternate the junction, one
// in five of them negated.
Mask drawTree(Draws& draws, int parts, bool allOf) {
  if (parts <= 1) return drawPart(draws);
  const int count = std::min(parts, 2 + static_cast<int>(draws.below(3)));
  std::vector<Mask> masks;
  int left = parts;
  for (int index = 0; index < count; ++index) {
    const int share =
        index + 1 == count
            ? left
            : std::max(1, left / (count - index) + static_cast<int>(draws.below(3)) - 1);
    const int take = std::min(share, left - (count - index - 1));
    left -= take;
    Mask mask = drawTree(draws, take, !allOf);
    if (draws.below(5) == 0) mask = std::make_shared<QuandaNotDateMask>(mask);
    masks.push_back(mask);
  }
  if (allOf) return std::make_shared<QuandaAllOfDateMask>(masks);
  return std::make_shared<QuandaAnyOfDateMask>(masks);
}
Mask drawnRule(std::uint64_t seed) {
  Draws draws(seed);
  return drawTree(draws, 64, seed % 2 == 1);
}

// Twelve levels alternating all of / any of, each of a day cycle, a week cycle and the next
// level; from 2024-01-01 the first match is three days away.
Mask twelveLevels(std::uint32_t anchor, int level = 0) {
  std::vector<bool> pattern(2 + level % 3, false);
  pattern[0] = true;
  Mask cycle = std::make_shared<QuandaDayCycleDateMask>(anchor + level, pattern);
  if (level == 11) return cycle;
  std::vector<Mask> masks{cycle,
                          std::make_shared<QuandaWeekCycleDateMask>(
                              QuandaAbstractDate::makeFromDaysSinceDatum(anchor + 3 * level),
                              std::vector<bool>{true, level % 2 == 0}),
                          twelveLevels(anchor, level + 1)};
  if (level % 2 == 0) return std::make_shared<QuandaAllOfDateMask>(masks);
  return std::make_shared<QuandaAnyOfDateMask>(masks);
}

constexpr QuandaAbstractDate newYear2024 = *QuandaAbstractDate::makeIfValid(2024, 1, 1);

struct AdversarialCase {
  const char* name;  // after BM_Quanda_MaskAdversarial_ and BM_Peer_MaskScan_
  const char* ratio;
  Mask mask;
  bool forward;  // nextMatch after 2024-01-01, else previousMatch before it
};

const std::vector<AdversarialCase>& adversarialCases() {
  static const std::vector<AdversarialCase> cases = {
      {"CyclesNeverAgree", "cycles that never agree (period 2), next vs scan",
       rule("(every 2 days from 2024-01-01 and every 2 days from 2024-01-02 or every 2 days from "
            "2024-01-03) and every 2 days from 2024-01-04"),
       true},
      {"MonthlyAndCyclesNever", "last Friday and disjoint cycles (one period), next vs scan",
       rule("last fri and every 2 days from 2024-01-01 and every 2 days from 2024-01-02 or "
            "2nd tue and every 2 days from 2024-01-03 and not every 2 days from 2024-01-03"),
       true},
      {"TwelveLevels", "12 alternating levels, match 3 days away, next vs scan",
       twelveLevels(newYear2024.daysSinceDatum() + 5), true},
      {"PrimeCyclesFar", "cycles of 199, 211, 223 days meeting in 6756, next vs scan",
       rule("every 199 days from 2024-01-01 and every 211 days from 2024-01-03 and "
            "every 223 days from 2024-02-11"),
       true},
      {"PrimeCyclesNever", "cycles of 199, 211, 223 days never meeting, next vs scan",
       rule("every 199 days from 2024-01-01 and every 211 days from 2024-01-02 and "
            "every 223 days from 2024-02-10"),
       true},
      {"Drawn64Near", "64 parts, match 3 days away, next vs scan", drawnRule(2), true},
      {"Drawn64Months", "64 parts, match 9 years away, next vs scan", drawnRule(3), true},
      {"Drawn64Years", "64 parts, match 16 years away, next vs scan", drawnRule(47), true},
      {"Drawn64Never", "64 parts, no match, next vs scan", drawnRule(1), true},
      {"Drawn64MonthsBefore", "64 parts, match 9 years before, previous vs scan", drawnRule(46),
       false},
      {"Drawn64NeverBefore", "64 parts, no earlier match, previous vs scan", drawnRule(17), false},
  };
  return cases;
}

std::optional<QuandaAbstractDate> scanAfter(const QuandaDateMasking& mask,
                                            QuandaAbstractDate after) {
  for (QuandaAbstractDate date = after; date != QuandaAbstractDate::validRange.max();) {
    date = date.nextDay();
    if (mask.matches(date, monday)) return date;
  }
  return std::nullopt;
}
std::optional<QuandaAbstractDate> scanBefore(const QuandaDateMasking& mask,
                                             QuandaAbstractDate before) {
  const QuandaAbstractDate first = mask.domain(monday).min();
  for (QuandaAbstractDate date = before; date > first;) {
    date = date.previousDay();
    if (mask.matches(date, monday)) return date;
  }
  return std::nullopt;
}

void adversarialSearch(benchmark::State& state, const AdversarialCase& test) {
  for (auto _ : state) {
    const auto found = test.forward ? test.mask->nextMatch(newYear2024, monday)
                                    : test.mask->previousMatch(newYear2024, monday);
    benchmark::DoNotOptimize(found.value_or(QuandaAbstractDate::zero));
  }
}
void adversarialScan(benchmark::State& state, const AdversarialCase& test) {
  const auto expected = test.forward ? test.mask->nextMatch(newYear2024, monday)
                                     : test.mask->previousMatch(newYear2024, monday);
  for (auto _ : state) {
    const auto found =
        test.forward ? scanAfter(*test.mask, newYear2024) : scanBefore(*test.mask, newYear2024);
    if (found != expected) state.SkipWithError("the search and the scan disagree");
    benchmark::DoNotOptimize(found.value_or(QuandaAbstractDate::zero));
  }
}

const bool adversarialRegistered = [] {
  static std::deque<std::string> names;
  for (const AdversarialCase& test : adversarialCases()) {
    const std::string& quanda =
        names.emplace_back(std::string("BM_Quanda_MaskAdversarial_") + test.name);
    const std::string& peer = names.emplace_back(std::string("BM_Peer_MaskScan_") + test.name);
    benchmark::RegisterBenchmark(quanda.c_str(), adversarialSearch, test);
    benchmark::RegisterBenchmark(peer.c_str(), adversarialScan, test);
    registerQuandaBenchRatio({test.ratio, quanda, peer, QuandaBenchGoal::atMost(2.0)});
  }
  return true;
}();

}  // namespace
