// Natural date-times beside their peers: reading and writing "YYYY-MM-DDTHH:MM:SS", and counting
// and adding seconds.
//
// Every benchmark cycles through the same 1024 random instants across 0001..9999 (and, where it
// adds, the same 1024 amounts), so that no result can be folded at compile time and the branch
// predictor sees real variety. The peers do the same work in their own terms: strptime and
// Abseil's ParseCivilTime read the text, snprintf writes it into a std::string (the result type
// of serializedToRfc3339String), and Abseil's civil seconds count and add.
#include <absl/time/civil_time.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "bench/QuandaBenchRatios.h"

namespace {

using DateTime = QuandaAbstractNaturalDateTime;

constexpr std::size_t inputCount = 1024;

struct Inputs {
  std::vector<DateTime> dateTimes;
  std::vector<absl::CivilSecond> civilSeconds;
  std::vector<std::string> texts;
  std::vector<std::int64_t> amounts;

  Inputs() {
    std::mt19937_64 random(1);
    // Far enough from both ends that every amount keeps the result in range.
    std::uniform_int_distribution<std::uint64_t> instants(
        86400ULL * 400, DateTime::maxSecondsSinceDatum - 86400ULL * 400);
    std::uniform_int_distribution<std::int64_t> seconds(-86400LL * 365, 86400LL * 365);
    const absl::CivilSecond datum(1, 1, 1, 0, 0, 0);
    for (std::size_t index = 0; index < inputCount; ++index) {
      const std::uint64_t count = instants(random);
      dateTimes.push_back(DateTime::makeFromSecondsSinceDatum(count));
      civilSeconds.push_back(datum + static_cast<std::int64_t>(count));
      texts.push_back(dateTimes.back().serializedToRfc3339String());
      amounts.push_back(seconds(random));
    }
  }
};

const Inputs& inputs() {
  static const Inputs shared;
  return shared;
}

// ---- Reading
// -------------------------------------------------------------------------------------

void BM_Quanda_ParseRfc3339(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    KeelResult<DateTime> result = DateTime::makeFromRfc3339String(in.texts[index]);
    benchmark::DoNotOptimize(result);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_ParseRfc3339);

void BM_Strptime_ParseRfc3339(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    std::tm fields{};
    const char* end = strptime(in.texts[index].c_str(), "%Y-%m-%dT%H:%M:%S", &fields);
    benchmark::DoNotOptimize(end);
    benchmark::DoNotOptimize(fields);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Strptime_ParseRfc3339);

void BM_Absl_ParseCivilTime(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    absl::CivilSecond civil;
    const bool parsed = absl::ParseCivilTime(in.texts[index], &civil);
    benchmark::DoNotOptimize(parsed);
    benchmark::DoNotOptimize(civil);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Absl_ParseCivilTime);

QUANDA_BENCH_RATIO("make(rfc3339String:) vs strptime", "BM_Quanda_ParseRfc3339",
                   "BM_Strptime_ParseRfc3339", QuandaBenchGoal::atLeastFaster(1.0));
QUANDA_BENCH_RATIO("make(rfc3339String:) vs absl::ParseCivilTime", "BM_Quanda_ParseRfc3339",
                   "BM_Absl_ParseCivilTime", QuandaBenchGoal::atLeastFaster(10.0));

// ---- Writing
// -------------------------------------------------------------------------------------

void BM_Quanda_FormatRfc3339(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    std::string text = in.dateTimes[index].serializedToRfc3339String();
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_FormatRfc3339);

void BM_Snprintf_FormatRfc3339(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    const DateTime dateTime = in.dateTimes[index];
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d",
                                     dateTime.year(), dateTime.month(), dateTime.day(),
                                     dateTime.hour(), dateTime.minute(), dateTime.second());
    std::string text(buffer, static_cast<std::size_t>(length));
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Snprintf_FormatRfc3339);

void BM_Absl_FormatCivilTime(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    std::string text = absl::FormatCivilTime(in.civilSeconds[index]);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Absl_FormatCivilTime);

QUANDA_BENCH_RATIO("serializedToRfc3339String vs snprintf", "BM_Quanda_FormatRfc3339",
                   "BM_Snprintf_FormatRfc3339", QuandaBenchGoal::atLeastFaster(5.0));
QUANDA_BENCH_RATIO("serializedToRfc3339String vs absl::FormatCivilTime", "BM_Quanda_FormatRfc3339",
                   "BM_Absl_FormatCivilTime", QuandaBenchGoal::atLeastFaster(5.0));

// ---- Counting and adding seconds
// -----------------------------------------------------------------

void BM_Quanda_AddingSeconds(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    const DateTime moved = in.dateTimes[index].addingSeconds(in.amounts[index]);
    benchmark::DoNotOptimize(moved);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_AddingSeconds);

void BM_Absl_AddingSeconds(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    const absl::CivilSecond moved = in.civilSeconds[index] + in.amounts[index];
    benchmark::DoNotOptimize(moved);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Absl_AddingSeconds);

void BM_Quanda_SecondsSinceDatum(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    const std::uint64_t seconds = in.dateTimes[index].secondsSinceDatum();
    benchmark::DoNotOptimize(seconds);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_SecondsSinceDatum);

void BM_Absl_SecondsSinceDatum(benchmark::State& state) {
  const Inputs& in = inputs();
  const absl::CivilSecond datum(1, 1, 1, 0, 0, 0);
  std::size_t index = 0;
  for (auto _ : state) {
    const std::int64_t seconds = in.civilSeconds[index] - datum;
    benchmark::DoNotOptimize(seconds);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Absl_SecondsSinceDatum);

QUANDA_BENCH_RATIO("natural date-time adding(seconds:) vs absl civil second +",
                   "BM_Quanda_AddingSeconds", "BM_Absl_AddingSeconds",
                   QuandaBenchGoal::atMost(1.0));
QUANDA_BENCH_RATIO("natural date-time secondsSinceDatum vs absl civil second -",
                   "BM_Quanda_SecondsSinceDatum", "BM_Absl_SecondsSinceDatum",
                   QuandaBenchGoal::atMost(1.0));

}  // namespace
