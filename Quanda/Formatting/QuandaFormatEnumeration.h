// What the formatting enumerations share: their case names, the list of their cases and their
// printed form.
//
// The styles, templates and preferences that callers pass to the calendar adapter are plain
// enumerations, compared and hashed by case and used as fields of cache keys. Each declares its
// case names once, in declaration order, by specialising QuandaCaseNames; everything else follows
// from that table:
//
//   template <>
//   struct QuandaCaseNames<QuandaDateFormatStyle> {
//     static constexpr std::array<std::string_view, 4> names{"short", "medium", "long", "full"};
//   };
//
//   caseName(QuandaDateFormatStyle::long_);   // "long"
//   allCases<QuandaDateFormatStyle>;          // short_, medium, long_, full
//   std::cout << QuandaDateFormatStyle::full; // full
//
// A case whose name is a C++ keyword ("short", "long") is spelt with a trailing underscore; its
// case name keeps the word itself.
#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Quanda/QuandaDayOfGregorianWeek.h"

template <class Enumeration>
struct QuandaCaseNames;

template <class Enumeration>
concept QuandaNamedEnumeration = std::is_enum_v<Enumeration> && requires {
  QuandaCaseNames<Enumeration>::names;
};

// The case's name as the library writes it in errors and descriptions.
template <QuandaNamedEnumeration Enumeration>
constexpr std::string_view caseName(Enumeration value) noexcept {
  return QuandaCaseNames<Enumeration>::names[static_cast<std::size_t>(value)];
}

namespace quanda_detail {
// The names of the four styles that grow from short to full (date, time and date range styles).
inline constexpr std::array<std::string_view, 4> lengthStyleNames{"short", "medium", "long",
                                                                  "full"};

template <class Enumeration, std::size_t... Index>
constexpr std::array<Enumeration, sizeof...(Index)> enumerationCases(
    std::index_sequence<Index...>) noexcept {
  return {static_cast<Enumeration>(Index)...};
}
}  // namespace quanda_detail

// Every case in declaration order (the ordinal of a case is its position).
template <QuandaNamedEnumeration Enumeration>
inline constexpr auto allCases<Enumeration> = quanda_detail::enumerationCases<Enumeration>(
    std::make_index_sequence<QuandaCaseNames<Enumeration>::names.size()>());

template <QuandaNamedEnumeration Enumeration>
std::ostream& operator<<(std::ostream& stream, Enumeration value) {
  return stream << caseName(value);
}
