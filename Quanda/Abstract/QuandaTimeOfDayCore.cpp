// The out-of-line members of the time-of-day core, instantiated here for the two kinds.
#include "Quanda/Abstract/QuandaTimeOfDayCore.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaTextParsing.h"

namespace quanda_detail {

namespace {

constexpr bool startsWithCaseless(std::string_view text, std::string_view lowerPrefix) noexcept {
  if (text.size() < lowerPrefix.size()) return false;
  for (std::size_t index = 0; index < lowerPrefix.size(); ++index) {
    const char c = text[index];
    const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (lower != lowerPrefix[index]) return false;
  }
  return true;
}

constexpr bool isHexDigit(char c) noexcept {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// For a well-formed unsigned number whose value does not fit a double: whether it is too large
// (as opposed to too small). The power of the leading nonzero digit plus the exponent decides: it
// is far above zero for an overflow and far below for an underflow.
bool magnitudeOverflows(std::string_view number, bool hexadecimal) noexcept {
  const std::string_view mantissa =
      number.substr(0, number.find_first_of(hexadecimal ? "pP" : "eE"));
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t leading =
      mantissa.find_first_of(hexadecimal ? "123456789abcdefABCDEF" : "123456789");
  if (leading == std::string_view::npos) return false;
  const auto power = leading < point ? static_cast<std::int64_t>(point - leading - 1)
                                     : -static_cast<std::int64_t>(leading - point);
  std::int64_t exponent = 0;
  if (mantissa.size() < number.size()) {
    std::string_view digits = number.substr(mantissa.size() + 1);
    const bool negative = !digits.empty() && digits[0] == '-';
    if (!digits.empty() && (digits[0] == '+' || digits[0] == '-')) digits.remove_prefix(1);
    // Saturating: no exponent this large leaves the sign of the sum in doubt.
    for (const char digit : digits) {
      if (exponent < (std::int64_t{1} << 40)) exponent = exponent * 10 + (digit - '0');
    }
    if (negative) exponent = -exponent;
  }
  return power * (hexadecimal ? 4 : 1) + exponent > 0;
}

}  // namespace

std::optional<double> parseFloatingPoint(std::string_view token) noexcept {
  if (token.empty()) return std::nullopt;
  std::string_view rest = token;
  bool negative = false;
  if (rest[0] == '+' || rest[0] == '-') {
    negative = rest[0] == '-';
    rest.remove_prefix(1);
  }
  // A signalling NaN reads as a NaN; this library has no use for the distinction.
  if (rest.size() == 4 && startsWithCaseless(rest, "snan")) {
    return negative ? -std::numeric_limits<double>::quiet_NaN()
                    : std::numeric_limits<double>::quiet_NaN();
  }
  bool hexadecimal = false;
  if (rest.size() >= 2 && rest[0] == '0' && (rest[1] == 'x' || rest[1] == 'X')) {
    hexadecimal = true;
    rest.remove_prefix(2);
    // "0x" must be followed by a hexadecimal digit or a point and one.
    if (rest.empty() ||
        !(isHexDigit(rest[0]) || (rest[0] == '.' && rest.size() > 1 && isHexDigit(rest[1])))) {
      return std::nullopt;
    }
  }
  // from_chars takes a '-' of its own; a second sign is not a number.
  if (rest.empty() || rest[0] == '+' || rest[0] == '-') return std::nullopt;
  double value = 0;
  const char* const end = rest.data() + rest.size();
  const auto [stop, error] = std::from_chars(
      rest.data(), end, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (stop != end) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    value = magnitudeOverflows(rest, hexadecimal) ? std::numeric_limits<double>::infinity() : 0.0;
  } else if (error != std::errc{}) {
    return std::nullopt;
  }
  return negative ? -value : value;
}

// ---- TimeOfDayCore ------------------------------------------------------------------------------

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCore<Time, Traits>::make(std::uint8_t hour, std::uint8_t minute,
                                                   Second second) {
  constexpr std::string_view function = "make(hour:minute:second:)";
  const auto proposed = [&] {
    return KeelArguments{
        {"proposedHour", hour}, {"proposedMinute", minute}, {"proposedSecond", second}};
  };
  if (!Quanda::HoursIn::Gregorian::Day::validZeroBasedDomain.contains(hour)) {
    return KeelError::fault("Invalid hour", proposed(), Traits::sourcePath, function);
  }
  if (!Quanda::MinutesIn::Gregorian::Hour::validZeroBasedDomain.contains(minute)) {
    return KeelError::fault(Traits::invalidMinuteMessage, proposed(), Traits::sourcePath, function);
  }
  if (!Traits::isValidSecond(second)) {
    return KeelError::fault(Traits::invalidSecondMessage, proposed(), Traits::sourcePath, function);
  }
  return Time(hour, minute, second);
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCore<Time, Traits>::make(const Components& components) {
  auto time = make(components.hour, components.minute, components.second);
  if (!time) {
    return KeelError::wrap(time.error(), {{"proposedComponents", components}}, Traits::sourcePath,
                           "make(components:)");
  }
  return time;
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCore<Time, Traits>::makeFromIso8601String(
    std::string_view iso8601String) {
  constexpr std::string_view function = "make(iso8601String:)";
  const std::string_view s = iso8601String;
  const std::size_t first = s.find(':');
  const std::size_t second = first == std::string_view::npos ? first : s.find(':', first + 1);
  if (first == std::string_view::npos || second == std::string_view::npos ||
      s.find(':', second + 1) != std::string_view::npos) {
    if constexpr (Traits::tokenCountFailureListsTokens) {
      return KeelError::fault("Unexpected number of tokens",
                              {{"iso8601String", s}, {"tokens", splitKeepingEmpty(s, ':')}},
                              Traits::sourcePath, function);
    } else {
      return KeelError::fault("Unexpected number of tokens", {{"iso8601String", s}},
                              Traits::sourcePath, function);
    }
  }
  return makeFromTokens(s.substr(0, first), s.substr(first + 1, second - first - 1),
                        s.substr(second + 1), s, function, TokenArguments::stringAndTokens,
                        Traits::validationFailureListsTokens ? TokenArguments::stringAndTokens
                                                             : TokenArguments::string);
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCore<Time, Traits>::makeFromTokens(
    std::string_view hourToken, std::string_view minuteToken, std::string_view secondToken,
    std::string_view iso8601String, std::string_view functionName,
    TokenArguments conversionArguments, TokenArguments validationArguments) {
  // Built only on failure, so that a successful parse allocates nothing.
  const auto arguments = [&](TokenArguments which) {
    KeelArguments args{{"iso8601String", iso8601String}};
    if (which == TokenArguments::stringAndTokens) {
      args.emplace_back("tokens",
                        std::vector<std::string_view>{hourToken, minuteToken, secondToken});
    }
    return args;
  };
  const auto hour = parseUnsignedDecimal<std::uint8_t>(hourToken);
  if (!hour) {
    return KeelError::fault("Couldn't convert first token to hour", arguments(conversionArguments),
                            Traits::sourcePath, functionName);
  }
  const auto minute = parseUnsignedDecimal<std::uint8_t>(minuteToken);
  if (!minute) {
    return KeelError::fault("Couldn't convert second token to minute",
                            arguments(conversionArguments), Traits::sourcePath, functionName);
  }
  const auto second = Traits::parseSecond(secondToken);
  if (!second) {
    return KeelError::fault("Couldn't convert third token to second",
                            arguments(conversionArguments), Traits::sourcePath, functionName);
  }
  auto time = make(*hour, *minute, *second);
  if (!time) {
    return KeelError::wrap(time.error(), arguments(validationArguments), Traits::sourcePath,
                           functionName);
  }
  return time;
}

std::optional<std::uint8_t> NaturalTimeOfDayTraits::parseSecond(std::string_view token) noexcept {
  return parseUnsignedDecimal<std::uint8_t>(token);
}

std::optional<double> RealTimeOfDayTraits::parseSecond(std::string_view token) noexcept {
  return parseFloatingPoint(token);
}

template class TimeOfDayCore<QuandaAbstractNaturalTimeOfDay, NaturalTimeOfDayTraits>;
template class TimeOfDayCore<QuandaAbstractRealTimeOfDay, RealTimeOfDayTraits>;

}  // namespace quanda_detail
