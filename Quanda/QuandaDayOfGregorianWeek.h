// QuandaDayOfGregorianWeek: the seven days of the Gregorian week.
//
// Monday is ordinal 0 because the datum of the day count, 0001-01-01, is a Monday: a date's day of
// week is its day count modulo 7. The ordinal is what all week arithmetic uses, and what sets of
// days are sorted by when they are archived (encodingSortKey).
//
// Archived as its lower-case case name ("monday" ... "sunday"); decoding compares exactly, so
// "Monday" fails with "Unexpected value 'Monday'".
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelPrecondition.h"
#include "Keel/KeelResult.h"

class QuandaCalendarAdapting;
// Declared here without its case names, which need this header
// (Quanda/Formatting/QuandaStandaloneDayNameFormatStyle.h).
enum class QuandaStandaloneDayNameFormatStyle : std::uint8_t;

enum class QuandaDayOfGregorianWeek : std::uint8_t {
  monday,
  tuesday,
  wednesday,
  thursday,
  friday,
  saturday,
  sunday,
};

// The cases of an enumeration in declaration order.
template <class Enumeration>
inline constexpr std::array<Enumeration, 0> allCases{};

template <>
inline constexpr std::array<QuandaDayOfGregorianWeek, 7> allCases<QuandaDayOfGregorianWeek>{
    QuandaDayOfGregorianWeek::monday,    QuandaDayOfGregorianWeek::tuesday,
    QuandaDayOfGregorianWeek::wednesday, QuandaDayOfGregorianWeek::thursday,
    QuandaDayOfGregorianWeek::friday,    QuandaDayOfGregorianWeek::saturday,
    QuandaDayOfGregorianWeek::sunday};

// 0 for monday ... 6 for sunday.
constexpr std::uint8_t ordinal(QuandaDayOfGregorianWeek day) noexcept {
  return static_cast<std::uint8_t>(day);
}

// The day of a given ordinal; an ordinal above 6 is a programming error.
constexpr QuandaDayOfGregorianWeek makeDayOfGregorianWeek(std::uint8_t ordinal) {
  KEEL_PRECONDITION(ordinal < 7, "weekday ordinal outside 0...6");
  return static_cast<QuandaDayOfGregorianWeek>(ordinal);
}

// The following day; sunday wraps to monday.
constexpr QuandaDayOfGregorianWeek nextDayOfWeek(QuandaDayOfGregorianWeek day) noexcept {
  return static_cast<QuandaDayOfGregorianWeek>(ordinal(day) == 6 ? 0 : ordinal(day) + 1);
}

// The ordinal, used to order sets of days when they are archived.
constexpr std::uint8_t encodingSortKey(QuandaDayOfGregorianWeek day) noexcept {
  return ordinal(day);
}

// "Monday" ... "Sunday": English, not localised; for logs and development.
constexpr std::string_view developmentLanguageTitleCaseName(QuandaDayOfGregorianWeek day) noexcept {
  constexpr std::array<std::string_view, 7> names{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                  "Friday", "Saturday", "Sunday"};
  return names[ordinal(day)];
}

// "monday" ... "sunday": the case name, which is also the archived form.
constexpr std::string_view caseName(QuandaDayOfGregorianWeek day) noexcept {
  constexpr std::array<std::string_view, 7> names{"monday", "tuesday",  "wednesday", "thursday",
                                                  "friday", "saturday", "sunday"};
  return names[ordinal(day)];
}

// The day whose case name is exactly this text (case-sensitive), if any.
constexpr std::optional<QuandaDayOfGregorianWeek> makeDayOfGregorianWeek(
    std::string_view caseNameText) noexcept {
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    if (caseName(day) == caseNameText) return day;
  }
  return std::nullopt;
}

// The day's standalone name in the locale of the override or else the device's ("Monday", "Mon",
// "M" in English), from the calendar adapter its caller passes. A failure is the adapter's, wrapped
// with "dayOfWeek", "localeIdentifierOverride" and "style".
KeelResult<std::string> localizedStandaloneName(
    QuandaDayOfGregorianWeek dayOfWeek, QuandaCalendarAdapting& calendarAdapter,
    std::optional<std::string_view> localeIdentifierOverride,
    QuandaStandaloneDayNameFormatStyle style);

std::ostream& operator<<(std::ostream& stream, QuandaDayOfGregorianWeek day);

template <>
struct nlohmann::adl_serializer<QuandaDayOfGregorianWeek> {
  static void to_json(nlohmann::json& json, QuandaDayOfGregorianWeek day);
  // Throws KeelDecodingError "Unexpected value '<text>'" for any text but the seven case names.
  static QuandaDayOfGregorianWeek from_json(const nlohmann::json& json);
};
