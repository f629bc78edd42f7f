// Operations on ranges of dates: walking, counting and splitting a KeelDomain<QuandaAbstractDate>.
//
// A date range is a closed KeelDomain of dates; these free functions give it what the scheduling
// code needs beyond containment and clamping. Every one is O(1) except the walk itself.
//
//   const KeelDomain<QuandaAbstractDate> march{first, last};
//   for (QuandaAbstractDate date : datesInclusive(march)) { ... }  // min() to max(), inclusive
//   datesInclusiveCount(march);                                      // 31
//   splitAtLesserMax(march, payday);   // [first, payday] and [payday + 1 day, last]
//   splitAtGreaterMin(march, payday);  // [first, payday - 1 day] and [payday, last]
//
// The splits compare against the range's true bounds, so a range given with reversed bounds splits
// like its ascending twin, and each part they produce is ascending (a whole range included).
#pragma once

#include <cstdint>

#include "Keel/KeelDomain.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractDateDomainSplit.h"
#include "Quanda/Abstract/QuandaAbstractDateIterator.h"

// The dates of the range from min() to max(), both included (backwards for reversed bounds).
constexpr QuandaAbstractDateIterator datesInclusive(
    const KeelDomain<QuandaAbstractDate>& domain) noexcept {
  return QuandaAbstractDateIterator(domain);
}

// The number of dates datesInclusive hands out: 1 for a one-day range.
constexpr std::uint64_t datesInclusiveCount(const KeelDomain<QuandaAbstractDate>& domain) noexcept {
  return domain.max().absoluteDaysSince(domain.min()) + 1;
}

// Dates up to and including lesserMax go to the lesser side, later dates to the greater side.
constexpr QuandaAbstractDateDomainSplit splitAtLesserMax(
    const KeelDomain<QuandaAbstractDate>& domain, QuandaAbstractDate lesserMax) noexcept {
  const KeelDomain<QuandaAbstractDate> whole{domain.trueMin(), domain.trueMax()};
  if (lesserMax >= whole.max()) return QuandaAbstractDateDomainSplit::lesserOnly(whole);
  if (lesserMax < whole.min()) return QuandaAbstractDateDomainSplit::greaterOnly(whole);
  // lesserMax lies before the range's last date, so the day after it is a valid date.
  return QuandaAbstractDateDomainSplit::lesserAndGreater({whole.min(), lesserMax},
                                                         {lesserMax.nextDay(), whole.max()});
}

// Dates from greaterMin on go to the greater side, earlier dates to the lesser side.
constexpr QuandaAbstractDateDomainSplit splitAtGreaterMin(
    const KeelDomain<QuandaAbstractDate>& domain, QuandaAbstractDate greaterMin) noexcept {
  const KeelDomain<QuandaAbstractDate> whole{domain.trueMin(), domain.trueMax()};
  if (greaterMin > whole.max()) return QuandaAbstractDateDomainSplit::lesserOnly(whole);
  if (greaterMin <= whole.min()) return QuandaAbstractDateDomainSplit::greaterOnly(whole);
  // greaterMin lies after the range's first date, so the day before it is a valid date.
  return QuandaAbstractDateDomainSplit::lesserAndGreater({whole.min(), greaterMin.previousDay()},
                                                         {greaterMin, whole.max()});
}
