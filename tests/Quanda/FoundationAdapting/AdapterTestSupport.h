// Helpers shared by the calendar adapter's tests: an adapter over settings the test controls,
// instants from seconds, and component records written briefly.
#pragma once

#include <memory>
#include <string>

#include "Quanda/FoundationAdapting/QuandaFixedDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"

inline constexpr std::string_view adapterPath =
    "Quanda/Foundation Adapting/QuandaFoundationCalendarAdapter";

// An adapter and the device settings it reads, which the test may change between calls.
struct TestAdapter {
  std::shared_ptr<QuandaFixedDeviceSettings> device;
  QuandaFoundationCalendarAdapter adapter;

  explicit TestAdapter(std::string localeIdentifier = "en_US",
                       std::string timezoneIdentifier = "UTC")
      : device(std::make_shared<QuandaFixedDeviceSettings>(std::move(localeIdentifier),
                                                           std::move(timezoneIdentifier))),
        adapter(device) {}
};

inline KeelDate instant(double secondsSince1970) {
  return KeelDate(KeelDate::duration(secondsSince1970));
}
inline double seconds(KeelDate date) { return date.time_since_epoch().count(); }

using DateComponents = QuandaAbstractDate::Components;
using NaturalDateTimeComponents = QuandaAbstractNaturalDateTime::Components;
using RealDateTimeComponents = QuandaAbstractRealDateTime::Components;
using NaturalTimeComponents = QuandaAbstractNaturalTimeOfDay::Components;
using RealTimeComponents = QuandaAbstractRealTimeOfDay::Components;

inline NaturalDateTimeComponents dateTime(int year, int month, int day, int hour = 0,
                                          int minute = 0, int second = 0) {
  return {.day = static_cast<std::uint8_t>(day),
          .hour = static_cast<std::uint8_t>(hour),
          .minute = static_cast<std::uint8_t>(minute),
          .month = static_cast<std::uint8_t>(month),
          .second = static_cast<std::uint8_t>(second),
          .year = static_cast<std::uint16_t>(year)};
}
inline RealDateTimeComponents realDateTime(int year, int month, int day, int hour, int minute,
                                           double second) {
  return {.day = static_cast<std::uint8_t>(day),
          .hour = static_cast<std::uint8_t>(hour),
          .minute = static_cast<std::uint8_t>(minute),
          .month = static_cast<std::uint8_t>(month),
          .second = second,
          .year = static_cast<std::uint16_t>(year)};
}
