// The fixed numbers of the proleptic Gregorian calendar and of the clock.
//
// Every count the value types need lives here, named after what is counted and what it is counted
// in: Quanda::SecondsIn::Gregorian::Day::count is 86400, Quanda::DaysIn::Gregorian::Month::leap is
// the month-length table of a leap year. `count` is the number of the smaller unit in the larger,
// `validZeroBasedDomain` the closed domain 0...count-1 of a zero-based component,
// `validOneBasedDomain` the domain 1...count of a one-based component, and
// `validSecondsWithSubSecondsDomainInc` the inclusive domain of fractional seconds that stay inside
// the unit: its upper bound is the largest double below the unit's length, so an inclusive test
// admits every fraction of the last second and rejects the full length itself.
//
// Each member has the narrowest unsigned type that holds it. Everything is constexpr: there is
// nothing to initialise at run time, so there is nothing to race on.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "Keel/KeelDomain.h"
#include "Keel/KeelDoubleDomain.h"
#include "Keel/KeelPrecondition.h"

namespace Quanda {

// Proleptic Gregorian leap-year rule over every 16-bit year (0 is a leap year).
constexpr bool isLeapYear(std::uint16_t year) noexcept {
  if (year % 400 == 0) return true;
  if (year % 4 != 0) return false;
  return year % 100 != 0;
}

namespace DaysIn::Gregorian {
namespace Month {
inline constexpr std::array<std::uint8_t, 12> nonLeap{31, 28, 31, 30, 31, 30,
                                                      31, 31, 30, 31, 30, 31};
inline constexpr std::array<std::uint8_t, 12> leap{31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
}  // namespace Month
namespace Week {
inline constexpr std::uint8_t count = 7;
}
namespace Year {
inline constexpr std::uint16_t leap = 366;
inline constexpr std::uint16_t nonLeap = 365;
inline constexpr KeelDomain<std::uint16_t> countDomain{365, 366};
}  // namespace Year

// The length of a one-based month in a year. A month outside 1...12 is a programming error:
// callers validate it first against MonthsIn::Gregorian::Year::validOneBasedDomain.
constexpr std::uint8_t oneBasedMonth(std::uint8_t month, std::uint16_t inYear) {
  KEEL_PRECONDITION(month >= 1 && month <= 12, "month outside 1...12");
  return (isLeapYear(inYear) ? Month::leap : Month::nonLeap)[month - 1];
}
}  // namespace DaysIn::Gregorian

namespace HoursIn::Gregorian {
namespace Day {
inline constexpr std::uint8_t count = 24;
inline constexpr KeelDomain<std::uint8_t> validZeroBasedDomain{0, 23};
}  // namespace Day
namespace Meridian {
inline constexpr std::uint8_t count = 12;
inline constexpr KeelDomain<std::uint8_t> validZeroBasedDomain{0, 11};
}  // namespace Meridian
}  // namespace HoursIn::Gregorian

namespace MinutesIn::Gregorian {
namespace Day {
inline constexpr std::uint16_t count = 1440;
inline constexpr KeelDomain<std::uint16_t> validZeroBasedDomain{0, 1439};
}  // namespace Day
namespace Hour {
inline constexpr std::uint8_t count = 60;
inline constexpr KeelDomain<std::uint8_t> validZeroBasedDomain{0, 59};
}  // namespace Hour
}  // namespace MinutesIn::Gregorian

namespace MonthsIn::Gregorian::Year {
inline constexpr std::uint8_t count = 12;
inline constexpr KeelDomain<std::uint8_t> validOneBasedDomain{1, 12};
}  // namespace MonthsIn::Gregorian::Year

namespace NanosecondsIn::Gregorian::Second {
inline constexpr std::uint32_t count = 1000000000;
}

namespace SecondsIn::Gregorian {
namespace Day {
inline constexpr std::uint32_t count = 86400;
inline constexpr KeelDomain<std::uint32_t> validZeroBasedDomain{0, 86399};
// 86399.99999999999, the double just below 86400.0.
inline constexpr KeelDoubleDomain validSecondsWithSubSecondsDomainInc{
    0.0, std::bit_cast<double>(std::uint64_t{0x40F517FFFFFFFFFF})};
}  // namespace Day
namespace Hour {
inline constexpr std::uint16_t count = 3600;
inline constexpr KeelDomain<std::uint16_t> validZeroBasedDomain{0, 3599};
}  // namespace Hour
namespace Minute {
inline constexpr std::uint8_t count = 60;
inline constexpr KeelDomain<std::uint8_t> validZeroBasedDomain{0, 59};
// 59.99999999999999, the double just below 60.0.
inline constexpr KeelDoubleDomain validSecondsWithSubSecondsDomainInc{
    0.0, std::bit_cast<double>(std::uint64_t{0x404DFFFFFFFFFFFF})};
}  // namespace Minute
namespace Week {
inline constexpr std::uint32_t count = 604800;
}
}  // namespace SecondsIn::Gregorian

}  // namespace Quanda
