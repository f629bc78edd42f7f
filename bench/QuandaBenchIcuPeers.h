// ICU's own formatters as the benchmarks' peers, set up as the calendar adapter sets up its own:
// built once (warm), proleptic Gregorian, in UTC.
#pragma once

#include <benchmark/benchmark.h>
#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

inline std::unique_ptr<icu::DateFormat> icuDateFormatter(icu::DateFormat::EStyle dateStyle,
                                                         icu::DateFormat::EStyle timeStyle,
                                                         const char* localeIdentifier) {
  std::unique_ptr<icu::DateFormat> formatter(
      icu::DateFormat::createDateTimeInstance(dateStyle, timeStyle, icu::Locale(localeIdentifier)));
  std::unique_ptr<icu::Calendar> calendar(formatter->getCalendar()->clone());
  UErrorCode status = U_ZERO_ERROR;
  static_cast<icu::GregorianCalendar*>(calendar.get())
      ->setGregorianChange(-std::numeric_limits<double>::infinity(), status);
  calendar->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
  formatter->adoptCalendar(calendar.release());
  return formatter;
}

// ICU's warm formatter writing each instant (ms since 1970) in turn, as UTF-8, round and round.
inline void icuFormatEach(benchmark::State& state, icu::DateFormat& formatter,
                          const std::vector<double>& instants) {
  std::size_t index = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    formatter.format(instants[index], text);
    std::string utf8;
    text.toUTF8String(utf8);
    benchmark::DoNotOptimize(utf8);
    index = (index + 1) % instants.size();
  }
}
