// Day counts of the proleptic Gregorian calendar over any 64-bit year, for the calendar adapter.
//
// The abstract date counts days for the years 1 to 9999 it can hold. The adapter meets instants
// outside them (an instant read in a zone can fall in year 0, which is 1 BC, or in year 10000)
// and must report them as the years they are, and the duration rules count calendar years and
// months far from any valid date. These two functions cover every year a 64-bit count reaches
// here, with astronomical numbering (year 0 is a leap year, year -1 is 2 BC).
//
// Days are counted from 1970-01-01 (day 0), so that an instant's day is
// floorDivide(seconds, 86400).
#pragma once

#include <cstdint>

namespace quanda_detail {

struct CivilDay {
  std::int64_t year;
  std::uint8_t month;  // 1...12
  std::uint8_t day;    // 1...31
};

// The year is taken to begin on 1 March, so that the leap day ends it; 400-year eras of 146097
// days then make every quantity below non-negative within an era. Valid for |year| < 2^50.
constexpr std::int64_t daysFromCivil(std::int64_t year, unsigned month, unsigned day) noexcept {
  const std::int64_t marchBasedYear = month <= 2 ? year - 1 : year;
  const std::int64_t era = (marchBasedYear >= 0 ? marchBasedYear : marchBasedYear - 399) / 400;
  const auto yearOfEra = static_cast<unsigned>(marchBasedYear - era * 400);  // 0...399
  const unsigned marchBasedMonth = month > 2 ? month - 3 : month + 9;        // 0...11
  const unsigned dayOfYear = (153 * marchBasedMonth + 2) / 5 + day - 1;      // 0...365
  const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + static_cast<std::int64_t>(dayOfEra) - 719468;  // 0000-03-01 is -719468
}

// The inverse of daysFromCivil, for |days| < 2^58.
constexpr CivilDay civilFromDays(std::int64_t days) noexcept {
  const std::int64_t shifted = days + 719468;
  const std::int64_t era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
  const auto dayOfEra = static_cast<unsigned>(shifted - era * 146097);  // 0...146096
  const unsigned yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;  // 0...399
  const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const unsigned marchBasedMonth = (5 * dayOfYear + 2) / 153;  // 0...11
  const auto day = static_cast<std::uint8_t>(dayOfYear - (153 * marchBasedMonth + 2) / 5 + 1);
  const auto month =
      static_cast<std::uint8_t>(marchBasedMonth < 10 ? marchBasedMonth + 3 : marchBasedMonth - 9);
  const std::int64_t year = static_cast<std::int64_t>(yearOfEra) + era * 400 + (month <= 2);
  return {year, month, day};
}

// The quotient rounded toward minus infinity; divisor > 0.
constexpr std::int64_t floorDivide(std::int64_t value, std::int64_t divisor) noexcept {
  const std::int64_t quotient = value / divisor;
  return quotient - (value % divisor < 0);
}

}  // namespace quanda_detail
