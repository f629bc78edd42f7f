// The calendar adapter beside its peers: conversions between components and instants in UTC and
// in a named zone, against ICU's proleptic calendar (the platform path the adapter replaces) and
// against Abseil's time zone calls made directly; formatting against ICU's warm formatters.
//
// Conversions are round trips, components to instant and back, over the same 1024 random
// date-times, so that nothing folds at compile time and every result is consumed. Formatting
// cycles through 1024 random dates or durations (one to 24 hours, so three units).
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#include <benchmark/benchmark.h>
#include <unicode/datefmt.h>
#include <unicode/fieldpos.h>
#include <unicode/gregocal.h>
#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>
#include <unicode/timezone.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Quanda/FoundationAdapting/QuandaFixedDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"
#include "bench/QuandaBenchIcuPeers.h"
#include "bench/QuandaBenchRatios.h"

namespace {

using Components = QuandaAbstractNaturalDateTime::Components;
constexpr std::size_t inputCount = 1024;
constexpr const char* zoneName = "America/New_York";

// Random date-times, across every year for UTC and across 1970...2037 (where zones change most)
// for the named zone.
std::vector<Components> randomDateTimes(int firstYear, int lastYear) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<int> year(firstYear, lastYear), month(1, 12), day(1, 28),
      hour(0, 23), sixty(0, 59);
  std::vector<Components> dateTimes;
  for (std::size_t index = 0; index < inputCount; ++index) {
    dateTimes.push_back({.day = static_cast<std::uint8_t>(day(random)),
                         .hour = static_cast<std::uint8_t>(hour(random)),
                         .minute = static_cast<std::uint8_t>(sixty(random)),
                         .month = static_cast<std::uint8_t>(month(random)),
                         .second = static_cast<std::uint8_t>(sixty(random)),
                         .year = static_cast<std::uint16_t>(year(random))});
  }
  return dateTimes;
}

const std::vector<Components>& allYears() {
  static const std::vector<Components> shared = randomDateTimes(1, 9999);
  return shared;
}
const std::vector<Components>& recentYears() {
  static const std::vector<Components> shared = randomDateTimes(1970, 2037);
  return shared;
}

QuandaFoundationCalendarAdapter& adapter() {
  static QuandaFoundationCalendarAdapter shared(
      std::make_shared<QuandaFixedDeviceSettings>("en_US", "UTC"));
  return shared;
}

std::unique_ptr<icu::GregorianCalendar> prolepticCalendar(const char* zone) {
  UErrorCode status = U_ZERO_ERROR;
  auto calendar = std::make_unique<icu::GregorianCalendar>(icu::TimeZone::createTimeZone(zone),
                                                           icu::Locale("en_US"), status);
  calendar->setGregorianChange(-std::numeric_limits<double>::infinity(), status);
  return calendar;
}

// ICU's platform path: clear, set the six fields, take the instant; set it, read the fields.
void icuRoundTrip(benchmark::State& state, const char* zone, const std::vector<Components>& in) {
  const std::unique_ptr<icu::GregorianCalendar> calendar = prolepticCalendar(zone);
  std::size_t index = 0;
  for (auto _ : state) {
    const Components& c = in[index];
    UErrorCode status = U_ZERO_ERROR;
    calendar->clear();
    calendar->set(c.year, c.month - 1, c.day, c.hour, c.minute, c.second);
    const UDate instant = calendar->getTime(status);
    calendar->setTime(instant, status);
    const std::int32_t fields[] = {
        calendar->get(UCAL_EXTENDED_YEAR, status), calendar->get(UCAL_MONTH, status),
        calendar->get(UCAL_DATE, status),          calendar->get(UCAL_HOUR_OF_DAY, status),
        calendar->get(UCAL_MINUTE, status),        calendar->get(UCAL_SECOND, status)};
    benchmark::DoNotOptimize(fields);
    index = (index + 1) % inputCount;
  }
}

// ---- UTC
// -----------------------------------------------------------------------------------------

