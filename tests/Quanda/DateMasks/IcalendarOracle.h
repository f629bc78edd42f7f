// The occurrences of a recurrence rule as libical expands them, for the tests and the benchmarks.
//
// libical 3.0 expands rules in the Gregorian calendar only from 1582-10-15 (it reckons earlier
// dates as Julian) and refuses starts after 2582-12-31, so comparisons stay inside that window.
#pragma once

#include <libical/ical.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace icalendar_oracle {

inline const QuandaAbstractDate windowStart = QuandaAbstractDate::make(1582, 10, 15).value();
inline const QuandaAbstractDate windowEnd = QuandaAbstractDate::make(2582, 12, 31).value();

inline std::string compact(QuandaAbstractDate date) {
  return std::to_string(date.serializeToIso8601Numeric() + 100000000).substr(1);
}

// The first `most` occurrences of the rule from `start` up to windowEnd, or nothing when libical
// does not read the rule (its freq is then "no recurrence").
inline std::vector<QuandaAbstractDate> expand(const std::string& rule, QuandaAbstractDate start,
                                              std::size_t most, bool* readable = nullptr) {
  std::vector<QuandaAbstractDate> dates;
  const icalrecurrencetype recurrence = icalrecurrencetype_from_string(rule.c_str());
  if (readable != nullptr) *readable = recurrence.freq != ICAL_NO_RECURRENCE;
  if (recurrence.freq == ICAL_NO_RECURRENCE) return dates;
  const icaltimetype dtstart = icaltime_from_string(compact(start).c_str());
  icalrecur_iterator* iterator = icalrecur_iterator_new(recurrence, dtstart);
  if (iterator == nullptr) return dates;
  for (icaltimetype next = icalrecur_iterator_next(iterator);
       !icaltime_is_null_time(next) && dates.size() < most;
       next = icalrecur_iterator_next(iterator)) {
    const auto date = QuandaAbstractDate::make(static_cast<std::uint16_t>(next.year),
                                               static_cast<std::uint8_t>(next.month),
                                               static_cast<std::uint8_t>(next.day));
    if (!date || windowEnd < date.value()) break;
    dates.push_back(date.value());
  }
  icalrecur_iterator_free(iterator);
  return dates;
}

}  // namespace icalendar_oracle
