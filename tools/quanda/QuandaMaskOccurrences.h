// What `quanda mask --at` prints: the occurrences of a rule at a time of day in a zone, as
// instants (one line each: the wall clock, its weekday, the same instant in UTC and the zone's
// offset), or as an iCalendar file.
//
//   quanda mask 'last fri' --at 09:30 --zone Europe/Berlin --count 6
//   2024-01-26T09:30:00  Friday  2024-01-26T08:30:00Z  +01:00
//   ...
//
// The library finds and places the occurrences (QuandaOccurrences), says the rule as RRULE from
// the first listed date (QuandaRecurrenceRule::exporting, which refuses what no RRULE can say) and
// writes the file (makeVCalendar, its VTIMEZONE through the last listed date); the program only
// reads the command line and lays out the lines.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"
#include "tools/quanda/QuandaCommand.h"

struct QuandaMaskOccurrencesRequest {
  std::shared_ptr<const QuandaDateMasking> mask;
  // The rule as typed, the event's title in a calendar file.
  std::string rule;
  QuandaDayOfGregorianWeek firstDay = QuandaDayOfGregorianWeek::monday;
  // "hh:mm:ss", or "hh:mm" at second 0.
  std::string at;
  // A name of the system's tz database, "utc", or "local" (the system's zone).
  std::string zone = "local";
  // The occurrences of the matching dates after this date, or before it (latest first), or
  // else those after now.
  std::optional<QuandaAbstractDate> after = {};
  std::optional<QuandaAbstractDate> before = {};
  std::uint32_t count = 10;
  bool ics = false;
};

QuandaOutcome printQuandaMaskOccurrences(const QuandaMaskOccurrencesRequest& request,
                                         std::ostream& out);
