// QuandaAbstractDate::makeFromIso8601String on arbitrary bytes: a date that round-trips through
// its canonical text, or a well-formed error; and the same answer as a plain reading of the rule
// (three "-"-separated tokens, each an optionally signed decimal that fits its field).
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "FuzzDateInvariants.h"

namespace {

std::optional<std::uint64_t> readToken(std::string_view token, std::uint64_t max) {
  bool negative = false;
  if (!token.empty() && (token.front() == '+' || token.front() == '-')) {
    negative = token.front() == '-';
    token.remove_prefix(1);
  }
  if (token.empty()) return std::nullopt;
  std::uint64_t value = 0;
  for (const char c : token) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
    if (value > max) return std::nullopt;
  }
  if (negative && value != 0) return std::nullopt;
  return value;
}

// The date the rule gives, or nothing.
std::optional<QuandaAbstractDate> expected(std::string_view text) {
  const std::size_t first = text.find('-');
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = text.find('-', first + 1);
  if (second == std::string_view::npos || text.find('-', second + 1) != std::string_view::npos) {
    return std::nullopt;
  }
  const auto year = readToken(text.substr(0, first), 65535);
  const auto month = readToken(text.substr(first + 1, second - first - 1), 255);
  const auto day = readToken(text.substr(second + 1), 255);
  if (!year || !month || !day) return std::nullopt;
  return QuandaAbstractDate::makeIfValid(static_cast<std::uint16_t>(*year),
                                         static_cast<std::uint8_t>(*month),
                                         static_cast<std::uint8_t>(*day));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto date = QuandaAbstractDate::makeFromIso8601String(text);
  fuzz::require(date.optionalValue() == expected(text), "differs from the plain reading");
  if (date) {
    fuzz::requireCanonicalRoundTrips(date.value());
  } else {
    fuzz::requireWellFormedError(date.error(), "make(iso8601String:)", text);
  }
  return 0;
}
