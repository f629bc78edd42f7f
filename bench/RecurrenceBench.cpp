// Recurrence rules: a year of occurrences of a monthly and a weekly rule, read once from their
// iCalendar text, beside libical's recurrence iterator expanding the same rule over the same year.
// Each benchmark first checks that both sides give the same dates.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Quanda/DateMasks/IcalendarOracle.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"
#include "QuandaBenchRatios.h"

namespace {

const QuandaAbstractDate yearStart = QuandaAbstractDate::make(2024, 1, 1).value();
const QuandaAbstractDate yearEnd = QuandaAbstractDate::make(2024, 12, 31).value();

constexpr const char* monthlyRule = "FREQ=MONTHLY;BYDAY=-1FR";
constexpr const char* weeklyRule = "FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,TH";

// The rule's dates of the year through the imported mask.
void quandaYear(const QuandaImportedRecurrence& recurrence, std::vector<QuandaAbstractDate>& out) {
  out.clear();
  const KeelDomain year(yearStart, yearEnd);
  for (QuandaAbstractDate date : recurrence.mask->matchingDates(year, recurrence.firstDayOfWeek)) {
    out.push_back(date);
  }
}

// The same dates through a new libical iterator over the parsed rule.
void libicalYear(const icalrecurrencetype& rule, std::vector<QuandaAbstractDate>& out) {
  out.clear();
  const icaltimetype start = icaltime_from_string(icalendar_oracle::compact(yearStart).c_str());
  icalrecur_iterator* iterator = icalrecur_iterator_new(rule, start);
  for (icaltimetype next = icalrecur_iterator_next(iterator);
       !icaltime_is_null_time(next) && next.year == 2024;
       next = icalrecur_iterator_next(iterator)) {
    out.push_back(QuandaAbstractDate::make(static_cast<std::uint16_t>(next.year),
                                           static_cast<std::uint8_t>(next.month),
                                           static_cast<std::uint8_t>(next.day))
                      .value());
  }
  icalrecur_iterator_free(iterator);
}

bool sameDates(const char* text) {
  const auto recurrence = QuandaRecurrenceRule::importing(text, yearStart);
  if (!recurrence) return false;
  std::vector<QuandaAbstractDate> quanda;
  std::vector<QuandaAbstractDate> libical;
  quandaYear(recurrence.value(), quanda);
  libicalYear(icalrecurrencetype_from_string(text), libical);
  return !quanda.empty() && quanda == libical;
}

void quandaBench(benchmark::State& state, const char* text) {
  if (!sameDates(text)) state.SkipWithError("quanda and libical disagree");
  const QuandaImportedRecurrence recurrence =
      QuandaRecurrenceRule::importing(text, yearStart).value();
  std::vector<QuandaAbstractDate> dates;
  dates.reserve(128);
  for (auto _ : state) {
    quandaYear(recurrence, dates);
    benchmark::DoNotOptimize(dates.data());
  }
}

void libicalBench(benchmark::State& state, const char* text) {
  const icalrecurrencetype rule = icalrecurrencetype_from_string(text);
  std::vector<QuandaAbstractDate> dates;
  dates.reserve(128);
  for (auto _ : state) {
    libicalYear(rule, dates);
    benchmark::DoNotOptimize(dates.data());
  }
}

void BM_Quanda_RecurrenceYearMonthly(benchmark::State& state) { quandaBench(state, monthlyRule); }
void BM_Libical_RecurrenceYearMonthly(benchmark::State& state) { libicalBench(state, monthlyRule); }
void BM_Quanda_RecurrenceYearWeekly(benchmark::State& state) { quandaBench(state, weeklyRule); }
void BM_Libical_RecurrenceYearWeekly(benchmark::State& state) { libicalBench(state, weeklyRule); }
BENCHMARK(BM_Quanda_RecurrenceYearMonthly);
BENCHMARK(BM_Libical_RecurrenceYearMonthly);
BENCHMARK(BM_Quanda_RecurrenceYearWeekly);
BENCHMARK(BM_Libical_RecurrenceYearWeekly);

QUANDA_BENCH_RATIO("a year of a monthly rule vs libical's recurrence iterator",
                   "BM_Quanda_RecurrenceYearMonthly", "BM_Libical_RecurrenceYearMonthly",
                   QuandaBenchGoal::atLeastFaster(10.0));
QUANDA_BENCH_RATIO("a year of a weekly rule vs libical's recurrence iterator",
                   "BM_Quanda_RecurrenceYearWeekly", "BM_Libical_RecurrenceYearWeekly",
                   QuandaBenchGoal::atLeastFaster(10.0));

}  // namespace
