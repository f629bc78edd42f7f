#include "tools/quanda/QuandaDevice.h"

#include <unicode/locid.h>

#include <cstdlib>
#include <mutex>
#include <string_view>

#include "Quanda/FoundationAdapting/QuandaFixedDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaSystemDeviceSettings.h"

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

std::shared_ptr<QuandaFoundationCalendarAdapter> makeQuandaAdapter(
    const std::string& localeIdentifier) {
  const QuandaSystemDeviceSettings system;
  return std::make_shared<QuandaFoundationCalendarAdapter>(
      std::make_shared<QuandaFixedDeviceSettings>(quandaLocale(localeIdentifier),
                                                  std::string(system.currentTimezoneIdentifier())));
}
