// QuandaCalendarExport: a rule's occurrences written as an iCalendar file (RFC 5545), for
// calendar applications to import.
//
// The file is one VCALENDAR (VERSION:2.0, a PRODID) holding the zone's VTIMEZONE and one VEVENT.
// The event starts at the rule's first date at the time of day, as a wall time in the zone
// (DTSTART;TZID=Europe/Berlin:20240126T093000), and repeats by the rule's RRULE, its RDATE
// additions and its EXDATE exclusions, each a wall time of the same zone; a date UNTIL in the rule
// becomes the UTC instant of that date's occurrence, as RFC 5545 wants beside a zoned DTSTART. The
// recurrence itself is given as the exported rule (QuandaRecurrenceRule: the start, the RRULE
// value, the added and the excluded dates), since which masks an RRULE can say, and how, is the
// rule's business.
//
// The VTIMEZONE lists the zone's transitions (QuandaTimezoneDatabase::transitions) from the one in
// force at the first occurrence through the `through` date's, each as a STANDARD or DAYLIGHT
// sub-component with its local onset, the offsets before and after it and its abbreviation; a
// reader takes the last one's offset for later instants. A zone that never changed gets one
// STANDARD sub-component from 1970 with its one offset. So the file says, without any tz database
// on the reading side, exactly which instants the library means up to `through`; a reader that
// knows the zone by its name will read the same instants as long as the zone's rules hold.
//
// Lines end with CRLF and are folded at 75 octets (never inside a UTF-8 sequence); text values
// (UID, SUMMARY) are escaped. DTSTAMP is the event's stamp, in UTC.
//
//   auto text = makeVCalendar(occurrences, rule, through, {.uid = "...", .stamp = now}, adapter);
//
// Fails with the adapter's error (an unknown zone) or the zone database's, wrapped once with the
// operation's signature text and arguments.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaOccurrences.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"
#include "Quanda/QuandaLogicTimeInterval.h"

class QuandaCalendarAdapting;

// What the event says besides its times. The members are initialised explicitly so that
// designated initialisers naming only some of them compile without warnings.
struct QuandaCalendarEvent {
  // The event's identifier, unique and stable across exports of the same event.
  std::string uid = {};
  // When the file was made (DTSTAMP).
  QuandaLogicTimeInterval stamp = QuandaLogicTimeInterval::zero;
  // The event's title; none when empty.
  std::string summary = {};
};

// The recurrence is the rule as QuandaRecurrenceRule::exporting gives it: its start (DTSTART),
// its RRULE value (none when empty) and the dates it adds (RDATE) and excludes (EXDATE).
KeelResult<std::string> makeVCalendar(const QuandaOccurrences& occurrences,
                                      const QuandaRecurrenceRule& recurrence,
                                      QuandaAbstractDate through, const QuandaCalendarEvent& event,
                                      QuandaCalendarAdapting& calendarAdapter);
