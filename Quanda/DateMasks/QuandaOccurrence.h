// QuandaOccurrence: one occurrence of a rule at a time of day in a zone, as a real instant.
//
// A date mask says on which dates something happens and a time of day says when on those dates;
// only a zone turns the pair into instants (QuandaOccurrences). An occurrence keeps the date the
// rule matched, the wall clock at its instant, the instant on the logic clock and the zone's
// offset from UTC there. The wall clock is the one the zone shows after the calendar adapter's
// daylight-saving policy: a 02:30 that the zone skips is shown as 03:30, and a 01:30 that it
// repeats is the first of the two, so localDateTime differs from date + time of day only in a gap.
//
//   occurrence.localDateTime;       // 2024-03-31T03:30:00
//   occurrence.logicTimeInterval;   // 1711848600 (01:30:00Z)
//   occurrence.secondsFromGMT;      // 7200
//   occurrence.description();       // "2024-03-31T03:30:00+02:00 (2024-03-31T01:30:00Z)"
#pragma once

#include <cstdint>
#include <string>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/QuandaLogicTimeInterval.h"

struct QuandaOccurrence {
  // The date the rule matched, whose time of day the occurrence is.
  QuandaAbstractDate date;
  // The wall clock of the zone at the instant.
  QuandaAbstractNaturalDateTime localDateTime;
  QuandaLogicTimeInterval logicTimeInterval;
  // localDateTime - logicTimeInterval, in seconds: 7200 for CEST, -18000 for EST.
  std::int32_t secondsFromGMT = 0;

  // The wall clock with its offset (RFC 3339) and the same instant in UTC:
  // "2024-03-31T03:30:00+02:00 (2024-03-31T01:30:00Z)".
  std::string description() const;

  // The offset as RFC 3339 writes it: "+02:00", "-03:30", "+05:45", "+00:00"; an offset with
  // seconds (a zone's local mean time) keeps them: "+00:53:28".
  static std::string describeOffset(std::int32_t secondsFromGMT);

  friend bool operator==(const QuandaOccurrence&, const QuandaOccurrence&) = default;
};
