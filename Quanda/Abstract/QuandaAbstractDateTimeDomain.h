// Ranges of date-times: what a KeelDomain of natural or real date-times can tell, and the
// conversions between date ranges and date-time ranges.
//
// A date-time range is a closed KeelDomain; these free functions measure it, compare two of them
// and turn one kind into another. A range made from dates ends at midnight at the start of the day
// after its last date, inclusive, not at that date's last second: the library's ranges end at the
// first instant after them.
//
//   const KeelDomain<QuandaAbstractDate> week{monday, sunday};
//   const auto instants = makeNaturalDateTimeRange(week);   // monday 00:00 ... next monday 00:00
//   trueRange(instants);                                     // 604800 s
//   contains(instants, meeting);                             // the meeting lies within the week
//   makeDateRangeContaining(instants);                       // monday ... next monday
//
// Every function is O(1) and works on the true bounds where it says so, on the bounds as given
// otherwise.
#pragma once

#include "Keel/KeelDomain.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

// ---- Natural date-time ranges -------------------------------------------------------------------

// max() - min(): negative when the bounds are given reversed.
constexpr QuandaDiscreteTimeSpan range(const KeelDomain<QuandaAbstractNaturalDateTime>& domain) {
  return domain.max() - domain.min();
}

// trueMax() - trueMin(): the length whichever way round the bounds are given.
constexpr QuandaNaturalTimeSpan trueRange(
    const KeelDomain<QuandaAbstractNaturalDateTime>& domain) noexcept {
  return QuandaNaturalTimeSpan(domain.trueMax().secondsSinceDatum() -
                               domain.trueMin().secondsSinceDatum());
}

// The same bounds as real date-times (exact), in the order given.
constexpr KeelDomain<QuandaAbstractRealDateTime> makeRealRange(
    const KeelDomain<QuandaAbstractNaturalDateTime>& domain) noexcept {
  return {QuandaAbstractRealDateTime(domain.min()), QuandaAbstractRealDateTime(domain.max())};
}

// Whether every date-time of range lies within domain (both bounds inclusive).
constexpr bool contains(const KeelDomain<QuandaAbstractNaturalDateTime>& domain,
                        const KeelDomain<QuandaAbstractNaturalDateTime>& range) noexcept {
  return domain.contains(range.trueMin()) && domain.contains(range.trueMax());
}

// The dates from trueMin()'s date to trueMax()'s date. A range made from dates by
// makeNaturalDateTimeRange therefore comes back one day longer, as its end lies on the next day.
constexpr KeelDomain<QuandaAbstractDate> makeDateRangeContaining(
    const KeelDomain<QuandaAbstractNaturalDateTime>& domain) noexcept {
  return {domain.trueMin().date(), domain.trueMax().date()};
}

// ---- Real date-time ranges ----------------------------------------------------------------------

// max() - min() as a real span: negative when the bounds are given reversed.
inline QuandaRealTimeSpan range(const KeelDomain<QuandaAbstractRealDateTime>& domain) {
  return domain.max() - domain.min();
}

// ---- Date ranges as date-time ranges ------------------------------------------------------------

// From min() at 00:00:00 to the day after max() at 00:00:00, inclusive. A max() of 9999-12-31 has
// no such day, which is a programming error.
constexpr KeelDomain<QuandaAbstractNaturalDateTime> makeNaturalDateTimeRange(
    const KeelDomain<QuandaAbstractDate>& dates) {
  return {dates.min().makeNaturalBeginningOfDay(), dates.max().makeNaturalEndOfDay()};
}
constexpr KeelDomain<QuandaAbstractRealDateTime> makeRealDateTimeRange(
    const KeelDomain<QuandaAbstractDate>& dates) {
  return {dates.min().makeRealBeginningOfDay(), dates.max().makeRealEndOfDay()};
}
