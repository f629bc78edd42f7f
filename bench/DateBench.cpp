// The abstract date beside other calendars doing the same work: libstdc++'s <chrono>, Howard
// Hinnant's date library, Abseil's civil time, and the C library's strptime and snprintf.
//
// Every benchmark cycles through the same 4096 dates spread over the whole valid range (fixed
// seed), so that no result can be folded at compile time and branch predictors see realistic
// variety.
#include <absl/time/civil_time.h>
#include <benchmark/benchmark.h>
#include <date/date.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "bench/QuandaBenchRatios.h"

namespace {

constexpr std::size_t kInputCount = 4096;  // a power of two: the index wraps with a mask

struct Inputs {
  std::vector<QuandaAbstractDate> dates;
  std::vector<std::uint32_t> daysSinceDatum;
  std::vector<std::int32_t> daysSinceUnixEpoch;
  std::vector<std::chrono::year_month_day> chronoDates;
  std::vector<date::year_month_day> hinnantDates;
  std::vector<absl::CivilDay> civilDays;
  std::vector<std::int32_t> dayOffsets;  // -1000 ... 1000, for adding days
  std::vector<std::string> texts;        // "YYYY-MM-DD"
  std::vector<std::string> packedTexts;  // "YYYYMMDD"
};

const Inputs& inputs() {
  static const Inputs made = [] {
    Inputs result;
    std::mt19937 random(20240229);
    // Away from the ends by more than the largest offset, so that every addition stays valid.
    std::uniform_int_distribution<std::uint32_t> dayCount(1000, 3652058 - 1000);
    std::uniform_int_distribution<std::int32_t> offset(-1000, 1000);
    for (std::size_t index = 0; index < kInputCount; ++index) {
      const std::uint32_t n = dayCount(random);
      const QuandaAbstractDate quandaDate = QuandaAbstractDate::makeFromDaysSinceDatum(n);
      result.dates.push_back(quandaDate);
      result.daysSinceDatum.push_back(n);
      result.daysSinceUnixEpoch.push_back(static_cast<std::int32_t>(n) - 719162);
      result.chronoDates.push_back(quandaDate.yearMonthDay());
      result.hinnantDates.push_back(date::year{quandaDate.year()} /
                                    date::month{quandaDate.month()} / date::day{quandaDate.day()});
      result.civilDays.emplace_back(quandaDate.year(), quandaDate.month(), quandaDate.day());
      result.dayOffsets.push_back(offset(random));
      result.texts.push_back(quandaDate.serializeToIso8601String());
      char packed[16];
      std::snprintf(packed, sizeof packed, "%08llu",
                    static_cast<unsigned long long>(quandaDate.serializeToIso8601Numeric()));
      result.packedTexts.emplace_back(packed);
    }
    return result;
  }();
  return made;
}

// Runs one operation on each input in turn.
template <class Input, class Operation>
void cycle(benchmark::State& state, const std::vector<Input>& values, Operation operation) {
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(operation(values[index]));
    index = (index + 1) & (kInputCount - 1);
  }
}

// ---- Date -> day count -----------------------------------------------------------------------

void BM_Quanda_DaysSinceDatum(benchmark::State& state) {
  cycle(state, inputs().dates, [](QuandaAbstractDate date) { return date.daysSinceDatum(); });
}
void BM_Chrono_SysDaysFromYearMonthDay(benchmark::State& state) {
  cycle(state, inputs().chronoDates, [](std::chrono::year_month_day date) {
    return std::chrono::sys_days(date).time_since_epoch().count();
  });
}
void BM_Hinnant_SysDaysFromYearMonthDay(benchmark::State& state) {
  cycle(state, inputs().hinnantDates,
        [](date::year_month_day date) { return date::sys_days(date).time_since_epoch().count(); });
}
void BM_Absl_CivilDayDifference(benchmark::State& state) {
  cycle(state, inputs().civilDays, [](absl::CivilDay day) {
    // The fields go through the normalising constructor, as a conversion from fields must.
    return absl::CivilDay(day.year(), day.month(), day.day()) - absl::CivilDay(1970, 1, 1);
  });
}
BENCHMARK(BM_Quanda_DaysSinceDatum);
BENCHMARK(BM_Chrono_SysDaysFromYearMonthDay);
BENCHMARK(BM_Hinnant_SysDaysFromYearMonthDay);
BENCHMARK(BM_Absl_CivilDayDifference);

// ---- Day count -> date -----------------------------------------------------------------------

void BM_Quanda_MakeFromDaysSinceDatum(benchmark::State& state) {
  cycle(state, inputs().daysSinceDatum,
        [](std::uint32_t n) { return QuandaAbstractDate::makeFromDaysSinceDatum(n); });
}
void BM_Chrono_YearMonthDayFromSysDays(benchmark::State& state) {
  cycle(state, inputs().daysSinceUnixEpoch, [](std::int32_t n) {
    return std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(n)));
  });
}
void BM_Hinnant_YearMonthDayFromSysDays(benchmark::State& state) {
  cycle(state, inputs().daysSinceUnixEpoch,
        [](std::int32_t n) { return date::year_month_day(date::sys_days(date::days(n))); });
}
void BM_Absl_CivilDayFromDays(benchmark::State& state) {
  cycle(state, inputs().daysSinceUnixEpoch,
        [](std::int32_t n) { return absl::CivilDay(1970, 1, 1) + n; });
}
BENCHMARK(BM_Quanda_MakeFromDaysSinceDatum);
BENCHMARK(BM_Chrono_YearMonthDayFromSysDays);
BENCHMARK(BM_Hinnant_YearMonthDayFromSysDays);
BENCHMARK(BM_Absl_CivilDayFromDays);

