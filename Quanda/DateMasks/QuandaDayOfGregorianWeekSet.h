// QuandaDayOfGregorianWeekSet: a set of days of the week, held as seven bits.
//
// The weekday masks test a date's weekday against a set on every call, so the set is a 7-bit
// word (bit i is the day of ordinal i, monday being bit 0) and membership is a shift and an AND.
// It reads and converts like the std::set<QuandaDayOfGregorianWeek> it stands for: it is made from
// one (implicitly) or from a braced list of days, and toSet() gives one back.
//
//   QuandaDayOfGregorianWeekSet weekend{QuandaDayOfGregorianWeek::saturday,
//                                       QuandaDayOfGregorianWeek::sunday};
//   weekend.contains(QuandaDayOfGregorianWeek::sunday);  // true
//   weekend.complement();                                // monday ... friday
//
// Archived as a JSON list of day names in encodingSortKey order: ["saturday", "sunday"].
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>

#include "Quanda/QuandaDayOfGregorianWeek.h"

class QuandaDayOfGregorianWeekSet {
 public:
  static constexpr std::uint8_t allBits = 0x7F;

  constexpr QuandaDayOfGregorianWeekSet() noexcept = default;
  constexpr QuandaDayOfGregorianWeekSet(
      std::initializer_list<QuandaDayOfGregorianWeek> days) noexcept {
    for (QuandaDayOfGregorianWeek day : days) bits_ |= bit(day);
  }
  QuandaDayOfGregorianWeekSet(const std::set<QuandaDayOfGregorianWeek>& days) noexcept {  // NOLINT
    for (QuandaDayOfGregorianWeek day : days) bits_ |= bit(day);
  }
  // Bit i for the day of ordinal i; bits above 6 are dropped.
  static constexpr QuandaDayOfGregorianWeekSet makeFromBits(std::uint8_t bits) noexcept {
    QuandaDayOfGregorianWeekSet set;
    set.bits_ = bits & allBits;
    return set;
  }
  static constexpr QuandaDayOfGregorianWeekSet all() noexcept { return makeFromBits(allBits); }

  constexpr std::uint8_t bits() const noexcept { return bits_; }
  constexpr bool contains(QuandaDayOfGregorianWeek day) const noexcept {
    return (bits_ >> ordinal(day)) & 1U;
  }
  // Membership of the day of ordinal 0...6 (a day count modulo 7).
  constexpr bool containsOrdinal(std::uint32_t dayOrdinal) const noexcept {
    return (bits_ >> dayOrdinal) & 1U;
  }
  constexpr bool isEmpty() const noexcept { return bits_ == 0; }
  constexpr int size() const noexcept { return std::popcount(bits_); }
  constexpr QuandaDayOfGregorianWeekSet complement() const noexcept {
    return makeFromBits(static_cast<std::uint8_t>(~bits_));
  }

  std::set<QuandaDayOfGregorianWeek> toSet() const;
  // "[monday, friday]"
  std::string description() const;

  friend constexpr bool operator==(QuandaDayOfGregorianWeekSet,
                                   QuandaDayOfGregorianWeekSet) noexcept = default;

 private:
  static constexpr std::uint8_t bit(QuandaDayOfGregorianWeek day) noexcept {
    return static_cast<std::uint8_t>(1U << ordinal(day));
  }

  std::uint8_t bits_ = 0;
};

std::ostream& operator<<(std::ostream& stream, QuandaDayOfGregorianWeekSet set);

template <>
struct std::hash<QuandaDayOfGregorianWeekSet> {
  std::size_t operator()(QuandaDayOfGregorianWeekSet set) const noexcept {
    return std::hash<std::uint8_t>{}(set.bits());
  }
};

// A list of day names; unknown names throw KeelDecodingError "Unexpected value '<text>'", other
// JSON kinds nlohmann's type_error.
template <>
struct nlohmann::adl_serializer<QuandaDayOfGregorianWeekSet> {
  static void to_json(nlohmann::json& json, QuandaDayOfGregorianWeekSet set);
  static QuandaDayOfGregorianWeekSet from_json(const nlohmann::json& json);
};
