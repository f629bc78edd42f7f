// The caches of formatted strings beside ICU: a hit is a hash look-up and a copy of the stored
// string, where ICU, even warm, formats the value again.
//
// Each cache is filled first with every key the benchmark asks for, so that every look-up is a
// hit. The date-times are formatted by ICU here, the same 1024 values through a formatter set up
// as the adapter's; the dates and durations are measured against the adapter benchmarks' ICU
// peers (BM_Icu_FormatDate, BM_Icu_FormatMeasures), which format values of the same kind and
// range: ICU's cost does not depend on which date or duration it writes.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Quanda/Formatting/DateFormatting/QuandaFormattedAbstractDateCache.h"
#include "Quanda/Formatting/DurationFormatting/QuandaFormattedDurationCache.h"
#include "Quanda/Formatting/NaturalDateTimeFormatting/QuandaFormattedNaturalDateTimeCache.h"
#include "Quanda/FoundationAdapting/QuandaFixedDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"
#include "bench/QuandaBenchIcuPeers.h"
#include "bench/QuandaBenchRatios.h"

namespace {

using DateTime = QuandaAbstractNaturalDateTime;

constexpr std::size_t inputCount = 1024;
constexpr KeelFiniteCacheThreshold<unsigned> roomForAll(2 * inputCount);
const auto mediumAndShort = QuandaDateTimeFormatStyle::dateAndTime(QuandaDateFormatStyle::medium,
                                                                   QuandaTimeFormatStyle::short_);

std::shared_ptr<QuandaFoundationCalendarAdapter> sharedAdapter() {
  static const auto shared = std::make_shared<QuandaFoundationCalendarAdapter>(
      std::make_shared<QuandaFixedDeviceSettings>("en_US", "UTC"));
  return shared;
}

// Random date-times over every year, and durations of one to 24 hours.
const std::vector<DateTime>& dateTimes() {
  static const std::vector<DateTime> shared = [] {
    std::mt19937_64 random(13);
    std::uniform_int_distribution<std::uint64_t> seconds(0, DateTime::maxSecondsSinceDatum);
    std::vector<DateTime> all;
    for (std::size_t index = 0; index < inputCount; ++index) {
      all.push_back(DateTime::makeFromSecondsSinceDatum(seconds(random)));
    }
    return all;
  }();
  return shared;
}
const std::vector<QuandaNaturalTimeSpan>& spans() {
  static const std::vector<QuandaNaturalTimeSpan> shared = [] {
    std::mt19937_64 random(17);
    std::uniform_int_distribution<std::uint64_t> seconds(3600, 86399);
    std::vector<QuandaNaturalTimeSpan> all;
    for (std::size_t index = 0; index < inputCount; ++index) all.emplace_back(seconds(random));
    return all;
  }();
  return shared;
}

// Asks every input once (filling the cache), then round and round again, all hits.
template <class Input, class Format>
void lookUpWarm(benchmark::State& state, const std::vector<Input>& in, const Format& format) {
  for (const Input& value : in) {
    if (!format(value)) state.SkipWithError("a format failed");
  }
  std::size_t index = 0;
  for (auto _ : state) {
    KeelResult<std::string> text = format(in[index]);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}

void BM_Quanda_CachedDateTimeHit(benchmark::State& state) {
  QuandaFormattedNaturalDateTimeCache cache(sharedAdapter(), roomForAll);
  lookUpWarm(state, dateTimes(), [&cache](const DateTime& dateTime) {
    return cache.format(dateTime, mediumAndShort, "en_US");
  });
}
BENCHMARK(BM_Quanda_CachedDateTimeHit);

// The same values through the date-time's own formatting, to show what a hit saves.
void BM_Quanda_DateTimeFormatWith(benchmark::State& state) {
  QuandaFoundationCalendarAdapter& adapter = *sharedAdapter();
  lookUpWarm(state, dateTimes(), [&adapter](const DateTime& dateTime) {
    return dateTime.formatWith(mediumAndShort, adapter, "en_US");
  });
}
BENCHMARK(BM_Quanda_DateTimeFormatWith);

void BM_Icu_FormatDateTime(benchmark::State& state) {
  std::vector<double> instants;
  for (const DateTime& dateTime : dateTimes()) {
    instants.push_back(
        dateTime.makeUtcFoundationDate(*sharedAdapter()).value().time_since_epoch().count() * 1000);
  }
  const std::unique_ptr<icu::DateFormat> formatter =
      icuDateFormatter(icu::DateFormat::kMedium, icu::DateFormat::kShort, "en_US");
  icuFormatEach(state, *formatter, instants);
}
BENCHMARK(BM_Icu_FormatDateTime);

void BM_Quanda_CachedDateHit(benchmark::State& state) {
  QuandaFormattedAbstractDateCache cache(sharedAdapter(), roomForAll);
  std::vector<QuandaAbstractDate> dates;
  for (const DateTime& dateTime : dateTimes()) dates.push_back(dateTime.date());
  lookUpWarm(state, dates, [&cache](QuandaAbstractDate date) {
    return cache.format(date, "en_US", QuandaDateFormatStyle::medium);
  });
}
BENCHMARK(BM_Quanda_CachedDateHit);

void BM_Quanda_CachedDurationHit(benchmark::State& state) {
  QuandaFormattedDurationCache cache(QuandaDurationFormatter(sharedAdapter()), roomForAll);
  lookUpWarm(state, spans(), [&cache](QuandaNaturalTimeSpan span) {
    return cache.format(span, "en_US", QuandaDurationFormatStyle::shortDelta);
  });
}
BENCHMARK(BM_Quanda_CachedDurationHit);

QUANDA_BENCH_RATIO("cached date-time text (hit) vs ICU's warm DateFormat",
                   "BM_Quanda_CachedDateTimeHit", "BM_Icu_FormatDateTime",
                   QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("cached date text (hit) vs ICU's warm DateFormat", "BM_Quanda_CachedDateHit",
                   "BM_Icu_FormatDate", QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("cached duration text (hit) vs ICU's MeasureFormat::formatMeasures",
                   "BM_Quanda_CachedDurationHit", "BM_Icu_FormatMeasures",
                   QuandaBenchGoal::atLeastFaster(20.0));
QUANDA_BENCH_RATIO("date-time formatWith (uncached) vs ICU's warm DateFormat",
                   "BM_Quanda_DateTimeFormatWith", "BM_Icu_FormatDateTime",
                   QuandaBenchGoal::atMost(1.3));

}  // namespace
