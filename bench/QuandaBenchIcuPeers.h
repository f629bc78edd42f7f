// ICU's own formatters as the benchmarks' peers, set up as the calendar adapter sets up its own:
// built once (warm), proleptic Gregorian, in UTC.
#pragma once

#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <limits>
#include <memory>

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
