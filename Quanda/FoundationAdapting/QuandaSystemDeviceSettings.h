// QuandaSystemDeviceSettings: the device settings of the process itself, read at every call.
//
// - The locale is the platform's default locale, which comes from the environment (LC_ALL, then
//   LC_MESSAGES, then LANG; "C" and "POSIX" give "en_US_POSIX") unless the app changed it.
// - The time zone is a name of the system's tz database, taken from the first of these that names
//   one: TZ (without its leading ':'), /etc/timezone, the zoneinfo file that /etc/localtime links
//   to; "UTC" when none does. A TZ that names no zone (empty, "Not/AZone", a POSIX rule such as
//   "CET-1CEST") is passed over. TZ is read at every call, so a change is seen at once; the two
//   files are read again only when TZ changes.
// - The first weekday is the one the default locale's "fw" keyword names ("en_US@fw=mon"), which
//   the platform's own week data does not honour; nothing when it has none.
//
// One object serves one thread at a time (it remembers the last zone it worked out); the adapter
// made with the default constructor has its own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Quanda/FoundationAdapting/QuandaDeviceSettings.h"

class QuandaSystemDeviceSettings final : public QuandaDeviceSettings {
 public:
  QuandaSystemDeviceSettings() = default;

  std::string_view currentLocaleIdentifier() const override;
  std::string_view currentTimezoneIdentifier() const override;
  std::optional<QuandaDayOfGregorianWeek> firstDayOfWeekOverride() const override;

 private:
  // The TZ value (with whether it was set) that timezoneIdentifier_ was worked out for.
  mutable std::optional<std::string> environmentTimezone_;
  mutable bool resolved_ = false;
  mutable std::string timezoneIdentifier_;
};
