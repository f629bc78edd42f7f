#include "Quanda/FoundationAdapting/QuandaSystemDeviceSettings.h"

#include <unicode/locid.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"

namespace {

// The zone name inside a path of the zoneinfo tree ("/usr/share/zoneinfo/Europe/Berlin", also
// under its "posix/" and "right/" copies); nothing when the path names no known zone.
std::optional<std::string> zoneOfPath(std::string_view path) {
  constexpr std::string_view tree = "zoneinfo/";
  const std::size_t found = path.rfind(tree);
  if (found == std::string_view::npos) return std::nullopt;
  std::string_view name = path.substr(found + tree.size());
  for (std::string_view copy : {"posix/", "right/"}) {
    if (name.starts_with(copy)) name.remove_prefix(copy.size());
  }
  if (!QuandaTimezoneDatabase::contains(name)) return std::nullopt;
  return std::string(name);
}

// The host's zone without TZ: /etc/timezone, then the target of /etc/localtime, then UTC.
std::string hostTimezoneIdentifier() {
  std::ifstream file("/etc/timezone");
  std::string line;
  if (std::getline(file, line)) {
    const std::size_t end = line.find_last_not_of(" \t\r");
    line.erase(end == std::string::npos ? 0 : end + 1);
    if (QuandaTimezoneDatabase::contains(line)) return line;
  }
  std::array<char, 4096> target{};
  const ssize_t length = ::readlink("/etc/localtime", target.data(), target.size() - 1);
  if (length > 0) {
    if (auto zone = zoneOfPath(std::string_view(target.data(), static_cast<std::size_t>(length)))) {
      return *zone;
    }
  }
  return "UTC";
}

}  // namespace

std::string_view QuandaSystemDeviceSettings::currentLocaleIdentifier() const {
  return icu::Locale::getDefault().getName();
}

std::string_view QuandaSystemDeviceSettings::currentTimezoneIdentifier() const {
  const char* environment = std::getenv("TZ");
  const bool unchanged =
      resolved_ && (environment == nullptr ? !environmentTimezone_
                                           : environmentTimezone_ == std::string_view(environment));
  if (unchanged) return timezoneIdentifier_;
  environmentTimezone_ =
      environment == nullptr ? std::nullopt : std::optional<std::string>(environment);
  std::string_view name = environment == nullptr ? std::string_view() : environment;
  if (name.starts_with(':')) name.remove_prefix(1);
  if (QuandaTimezoneDatabase::contains(name)) {
    timezoneIdentifier_ = name;
  } else if (auto zone = zoneOfPath(name); zone && name.starts_with('/')) {
    timezoneIdentifier_ = *zone;
  } else {
    timezoneIdentifier_ = hostTimezoneIdentifier();
  }
  resolved_ = true;
  return timezoneIdentifier_;
}

std::optional<QuandaDayOfGregorianWeek> QuandaSystemDeviceSettings::firstDayOfWeekOverride() const {
  UErrorCode status = U_ZERO_ERROR;
  char value[16] = {};
  const int32_t length =
      icu::Locale::getDefault().getKeywordValue("fw", value, sizeof value, status);
  if (U_FAILURE(status) || length <= 0) return std::nullopt;
  constexpr std::array<std::string_view, 7> names{"mon", "tue", "wed", "thu", "fri", "sat", "sun"};
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (names[index] == value) return makeDayOfGregorianWeek(static_cast<std::uint8_t>(index));
  }
  return std::nullopt;
}
