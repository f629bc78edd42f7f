// A short human syntax for the common date masks, for people typing rules (the quanda program,
// a settings screen, a test).
//
// clang-format off
//   every day | daily                          QuandaEveryDayDateMask
//   weekdays | weekends | mon,wed,fri          QuandaDaysOfWeekDateMask (names or 3-letter names,
//   every monday                               singular or plural: "mondays")
//   mar | march | jun,jul,aug                  QuandaMonthsOfYearDateMask (names or 3-letter names)
//   day 15 | days 1,15                         QuandaDaysOfMonthDateMask
//   last day | days 1,2 from end               QuandaReverseDaysOfMonthDateMask
//   week 1 | weeks 2,4                         QuandaWeeksOfMonthDateMask (7-day blocks from the 1st)
//   last week | week 2 from end                QuandaReverseWeeksOfMonthDateMask
//   2nd tue | 1st,3rd mon,wed | 5th mon        QuandaWeekdaysOfMonthDateMask (1st ... 5th, first ... fifth)
//   last fri | 2nd last sun                    QuandaReverseWeekdaysOfMonthDateMask
//   every 3 days from 2024-01-01               QuandaDayCycleDateMask (on, then off for 2 days)
//   pattern 1101 from 2024-01-01               QuandaDayCycleDateMask with that on/off pattern
//   every 2 weeks from 2024-01-01              QuandaWeekCycleDateMask ("every other week" also reads)
//   week pattern 110 from 2024-01-01           QuandaWeekCycleDateMask with that pattern
//   mon,thu every 3 weeks from 2024-01-01      QuandaDaysOfWeeksDateMask
//   every other monday from 2024-01-01         QuandaDaysOfWeeksDateMask of one day
//   every 3 months from 2024-01                QuandaMonthCycleDateMask (the month of the date;
//   every 2 years from 2024-03                 a year is 12 months; "every month", "every year"
//                                              and "every other month" also read)
//   month pattern 110 from 2024-01             QuandaMonthCycleDateMask with that pattern
//   <month cycle> on 15 | on 1,15 | on last fri
//                                              all of (the cycle, the rule within the month)
//   mar 14 | feb 29 | jan,jul 1,15             all of (months of the year, days of the month)
//   <rule> of mar | 2nd sun of mar | last mon of may
//                                              all of (the rule, months of the year)
//   2024-07-01..2024-07-14 | 2024-12-25        QuandaDateRangeDateMask (one range or one day)
//   2024-07-01..2024-07-14, 2024-12-24..2024-12-26
//                                              QuandaDateRangesDateMask (an optional leading word
//                                              "dates" or "holidays" reads as well)
// clang-format on
//
// Rules combine with `not`, `and`, `or` and `except` (binding in that order, tightest first) and
// parentheses: "mon except 2024-07-01..2024-07-14" is all of (Mondays, not (the range)). Words
// are case-insensitive. A date may be a month ("2024-03", its 1st). Combinations nest at most
// maximumDateMaskNesting (64) deep, counted as the tagged archive counts them (a rule alone is 1,
// each combination around it one more), and at most as many "not"s and parentheses may be open at
// once; so every rule read archives and decodes again.
#pragma once

#include <memory>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"

// The mask a rule in the syntax above describes. A rule that cannot be read fails with "Unreadable
// date mask" naming the part that could not be read ("part": "256th") and why ("reason": "no such
// ordinal"; "the range is reversed"; "a cycle needs at least one day"), one nested too deeply with
// "Date masks nested too deeply" (arguments "syntax" and "maximumNesting"), or with the wrapped
// error of a date in it.
KeelResult<std::shared_ptr<const QuandaDateMasking>> makeDateMaskFromSyntax(
    std::string_view syntax);

// A rule typed either way: text starting with "{" is read as the tagged JSON archive (see
// QuandaDateMaskArchive.h; a document that does not decode fails with "Undecodable date mask
// archive" and the decoder's reason), anything else as the syntax above.
KeelResult<std::shared_ptr<const QuandaDateMasking>> makeDateMaskFromSyntaxOrArchive(
    std::string_view text);

// A day of the week as the syntax reads it: "monday", "mon", "Mondays". Anything else fails with
// "Unreadable day of week".
KeelResult<QuandaDayOfGregorianWeek> makeDayOfGregorianWeekFromSyntax(std::string_view syntax);
