// Invariants shared by the date fuzz targets. A broken invariant aborts, which libFuzzer reports
// as a crash with the input that caused it.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace fuzz {

inline void requireValuesJustOutsideWork(QuandaAbstractDate date);

inline void require(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
  }
}

// A date any factory hands out is valid, and its canonical forms give it back.
inline void requireCanonicalRoundTrips(QuandaAbstractDate date) {
  require(QuandaAbstractDate::makeIfValid(date.year(), date.month(), date.day()) == date,
          "a factory made an invalid date");
  const auto text = QuandaAbstractDate::makeFromIso8601String(date.serializeToIso8601String());
  require(text && text.value() == date, "canonical text does not round-trip");
  const auto numeric = QuandaAbstractDate::makeFromIso8601Numeric(date.serializeToIso8601Numeric());
  require(numeric && numeric.value() == date, "numeric form does not round-trip");
  require(QuandaAbstractDate::makeFromDaysSinceDatum(date.daysSinceDatum()) == date,
          "day count does not round-trip");
  requireValuesJustOutsideWork(date);
}

// Day 0 (replacing) and year 0 (addingMonths back from year 1) are reachable from any date; they
// keep their fields, text and order, and day 0 counts as the last day of the month before.
inline void requireValuesJustOutsideWork(QuandaAbstractDate date) {
  const QuandaAbstractDate first = date.beginningOfMonth();
  const QuandaAbstractDate dayZero = date.replacing({.day = 0});
  require(dayZero.day() == 0 && dayZero.month() == date.month() && dayZero.year() == date.year(),
          "day 0 lost a field");
  require(
      dayZero.serializeToIso8601String() == first.serializeToIso8601String().substr(0, 8) + "00",
      "day 0 text");
  require(dayZero < first && dayZero.nextDay() == first, "day 0 is not just before the 1st");
  if (first != QuandaAbstractDate::zero) {
    require(dayZero.daysSinceDatum() + 1 == first.daysSinceDatum(), "day 0 counts wrongly");
    require(dayZero.previousDay() == first.previousDay().previousDay(), "day before day 0");
  }

  const std::int32_t monthsBack = std::int32_t{date.year()} * 12;
  const QuandaAbstractDate yearZero = date.addingMonths(-monthsBack);
  require(yearZero.year() == 0 && yearZero.month() == date.month(), "year 0 lost a field");
  // The day is limited by the month's length in the year before the addition, so it stays.
  require(yearZero.day() == date.day(), "year 0 day");
  require(yearZero < QuandaAbstractDate::zero, "year 0 does not order first");
  require(yearZero.serializeToIso8601String().starts_with("0000-"), "year 0 text");
  require(yearZero.addingMonths(monthsBack) == date, "year 0 does not step back");
}

// A failure names the operation and the text, and its chain ends in a first fault with a message.
inline void requireWellFormedError(const KeelError& error, std::string_view functionName,
                                   std::string_view text) {
  require(error.functionName() == functionName, "wrong operation in the error");
  require(error.argument("iso8601String") == text, "the error does not carry the text");
  require(!error.innermost().message().empty(), "the first fault has no message");
  require(!error.chainDescription().empty(), "empty error description");
}

}  // namespace fuzz
