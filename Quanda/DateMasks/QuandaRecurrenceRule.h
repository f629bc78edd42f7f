// QuandaRecurrenceRule: a date mask as calendars exchange recurrences (RFC 5545: a DTSTART, one
// RRULE, and RDATE and EXDATE lines), and such a rule read back into a date mask.
//
// Exporting writes the mask's dates from a start on, exactly: DTSTART is the first match on or
// after the start, the RRULE and its RDATE and EXDATE lines expand to the mask's dates from
// there on and to no other. Nothing is approximated: a mask outside the grammar below is refused
// with "Date mask not expressible as a recurrence rule", naming the part that cannot be said and
// why; one with no match from the start with "Date mask has no occurrence".
//
// clang-format off
//   The exportable masks: all of (each part at most once; a mask alone is all of one)
//     everyDay                                  nothing (the rest of the rule)
//     daysOfWeek                                BYDAY=MO,FR
//     daysOfMonth / reverseDaysOfMonth          BYMONTHDAY=1,15 / BYMONTHDAY=-1 (one of them)
//     weekdaysOfMonth / reverseWeekdaysOfMonth  BYDAY=2TU / BYDAY=-1FR (one of them, not beside
//                                               daysOfWeek)
//     monthsOfYear                              BYMONTH=3
//     dateRange                                 UNTIL (its start lies before DTSTART or is it)
//     one cycle, its pattern one entry on then the rest off:
//       dayCycle                                FREQ=DAILY;INTERVAL=n (no weekday of the month)
//       weekCycle / daysOfWeeks                 FREQ=WEEKLY;INTERVAL=n;BYDAY=... (weeks begin on
//                                               the first day of the week given: WKST; no day
//                                               or weekday of the month)
//       monthCycle                              FREQ=MONTHLY;INTERVAL=n
//     not (dateRange or dateRanges)             EXDATE: the rule's dates inside them
//   any of (such an all of, dateRange or dateRanges ...)
//                                               RDATE: the ranges' dates the rule misses
//   Without a cycle the frequency is the coarsest the parts need: MONTHLY with a day or weekday
//   of the month, WEEKLY with days of the week, else DAILY. RDATE and EXDATE together hold at
//   most 1,000 dates. Refused: weeks of the month, patterns other than one entry on, a day cycle
//   with a weekday of the month, two parts of one kind, any other not or any of.
// clang-format on
//
// Importing reads FREQ (DAILY, WEEKLY, MONTHLY, YEARLY), INTERVAL, BYDAY with and without
// ordinals, BYMONTHDAY positive and negative, BYMONTH, BYSETPOS beside a BYDAY of one weekday
// without ordinal in a monthly rule or a yearly rule of one BYMONTH (the n-th such weekday of the
// month), WKST, COUNT and UNTIL (dates), and a
// DTSTART of the date form (names and values in any case), into a mask of existing kinds: the
// cycles anchored at the start (a monthly or yearly interval becomes a month cycle), the BY parts
// as the month-local masks, and a date range from the start to UNTIL, or to the COUNT-th
// occurrence. A date DTSTART the rule does not produce is not an occurrence (the mask holds the
// rule's dates from it on). Anything else (BYHOUR, BYYEARDAY, BYWEEKNO, a date-time, an ordinal
// weekday in a yearly rule without BYMONTH, ...) is refused with "Unsupported recurrence rule part"
// naming it, and a text that is not a rule at all with "Unreadable recurrence rule"; nothing is
// ignored.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"
#include "Quanda/DateMasks/QuandaImportedRecurrence.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

// The RFC 5545 text of a date mask: DTSTART, one RRULE, and RDATE/EXDATE lines where they
// complete it.
struct QuandaRecurrenceRule {
  QuandaAbstractDate start;                    // DTSTART: the first match on or after the start
  std::string rule;                            // the RRULE value ("FREQ=WEEKLY;WKST=MO;BYDAY=MO")
  std::vector<QuandaAbstractDate> additions;   // RDATE values, increasing
  std::vector<QuandaAbstractDate> exclusions;  // EXDATE values, increasing

  // "DTSTART;VALUE=DATE:20240105\r\nRRULE:...\r\n", then the RDATE and EXDATE lines (dates
  // separated by commas, folded at 75 octets).
  std::string text() const;

  static KeelResult<QuandaRecurrenceRule> exporting(const QuandaDateMasking& mask,
                                                    QuandaAbstractDate start,
                                                    QuandaDayOfGregorianWeek firstDayOfWeek);
  // Text with an optional DTSTART line (date form) and one RRULE line, or a bare "RRULE:..." or
  // "FREQ=..." value; without a DTSTART the start given is the rule's start, and one of the two
  // is needed ("Recurrence rule without start").
  static KeelResult<QuandaImportedRecurrence> importing(std::string_view text,
                                                        std::optional<QuandaAbstractDate> start);

  friend bool operator==(const QuandaRecurrenceRule&, const QuandaRecurrenceRule&) = default;
};

// The content line folded as RFC 5545 folds it: CRLF after each run of 75 octets (fewer where a
// UTF-8 sequence would be cut) and a space before each continuation, with the closing CRLF.
std::string foldVCalendarLine(std::string_view line);