// ---- Adding days -----------------------------------------------------------------------------

void BM_Quanda_AddingDays(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(in.dates[index].addingDays(in.dayOffsets[index]));
    index = (index + 1) & (kInputCount - 1);
  }
}
void BM_Chrono_AddingDays(benchmark::State& state) {
  const Inputs& in = inputs();
  std::size_t index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::chrono::year_month_day(
        std::chrono::sys_days(in.chronoDates[index]) + std::chrono::days(in.dayOffsets[index])));
    index = (index + 1) & (kInputCount - 1);
  }
}
void BM_Quanda_NextDay(benchmark::State& state) {
  cycle(state, inputs().dates, [](QuandaAbstractDate date) { return date.nextDay(); });
}
void BM_Chrono_NextDay(benchmark::State& state) {
  cycle(state, inputs().chronoDates, [](std::chrono::year_month_day date) {
    return std::chrono::year_month_day(std::chrono::sys_days(date) + std::chrono::days(1));
  });
}
BENCHMARK(BM_Quanda_AddingDays);
BENCHMARK(BM_Chrono_AddingDays);
BENCHMARK(BM_Quanda_NextDay);
BENCHMARK(BM_Chrono_NextDay);

// ---- Reading "YYYY-MM-DD" --------------------------------------------------------------------

void BM_Quanda_MakeFromIso8601String(benchmark::State& state) {
  cycle(state, inputs().texts,
        [](const std::string& text) { return QuandaAbstractDate::makeFromIso8601String(text); });
}
void BM_Quanda_MakeFromIso8601StringWithoutSeparators(benchmark::State& state) {
  cycle(state, inputs().packedTexts, [](const std::string& text) {
    return QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(text);
  });
}
void BM_Libc_Strptime(benchmark::State& state) {
  // strptime reads the fields but does not check that they make a date.
  cycle(state, inputs().texts, [](const std::string& text) {
    std::tm fields{};
    const char* end = strptime(text.c_str(), "%Y-%m-%d", &fields);
    return end != nullptr ? fields.tm_year * 400 + fields.tm_mon * 32 + fields.tm_mday : -1;
  });
}
void BM_Absl_ParseCivilTime(benchmark::State& state) {
  cycle(state, inputs().texts, [](const std::string& text) {
    absl::CivilDay day;
    const bool parsed = absl::ParseCivilTime(text, &day);
    return parsed ? day : absl::CivilDay();
  });
}
BENCHMARK(BM_Quanda_MakeFromIso8601String);
BENCHMARK(BM_Quanda_MakeFromIso8601StringWithoutSeparators);
BENCHMARK(BM_Libc_Strptime);
BENCHMARK(BM_Absl_ParseCivilTime);

// ---- Writing "YYYY-MM-DD" --------------------------------------------------------------------

void BM_Quanda_SerializeToIso8601String(benchmark::State& state) {
  cycle(state, inputs().dates,
        [](QuandaAbstractDate date) { return date.serializeToIso8601String(); });
}
void BM_Libc_Snprintf(benchmark::State& state) {
  // Into a buffer only: the library's time includes making its std::string, the peer's does not.
  cycle(state, inputs().dates, [](QuandaAbstractDate date) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", date.year(), date.month(),
                  date.day());
    return text;
  });
}
void BM_Absl_FormatCivilTime(benchmark::State& state) {
  cycle(state, inputs().civilDays, [](absl::CivilDay day) { return absl::FormatCivilTime(day); });
}
BENCHMARK(BM_Quanda_SerializeToIso8601String);
BENCHMARK(BM_Libc_Snprintf);
BENCHMARK(BM_Absl_FormatCivilTime);

// ---- Goals -----------------------------------------------------------------------------------

QUANDA_BENCH_RATIO("date -> day count vs libstdc++ chrono", "BM_Quanda_DaysSinceDatum",
                   "BM_Chrono_SysDaysFromYearMonthDay", QuandaBenchGoal::atMost(1.1));
QUANDA_BENCH_RATIO("day count -> date vs libstdc++ chrono", "BM_Quanda_MakeFromDaysSinceDatum",
                   "BM_Chrono_YearMonthDayFromSysDays", QuandaBenchGoal::atMost(1.1));
QUANDA_BENCH_RATIO("day count -> date vs Hinnant date", "BM_Quanda_MakeFromDaysSinceDatum",
                   "BM_Hinnant_YearMonthDayFromSysDays", QuandaBenchGoal::atLeastFaster(2.0));
QUANDA_BENCH_RATIO("addingDays vs libstdc++ chrono round trip", "BM_Quanda_AddingDays",
                   "BM_Chrono_AddingDays", QuandaBenchGoal::atMost(1.1));
QUANDA_BENCH_RATIO("nextDay vs libstdc++ chrono round trip", "BM_Quanda_NextDay",
                   "BM_Chrono_NextDay", QuandaBenchGoal::atLeastFaster(1.0));
QUANDA_BENCH_RATIO("make(iso8601String:) vs strptime", "BM_Quanda_MakeFromIso8601String",
                   "BM_Libc_Strptime", QuandaBenchGoal::atLeastFaster(1.0));
QUANDA_BENCH_RATIO("make(iso8601String:) vs absl::ParseCivilTime",
                   "BM_Quanda_MakeFromIso8601String", "BM_Absl_ParseCivilTime",
                   QuandaBenchGoal::atLeastFaster(15.0));
QUANDA_BENCH_RATIO("serializeToIso8601String vs snprintf", "BM_Quanda_SerializeToIso8601String",
                   "BM_Libc_Snprintf", QuandaBenchGoal::atLeastFaster(10.0));

}  // namespace
