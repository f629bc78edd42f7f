// QuandaDevice: the device the quanda program describes to the library, and the locale it writes
// in, with the clock it reads the present from.
//
// The program pins ICU's default locale to en_US_POSIX when it starts (pinQuandaDefaultLocale), so
// that the machine forms the library writes in the default locale (a real second's decimal point)
// stay machine-readable whatever the environment says. Localized text follows the user instead:
// the locale of --locale, else the environment's (LC_ALL, then LANG, without the codeset), which
// reaches the calendar adapter through fixed device settings together with the system's zone.
//
//   std::string locale;
//   addQuandaLocaleOption(command, locale);
//   ...
//   const auto adapter = makeQuandaAdapter(locale);   // the user's locale, the system's zone
//
// The present comes from the library's time provider on the wall clock, unless QUANDA_NOW pins
// it (for tests): "2024-07-14T10:00:00Z" (a UTC wall time) or seconds since 1970 ("1720951200"),
// read into the provider's logic-clock override. Text in QUANDA_NOW of neither form is a misuse.
//
// Whether to colour: only text written to standard output when it is a terminal and NO_COLOR is
// unset or empty.
#pragma once

#include <CLI/App.hpp>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"
#include "Quanda/QuandaTimeProviding.h"

// Sets ICU's default locale to en_US_POSIX, once per process.
void pinQuandaDefaultLocale();

// The environment's locale identifier: LC_ALL, else LANG, with its codeset and modifier dropped
// ("de_DE.UTF-8" is "de_DE"); "en_US_POSIX" when neither names one ("C", "POSIX", unset, empty).
std::string quandaEnvironmentLocale();

// Declares --locale, stored in localeIdentifier; empty when absent.
CLI::Option* addQuandaLocaleOption(CLI::App& command, std::string& localeIdentifier);

// Declares --zone, stored in timezoneIdentifier; empty when absent (the system's zone).
CLI::Option* addQuandaZoneOption(CLI::App& command, std::string& timezoneIdentifier);

// An adapter whose device has this locale (the environment's when empty), this zone (the
// system's when empty) and, when given, this first day of the week.
std::shared_ptr<QuandaFoundationCalendarAdapter> makeQuandaAdapter(
    const std::string& localeIdentifier, const std::string& timezoneIdentifier = "",
    std::optional<QuandaDayOfGregorianWeek> firstDayOfWeek = std::nullopt);

// The provider the program reads the present from: the wall clock, or QUANDA_NOW's instant.
std::shared_ptr<QuandaTimeProviding> makeQuandaTimeProvider();

// The present as a wall time in the adapter's zone, through the program's provider; an instant
// the zone cannot read (a pinned one past the year 9999, an unknown zone) is refused.
KeelResult<QuandaAbstractNaturalDateTime> quandaNow(
    QuandaFoundationCalendarAdapter& adapter,
    const QuandaTimeProviding& provider = *makeQuandaTimeProvider());

// Whether out is a terminal that takes colours and reverse video.
bool quandaColours(const std::ostream& out);

// "+05:45", "-03:00", "+00:00".
std::string quandaOffsetText(std::int32_t secondsFromGMT);

// The locale identifier the program writes in: this one, or the environment's when empty.
std::string quandaLocale(const std::string& localeIdentifier);
