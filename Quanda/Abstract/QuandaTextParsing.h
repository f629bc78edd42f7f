// Text helpers shared by the value types' string factories.
//
// The factories read decimal tokens the way the platform's integer parse does: an optional single
// "+" or "-" sign, then one or more ASCII digits, the value fitting the target type ("-0" is 0,
// leading zeros are fine, "", "+", " 1", "1a" and "٣" fail). They count characters as a reader sees
// them (grapheme clusters), so a fixed-width form is judged by what a person would count, not by
// bytes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quanda_detail {

// Parses an unsigned decimal token; nothing when it is not one or does not fit T.
template <std::unsigned_integral T>
constexpr std::optional<T> parseUnsignedDecimal(std::string_view token) noexcept {
  std::size_t position = 0;
  bool negative = false;
  if (!token.empty() && (token[0] == '+' || token[0] == '-')) {
    negative = token[0] == '-';
    position = 1;
  }
  if (position == token.size()) return std::nullopt;
  std::uint64_t value = 0;
  for (; position < token.size(); ++position) {
    const unsigned digit = static_cast<unsigned char>(token[position]) - unsigned{'0'};
    if (digit > 9) return std::nullopt;
    value = value * 10 + digit;
    if (value > std::numeric_limits<T>::max()) return std::nullopt;
  }
  if (negative && value != 0) return std::nullopt;
  return static_cast<T>(value);
}

// Splits text at every occurrence of a one-byte separator, keeping empty pieces.
std::vector<std::string> splitKeepingEmpty(std::string_view text, char separator);

// The number of user-perceived characters (extended grapheme clusters) of UTF-8 text. Ill-formed
// bytes count as one character each, as a replacement character would.
std::size_t characterCount(std::string_view text);

// Splits UTF-8 text into its user-perceived characters.
std::vector<std::string> characters(std::string_view text);

// Writes value as exactly `width` decimal digits (zero-padded; the value must fit).
constexpr void writeDigits(char* out, unsigned value, int width) noexcept {
  for (int index = width - 1; index >= 0; --index) {
    out[index] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
}

// Two-digit fields read from fixed positions: nothing unless both bytes are ASCII digits.
constexpr int twoDigits(std::string_view text, std::size_t at) noexcept {
  const unsigned tens = static_cast<unsigned char>(text[at]) - unsigned{'0'};
  const unsigned ones = static_cast<unsigned char>(text[at + 1]) - unsigned{'0'};
  return tens > 9 || ones > 9 ? -1 : static_cast<int>(tens * 10 + ones);
}

}  // namespace quanda_detail
