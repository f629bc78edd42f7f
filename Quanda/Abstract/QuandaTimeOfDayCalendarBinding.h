// The operations that the natural and the real time of day make through a calendar adapter,
// written once for both kinds.
//
// A time of day meets locales and real instants only through the adapter its caller passes; it
// never keeps one. The public types inherit quanda_detail::TimeOfDayCalendarBinding<Time, Traits>
// privately beside their core (QuandaTimeOfDayCore.h) and re-export its members one by one. The
// binding holds no data. Callers never name anything in this header directly.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelDate.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/QuandaKnownTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaTimeFormatStyle.h"

class QuandaCalendarAdapting;
class QuandaTimeProviding;

namespace quanda_detail {

template <class Time, class Traits>
class TimeOfDayCalendarBinding {
 public:
  // The time written in the locale of the override or else the device's, as the time of a fixed
  // date in UTC, so that no zone or daylight-saving change alters it. A failure is the adapter's,
  // wrapped with "timeOfDay", "timeStyle" (or "formatStringTemplate") and "calendarAdapter".
  KeelResult<std::string> formatWith(
      QuandaTimeFormatStyle timeStyle, QuandaCalendarAdapting& calendarAdapter,
      std::optional<std::string_view> localeIdentifierOverride = std::nullopt) const;
  KeelResult<std::string> formatWith(
      QuandaKnownTimeFormatTemplate formatStringTemplate, QuandaCalendarAdapting& calendarAdapter,
      std::optional<std::string_view> localeIdentifierOverride = std::nullopt) const;

  // The time of day of an instant in the device's zone or in UTC. A failure names
  // "foundationDate" and "calendarAdapter".
  static KeelResult<Time> makeUsingLocalTimezone(KeelDate foundationDate,
                                                 QuandaCalendarAdapting& calendarAdapter);
  static KeelResult<Time> makeUsingUtcTimezone(KeelDate foundationDate,
                                               QuandaCalendarAdapting& calendarAdapter);
  // The time of day now in the device's zone: the provider's current logic date read there. A
  // failure names "timeProvider", "currentLogicDate", "calendarAdapter", and "components" when
  // the time read is not valid.
  static KeelResult<Time> makeFromCurrentDateUsingLocalTimezone(
      QuandaCalendarAdapting& calendarAdapter, const QuandaTimeProviding& timeProvider);

 private:
  const Time& self() const noexcept { return static_cast<const Time&>(*this); }
};

}  // namespace quanda_detail
