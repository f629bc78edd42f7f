#include "tools/quanda/QuandaDevice.h"

#include <unicode/locid.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <mutex>
#include <string_view>

#include "Quanda/FoundationAdapting/QuandaFixedDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaSystemDeviceSettings.h"
#include "Quanda/QuandaMockTimeProvider.h"
#include "tools/quanda/QuandaOptions.h"

void pinQuandaDefaultLocale() {
  static std::once_flag pinned;
  std::call_once(pinned, [] {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale("en_US_POSIX"), status);
  });
}

std::string quandaEnvironmentLocale() {
  for (const char* variable : {"LC_ALL", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    std::string_view identifier(value);
    identifier = identifier.substr(0, identifier.find_first_of(".@"));
    if (identifier.empty() || identifier == "C" || identifier == "POSIX") break;
    return std::string(identifier);
  }
  return "en_US_POSIX";
}

CLI::Option* addQuandaLocaleOption(CLI::App& command, std::string& localeIdentifier) {
  return command
      .add_option("--locale", localeIdentifier,
                  "The locale to write in, such as de_DE (LC_ALL or LANG by default)")
      ->type_name("ID");
}

std::string quandaLocale(const std::string& localeIdentifier) {
  return localeIdentifier.empty() ? quandaEnvironmentLocale() : localeIdentifier;
}

CLI::Option* addQuandaZoneOption(CLI::App& command, std::string& timezoneIdentifier) {
  return command
      .add_option("--zone", timezoneIdentifier,
                  "The zone, such as Europe/Berlin (TZ or the system's by default)")
      ->type_name("ZONE");
}

std::shared_ptr<QuandaFoundationCalendarAdapter> makeQuandaAdapter(
    const std::string& localeIdentifier, const std::string& timezoneIdentifier,
    std::optional<QuandaDayOfGregorianWeek> firstDayOfWeek) {
  const QuandaSystemDeviceSettings system;
  return std::make_shared<QuandaFoundationCalendarAdapter>(
      std::make_shared<QuandaFixedDeviceSettings>(
          quandaLocale(localeIdentifier),
          timezoneIdentifier.empty() ? std::string(system.currentTimezoneIdentifier())
                                     : timezoneIdentifier,
          firstDayOfWeek));
}

std::shared_ptr<QuandaTimeProviding> makeQuandaTimeProvider() {
  auto provider = std::make_shared<QuandaMockTimeProvider>();
  const char* pinned = std::getenv("QUANDA_NOW");
  if (pinned == nullptr || *pinned == '\0') return provider;
  const std::string text(pinned);
  if (const std::optional<double> seconds = readQuandaNumber<double>(text)) {
    provider->setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(*seconds));
    return provider;
  }
  // A UTC wall time, read by the library's own parser and placed by its adapter.
  const auto misuse = [&] {
    return CLI::ValidationError("QUANDA_NOW",
                                "expected yyyy-mm-ddThh:mm:ssZ or seconds since 1970, not " + text);
  };
  if (!text.ends_with('Z')) throw misuse();
  const auto wallTime =
      QuandaAbstractNaturalDateTime::makeFromRfc3339String(text.substr(0, text.size() - 1));
  if (!wallTime) throw misuse();
  QuandaFoundationCalendarAdapter adapter;
  const auto instant = wallTime.value().makeUtcFoundationDate(adapter);
  if (!instant) throw misuse();
  provider->setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(instant.value()));
  return provider;
}

KeelResult<QuandaAbstractNaturalDateTime> quandaNow(QuandaFoundationCalendarAdapter& adapter,
                                                    const QuandaTimeProviding& provider) {
  // A pinned instant comes from outside, so it is checked before it is read.
  const KeelResult<KeelDate> checked = adapter.checkedFoundationDate(
      provider.currentLogicDate(adapter), adapter.currentTimezoneIdentifier());
  if (!checked) return checked.error();
  return provider.currentLocalLogicNaturalDateTime(adapter);
}

bool quandaColours(const std::ostream& out) {
  const char* noColour = std::getenv("NO_COLOR");
  return &out == &std::cout && ::isatty(STDOUT_FILENO) == 1 &&
         (noColour == nullptr || *noColour == '\0');
}

std::string quandaOffsetText(std::int32_t secondsFromGMT) {
  const std::int32_t minutes = std::abs(secondsFromGMT) / 60;
  const auto twoDigits = [](std::int32_t n) { return (n < 10 ? "0" : "") + std::to_string(n); };
  return (secondsFromGMT < 0 ? "-" : "+") + twoDigits(minutes / 60) + ":" + twoDigits(minutes % 60);
}
