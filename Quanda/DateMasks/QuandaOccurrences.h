// QuandaOccurrences: the instants of a date mask at a time of day in a time zone.
//
// A date mask and a time of day belong to no zone: "the last Friday of the month at 09:30" is a
// rule of the calendar and the clock. Placed in a zone, each matching date's wall time becomes a
// real instant, and this value (the mask, the time of day, the zone or else the device's, the
// first day of the week the mask's week cycles count from) finds those instants forward and
// backward as the mask finds its dates:
//
//   QuandaOccurrences daily(everyDay, QuandaAbstractNaturalTimeOfDay::make(2, 30, 0).value(),
//                           "Europe/Berlin");
//   daily.nextAfter(instant, adapter);                  // the first occurrence after the instant
//   daily.next(6, QuandaAbstractDate(...), adapter);    // the occurrences of the next 6 dates
//
// Zones, like everything real, are reached only through the calendar adapter the caller passes
// (QuandaCalendarAdapting), so the instants follow its daylight-saving policy: a wall time the
// zone skips moves forward by the gap (02:30 on the night Berlin springs forward is 03:30 CEST),
// and one it repeats is the earlier instant (02:30 on the night it falls back is 02:30 CEST). Two
// dates can therefore share an instant where a zone skips a whole day (Pacific/Apia, 2011-12-30
// at 09:30 is 2011-12-31 at 09:30): the searches by instant name it once, by the earlier date,
// those by date once per date. The instants never go backward as the dates go forward.
//
// The searches by date are the mask's (nextMatch, previousMatch) with each date placed; the
// searches by instant read the instant's wall date in the zone, then place the matching dates
// around it until one lies strictly after (before) the instant, a few adapter calls each.
//
// Every failure is the adapter's (an unknown zone: "Failed to create timezone"), or the
// validation's for a wall time read outside the years 1...9999, wrapped once with the
// operation's signature text and arguments. A value holds its mask through a shared pointer, so
// copies are cheap and share it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"
#include "Quanda/DateMasks/QuandaOccurrence.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"
#include "Quanda/QuandaLogicTimeInterval.h"

class QuandaCalendarAdapting;

class QuandaOccurrences {
 public:
  using Adapter = QuandaCalendarAdapting;

  // A null mask is a programming error. Without a zone identifier the occurrences are in the
  // device's zone, as the adapter tells it at each call.
  QuandaOccurrences(std::shared_ptr<const QuandaDateMasking> mask,
                    QuandaAbstractNaturalTimeOfDay timeOfDay,
                    std::optional<std::string> timezoneIdentifier = std::nullopt,
                    QuandaDayOfGregorianWeek firstDayOfWeek = QuandaDayOfGregorianWeek::monday);

  const QuandaDateMasking& mask() const noexcept { return *mask_; }
  const std::shared_ptr<const QuandaDateMasking>& sharedMask() const noexcept { return mask_; }
  QuandaAbstractNaturalTimeOfDay timeOfDay() const noexcept { return timeOfDay_; }
  const std::optional<std::string>& timezoneIdentifier() const noexcept {
    return timezoneIdentifier_;
  }
  QuandaDayOfGregorianWeek firstDayOfWeek() const noexcept { return firstDayOfWeek_; }

  // The zone the occurrences are in: the identifier given, else the device's.
  std::string resolvedTimezoneIdentifier(Adapter& calendarAdapter) const;

  // The time of day on this date in the zone, whether or not the mask matches it.
  KeelResult<QuandaOccurrence> occurrence(QuandaAbstractDate date, Adapter& calendarAdapter) const;

  // The first occurrence strictly after the instant, or nothing up to 9999-12-31.
  KeelResult<std::optional<QuandaOccurrence>> nextAfter(QuandaLogicTimeInterval logicTimeInterval,
                                                        Adapter& calendarAdapter) const;
  // The last occurrence strictly before the instant, or nothing down to 0001-01-01.
  KeelResult<std::optional<QuandaOccurrence>> previousBefore(
      QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) const;
  // The occurrence of the first matching date strictly after the date (the last strictly before).
  KeelResult<std::optional<QuandaOccurrence>> nextAfter(QuandaAbstractDate date,
                                                        Adapter& calendarAdapter) const;
  KeelResult<std::optional<QuandaOccurrence>> previousBefore(QuandaAbstractDate date,
                                                             Adapter& calendarAdapter) const;

  // Up to `count` occurrences, each the next after the one before it (next), or the previous
  // before it (previous, latest first): from an instant, each instant once; from a date, one per
  // matching date. Fewer when the calendar ends first.
  KeelResult<std::vector<QuandaOccurrence>> next(std::size_t count,
                                                 QuandaLogicTimeInterval logicTimeInterval,
                                                 Adapter& calendarAdapter) const;
  KeelResult<std::vector<QuandaOccurrence>> next(std::size_t count, QuandaAbstractDate date,
                                                 Adapter& calendarAdapter) const;
  KeelResult<std::vector<QuandaOccurrence>> previous(std::size_t count,
                                                     QuandaLogicTimeInterval logicTimeInterval,
                                                     Adapter& calendarAdapter) const;
  KeelResult<std::vector<QuandaOccurrence>> previous(std::size_t count, QuandaAbstractDate date,
                                                     Adapter& calendarAdapter) const;

  // "QuandaOccurrences(mask: daysOfWeek [...], timeOfDay: 09:30:00, timezoneIdentifier:
  // Europe/Berlin, firstDayOfWeek: monday)", as errors name the value; "nil" for the device's zone.
  std::string description() const;

 private:
  enum class Direction { forward, backward };

  // The zone's wall clock at an instant, and a date's occurrence: the adapter's errors as they
  // are, for the public operations to wrap once.
  KeelResult<QuandaAbstractNaturalDateTime> wallClock(QuandaLogicTimeInterval instant,
                                                      Adapter& calendarAdapter) const;
  KeelResult<QuandaOccurrence> place(QuandaAbstractDate date, Adapter& calendarAdapter) const;
  KeelResult<std::optional<QuandaOccurrence>> beside(QuandaAbstractDate date, Direction direction,
                                                     Adapter& calendarAdapter) const;
  KeelResult<std::optional<QuandaOccurrence>> beside(QuandaLogicTimeInterval instant,
                                                     Direction direction,
                                                     Adapter& calendarAdapter) const;
  template <class Position>
  KeelResult<std::vector<QuandaOccurrence>> list(std::size_t count, Position start,
                                                 Direction direction,
                                                 Adapter& calendarAdapter) const;

  std::shared_ptr<const QuandaDateMasking> mask_;
  QuandaAbstractNaturalTimeOfDay timeOfDay_;
  std::optional<std::string> timezoneIdentifier_;
  QuandaDayOfGregorianWeek firstDayOfWeek_;
};
