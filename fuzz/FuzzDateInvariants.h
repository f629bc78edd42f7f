// Invariants shared by the date fuzz targets. A broken invariant aborts, which libFuzzer reports
// as a crash with the input that caused it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

namespace fuzz {

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
