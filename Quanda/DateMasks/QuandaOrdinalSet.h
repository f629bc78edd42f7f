// QuandaOrdinalSet: a set of unsigned 8-bit numbers (days of the month, weeks of the month),
// held as 256 bits.
//
// The day-of-month and week-of-month masks test one small number against a set on every call;
// as a bit set that is a shift and an AND on the low word, with no tree to walk. Every 8-bit
// value has its bit, so a set keeps numbers that can never match a date (0, 40, week 9) exactly
// as it was given: they count for equality and are archived again, they just never match.
// It reads and converts like the std::set<uint8_t> it stands for: it is made from one
// (implicitly) or from a braced list, and toSet() gives one back.
//
//   QuandaOrdinalSet paydays{1, 15};
//   paydays.contains(15);   // true
//   paydays.lowBits();      // bit 1 and bit 15
//
// Archived as a JSON list of numbers in increasing order: [1, 15].
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "Keel/KeelHash.h"

class QuandaOrdinalSet {
 public:
  constexpr QuandaOrdinalSet() noexcept = default;
  constexpr QuandaOrdinalSet(std::initializer_list<std::uint8_t> values) noexcept {
    for (std::uint8_t value : values) insert(value);
  }
  QuandaOrdinalSet(const std::set<std::uint8_t>& values) noexcept {  // NOLINT: stands for the set
    for (std::uint8_t value : values) insert(value);
  }

  constexpr bool contains(std::uint8_t value) const noexcept {
    return (words_[value >> 6] >> (value & 63U)) & 1U;
  }
  // The members 0...63 as bits of one word: bit i is set when i is in the set.
  constexpr std::uint64_t lowBits() const noexcept { return words_[0]; }
  constexpr bool isEmpty() const noexcept {
    return (words_[0] | words_[1] | words_[2] | words_[3]) == 0;
  }
  constexpr const std::array<std::uint64_t, 4>& words() const noexcept { return words_; }

  std::set<std::uint8_t> toSet() const;
  // "[1, 15]"
  std::string description() const;

  friend constexpr bool operator==(const QuandaOrdinalSet&,
                                   const QuandaOrdinalSet&) noexcept = default;

 private:
  constexpr void insert(std::uint8_t value) noexcept {
    words_[value >> 6] |= std::uint64_t{1} << (value & 63U);
  }

  std::array<std::uint64_t, 4> words_{};
};

std::ostream& operator<<(std::ostream& stream, const QuandaOrdinalSet& set);

template <>
struct std::hash<QuandaOrdinalSet> {
  std::size_t operator()(const QuandaOrdinalSet& set) const noexcept {
    const auto& words = set.words();
    return keel::hashFields(words[0], words[1], words[2], words[3]);
  }
};

// A list of numbers 0...255; anything else throws nlohmann's type_error.
template <>
struct nlohmann::adl_serializer<QuandaOrdinalSet> {
  static void to_json(nlohmann::json& json, const QuandaOrdinalSet& set);
  static QuandaOrdinalSet from_json(const nlohmann::json& json);
};
