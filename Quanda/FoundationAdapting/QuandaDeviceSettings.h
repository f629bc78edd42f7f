// QuandaDeviceSettings: what the calendar adapter needs to know about the device it runs on, its
// current locale, its current time zone and the user's choice of first weekday, read afresh at
// every call.
//
// The adapter takes one at construction. QuandaSystemDeviceSettings reads the process's own
// settings (the default locale, the host's zone); QuandaFixedDeviceSettings holds values that a
// test or an app that manages its own settings sets. Another platform implements it over its own
// services.
//
// The texts returned stay valid until the next call on the same object or a change of its
// settings; a caller that keeps one copies it. An object need not be safe to use from several
// threads at once.
#pragma once

#include <optional>
#include <string_view>

#include "Quanda/QuandaDayOfGregorianWeek.h"

class QuandaDeviceSettings {
 public:
  virtual ~QuandaDeviceSettings() = default;

  // The identifier of the device's current locale, such as "en_US" or "de_DE@calendar=buddhist".
  virtual std::string_view currentLocaleIdentifier() const = 0;
  // The identifier of the device's current time zone, a name of the system's tz database such as
  // "Europe/Berlin".
  virtual std::string_view currentTimezoneIdentifier() const = 0;
  // The weekday the user chose to start weeks on, when the user chose one; without it a
  // calendar's weeks start where its locale's do. It applies to calendars made for the current
  // locale identifier only.
  virtual std::optional<QuandaDayOfGregorianWeek> firstDayOfWeekOverride() const = 0;

 protected:
  QuandaDeviceSettings() = default;
  QuandaDeviceSettings(const QuandaDeviceSettings&) = default;
  QuandaDeviceSettings& operator=(const QuandaDeviceSettings&) = default;
};
