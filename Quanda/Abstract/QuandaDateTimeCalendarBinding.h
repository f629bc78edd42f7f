// The operations that the natural and the real date-time make through a calendar adapter,
// written once for both kinds.
//
// A date-time meets zones, real instants and locales only through the adapter its caller passes;
// it never keeps one. The public types inherit quanda_detail::DateTimeCalendarBinding<DateTime,
// Traits> privately beside their core (QuandaDateTimeCore.h) and re-export its members one by
// one: the natural date-time all of them, the real one those without a named zone. The binding
// holds no data. Callers never name anything in this header directly.
//
// Every failure is the adapter's error, or the validation's for components read back, wrapped
// once with the operation's signature text, the type's path and the operation's arguments.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelDate.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/QuandaDateTimeFormatStyle.h"
#include "Quanda/Formatting/QuandaKnownDateTimeFormatTemplate.h"
#include "Quanda/QuandaLogicTimeInterval.h"

class QuandaCalendarAdapting;
class QuandaTimeProviding;

namespace quanda_detail {

template <class DateTime, class Traits>
class DateTimeCalendarBinding {
 public:
  using Adapter = QuandaCalendarAdapting;

  // The instant of this date-time in the device's zone, in UTC or in a named zone. A failure
  // names "dateTime" (and "timezoneIdentifier").
  KeelResult<KeelDate> makeLocalFoundationDate(Adapter& calendarAdapter) const;
  KeelResult<KeelDate> makeUtcFoundationDate(Adapter& calendarAdapter) const;
  KeelResult<KeelDate> makeFoundationDate(Adapter& calendarAdapter,
                                          std::string_view timezoneIdentifier) const;
  // The same instant on the logic clock.
  KeelResult<QuandaLogicTimeInterval> makeLocalLogicTimeInterval(Adapter& calendarAdapter) const;
  KeelResult<QuandaLogicTimeInterval> makeUtcLogicTimeInterval(Adapter& calendarAdapter) const;

  // The date-time written in the locale of the override or else the device's, in UTC, so that
  // the text never depends on the device's zone. A failure names "dateTime", "dateTimeStyle" (or
  // "formatStringTemplate"), "calendarAdapter" and "localeIdentifierOverride".
  KeelResult<std::string> formatWith(
      QuandaDateTimeFormatStyle dateTimeStyle, Adapter& calendarAdapter,
      std::optional<std::string_view> localeIdentifierOverride = std::nullopt) const;
  KeelResult<std::string> formatWith(
      QuandaKnownDateTimeFormatTemplate formatStringTemplate, Adapter& calendarAdapter,
      std::optional<std::string_view> localeIdentifierOverride = std::nullopt) const;

  // The wall time of an instant in the zone. A failure names "foundationDate" (or
  // "logicTimeInterval"), "calendarAdapter", "timezoneIdentifier" for a named zone, and
  // "components" when the wall time read is not a valid date-time (an instant outside the years
  // 1...9999 there).
  static KeelResult<DateTime> makeUsingLocalTimezone(KeelDate foundationDate,
                                                     Adapter& calendarAdapter);
  static KeelResult<DateTime> makeUsingUtcTimezone(KeelDate foundationDate,
                                                   Adapter& calendarAdapter);
  static KeelResult<DateTime> makeUsingTimezone(KeelDate foundationDate, Adapter& calendarAdapter,
                                                std::string_view timezoneIdentifier);
  static KeelResult<DateTime> makeUsingLocalTimezone(QuandaLogicTimeInterval logicTimeInterval,
                                                     Adapter& calendarAdapter);
  static KeelResult<DateTime> makeUsingUtcTimezone(QuandaLogicTimeInterval logicTimeInterval,
                                                   Adapter& calendarAdapter);
  static KeelResult<DateTime> makeUsingTimezone(QuandaLogicTimeInterval logicTimeInterval,
                                                Adapter& calendarAdapter,
                                                std::string_view timezoneIdentifier);
  // The wall time now: the provider's current logic date read in the zone. A failure names
  // "currentLogicDate", "calendarAdapter" (and "timezoneIdentifier"), and "components" as above.
  static KeelResult<DateTime> makeFromCurrentDateUsingLocalTimezone(
      Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider);
  static KeelResult<DateTime> makeFromCurrentDateUsingTimezone(
      Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider,
      std::string_view timezoneIdentifier);

 private:
  const DateTime& self() const noexcept { return static_cast<const DateTime&>(*this); }
};

}  // namespace quanda_detail