void BM_Quanda_UtcRoundTrip(benchmark::State& state) {
  const std::vector<Components>& in = allYears();
  QuandaFoundationCalendarAdapter& calendar = adapter();
  std::size_t index = 0;
  for (auto _ : state) {
    const KeelResult<KeelDate> instant = calendar.makeUtcGregorianFoundationDate(in[index]);
    KeelResult<Components> read =
        calendar.makeUtcTimezoneDiscreteDateTimeComponents(instant.value());
    benchmark::DoNotOptimize(read);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_UtcRoundTrip);

void BM_Icu_UtcRoundTrip(benchmark::State& state) { icuRoundTrip(state, "UTC", allYears()); }
BENCHMARK(BM_Icu_UtcRoundTrip);

QUANDA_BENCH_RATIO("UTC components -> instant -> components vs ICU's proleptic calendar",
                   "BM_Quanda_UtcRoundTrip", "BM_Icu_UtcRoundTrip",
                   QuandaBenchGoal::atLeastFaster(10.0));

// ---- A named zone ------------------------------------------------------------------------------

void BM_Quanda_ZoneRoundTrip(benchmark::State& state) {
  const std::vector<Components>& in = recentYears();
  QuandaFoundationCalendarAdapter& calendar = adapter();
  std::size_t index = 0;
  for (auto _ : state) {
    const KeelResult<KeelDate> instant = calendar.makeGregorianFoundationDate(in[index], zoneName);
    KeelResult<Components> read =
        calendar.makeTimezoneDiscreteDateTimeComponents(instant.value(), zoneName);
    benchmark::DoNotOptimize(read);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_ZoneRoundTrip);

void BM_Icu_ZoneRoundTrip(benchmark::State& state) { icuRoundTrip(state, zoneName, recentYears()); }
BENCHMARK(BM_Icu_ZoneRoundTrip);

void BM_Absl_ZoneRoundTrip(benchmark::State& state) {
  const std::vector<Components>& in = recentYears();
  absl::TimeZone zone;
  if (!absl::LoadTimeZone(zoneName, &zone)) state.SkipWithError("no zone");
  std::size_t index = 0;
  for (auto _ : state) {
    const Components& c = in[index];
    const absl::Time instant = absl::FromCivil(
        absl::CivilSecond(c.year, c.month, c.day, c.hour, c.minute, c.second), zone);
    const absl::CivilSecond read = absl::ToCivilSecond(instant, zone);
    benchmark::DoNotOptimize(read);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Absl_ZoneRoundTrip);

QUANDA_BENCH_RATIO("named-zone round trip vs ICU's calendar", "BM_Quanda_ZoneRoundTrip",
                   "BM_Icu_ZoneRoundTrip", QuandaBenchGoal::atLeastFaster(3.0));
QUANDA_BENCH_RATIO("named-zone round trip vs absl::FromCivil / ToCivilSecond",
                   "BM_Quanda_ZoneRoundTrip", "BM_Absl_ZoneRoundTrip",
                   QuandaBenchGoal::atMost(1.5));

// ---- Formatting ------------------------------------------------------------------------------

void BM_Quanda_FormatDate(benchmark::State& state) {
  const std::vector<Components>& in = allYears();
  QuandaFoundationCalendarAdapter& calendar = adapter();
  std::size_t index = 0;
  for (auto _ : state) {
    const Components& c = in[index];
    KeelResult<std::string> text =
        calendar.format(QuandaAbstractDate::Components{c.year, c.month, c.day},
                        QuandaDateFormatStyle::medium, "en_US");
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_FormatDate);

// ICU's warm formatter given the instant: what the adapter adds is the conversion of the
// components and the cache look-up.
void BM_Icu_FormatDate(benchmark::State& state) {
  const std::vector<Components>& in = allYears();
  QuandaFoundationCalendarAdapter& calendar = adapter();
  std::vector<double> instants;
  for (const Components& c : in) {
    instants.push_back(
        calendar
            .makeUtcGregorianFoundationDate(QuandaAbstractDate::Components{c.year, c.month, c.day})
            .value()
            .time_since_epoch()
            .count() *
        1000);
  }
  const std::unique_ptr<icu::DateFormat> formatter =
      icuDateFormatter(icu::DateFormat::kMedium, icu::DateFormat::kNone, "en_US");
  icuFormatEach(state, *formatter, instants);
}
BENCHMARK(BM_Icu_FormatDate);

QUANDA_BENCH_RATIO("format(abstractDateComponents:dateStyle:) vs ICU's warm DateFormat",
                   "BM_Quanda_FormatDate", "BM_Icu_FormatDate", QuandaBenchGoal::atMost(1.2));

const std::vector<double>& durations() {
  static const std::vector<double> shared = [] {
    std::mt19937_64 random(11);
    std::uniform_int_distribution<int> seconds(3600, 86399);
    std::vector<double> all;
    for (std::size_t index = 0; index < inputCount; ++index) all.push_back(seconds(random));
    return all;
  }();
  return shared;
}

void BM_Quanda_FormatDuration(benchmark::State& state) {
  const std::vector<double>& in = durations();
  QuandaFoundationCalendarAdapter& calendar = adapter();
  std::size_t index = 0;
  for (auto _ : state) {
    KeelResult<QuandaFormattedDuration> text =
        calendar.format(in[index], "en_US", QuandaDurationFormatStyle::shortDelta);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Quanda_FormatDuration);

// The same hours, minutes and seconds through ICU's one-call duration formatting.
void BM_Icu_FormatMeasures(benchmark::State& state) {
  const std::vector<double>& in = durations();
  UErrorCode status = U_ZERO_ERROR;
  const icu::MeasureFormat formatter(icu::Locale("en_US"), UMEASFMT_WIDTH_NARROW, status);
  std::size_t index = 0;
  for (auto _ : state) {
    const auto seconds = static_cast<std::int64_t>(in[index]);
    const icu::Measure measures[] = {
        icu::Measure(seconds / 3600, icu::MeasureUnit::createHour(status), status),
        icu::Measure(seconds / 60 % 60, icu::MeasureUnit::createMinute(status), status),
        icu::Measure(seconds % 60, icu::MeasureUnit::createSecond(status), status)};
    icu::UnicodeString text;
    icu::FieldPosition position;
    formatter.formatMeasures(measures, 3, text, position, status);
    std::string utf8;
    text.toUTF8String(utf8);
    benchmark::DoNotOptimize(utf8);
    index = (index + 1) % inputCount;
  }
}
BENCHMARK(BM_Icu_FormatMeasures);

QUANDA_BENCH_RATIO("format(duration:) vs ICU's MeasureFormat::formatMeasures",
                   "BM_Quanda_FormatDuration", "BM_Icu_FormatMeasures",
                   QuandaBenchGoal::atLeastFaster(10.0));

}  // namespace
