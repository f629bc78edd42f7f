// QuandaDevice: the device the quanda program describes to the library, and the locale it writes
// in.
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
#pragma once

#include <CLI/App.hpp>
#include <memory>
#include <string>

#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"

// Sets ICU's default locale to en_US_POSIX, once per process.
void pinQuandaDefaultLocale();

// The environment's locale identifier: LC_ALL, else LANG, with its codeset and modifier dropped
// ("de_DE.UTF-8" is "de_DE"); "en_US_POSIX" when neither names one ("C", "POSIX", unset, empty).
std::string quandaEnvironmentLocale();

// Declares --locale, stored in localeIdentifier; empty when absent.
CLI::Option* addQuandaLocaleOption(CLI::App& command, std::string& localeIdentifier);

// An adapter whose device has this locale (the environment's when empty) and the system's zone.
std::shared_ptr<QuandaFoundationCalendarAdapter> makeQuandaAdapter(
    const std::string& localeIdentifier);

// The locale identifier the program writes in: this one, or the environment's when empty.
std::string quandaLocale(const std::string& localeIdentifier);
