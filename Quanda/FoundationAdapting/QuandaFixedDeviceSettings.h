// QuandaFixedDeviceSettings: device settings that hold what they are given, for tests and for
// apps that manage their own locale, zone and week start.
//
//   auto settings = std::make_shared<QuandaFixedDeviceSettings>("de_DE", "Europe/Berlin");
//   QuandaFoundationCalendarAdapter adapter(settings);
//   settings->setTimezoneIdentifier("Asia/Tokyo");  // the adapter's next call sees Tokyo
//
// Nothing is checked when a value is set: an unknown zone identifier makes the adapter's local
// operations fail with its usual error, as a device with a broken zone setting would.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Quanda/FoundationAdapting/QuandaDeviceSettings.h"

class QuandaFixedDeviceSettings final : public QuandaDeviceSettings {
 public:
  QuandaFixedDeviceSettings(std::string localeIdentifier, std::string timezoneIdentifier,
                            std::optional<QuandaDayOfGregorianWeek> firstDayOfWeekOverride = {})
      : localeIdentifier_(std::move(localeIdentifier)),
        timezoneIdentifier_(std::move(timezoneIdentifier)),
        firstDayOfWeekOverride_(firstDayOfWeekOverride) {}

  std::string_view currentLocaleIdentifier() const override { return localeIdentifier_; }
  std::string_view currentTimezoneIdentifier() const override { return timezoneIdentifier_; }
  std::optional<QuandaDayOfGregorianWeek> firstDayOfWeekOverride() const override {
    return firstDayOfWeekOverride_;
  }

  void setLocaleIdentifier(std::string identifier) { localeIdentifier_ = std::move(identifier); }
  void setTimezoneIdentifier(std::string identifier) {
    timezoneIdentifier_ = std::move(identifier);
  }
  void setFirstDayOfWeekOverride(std::optional<QuandaDayOfGregorianWeek> day) {
    firstDayOfWeekOverride_ = day;
  }

 private:
  std::string localeIdentifier_;
  std::string timezoneIdentifier_;
  std::optional<QuandaDayOfGregorianWeek> firstDayOfWeekOverride_;
};
