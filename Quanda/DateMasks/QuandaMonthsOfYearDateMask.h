// QuandaMonthsOfYearDateMask: the dates that fall in given months of the year (March; June,
// July and August).
//
// The date matches when its month (1 = January) is in monthsOfYear, a bit set, so the test is a
// shift and an AND. Numbers outside 1...12 are kept as given but never match. The mask is
// month-local: combined with any other month-local rule it is searched month by month through
// the 400-year table of month kinds, which holds the month of the year for exactly this, so the
// yearly rules are combinations of existing kinds:
//
// clang-format off
//   March 14                       all of (monthsOfYear {3}, daysOfMonth {14})
//   second Sunday of March         all of (monthsOfYear {3}, weekdaysOfMonth {sunday} {2})
//   last Monday of May             all of (monthsOfYear {5}, reverseWeekdaysOfMonth {monday} {1})
//   February 29 (leap days only)   all of (monthsOfYear {2}, daysOfMonth {29})
// clang-format on
//
// Archived as the bare list of month numbers in increasing order: [3, 12].
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string_view>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"
#include "Quanda/DateMasks/QuandaOrdinalSet.h"

class QuandaMonthsOfYearDateMask final : public QuandaDateMaskBase<QuandaMonthsOfYearDateMask> {
 public:
  static constexpr std::string_view kind = "monthsOfYear";

  // From a std::set<uint8_t> or a braced list of month numbers.
  explicit QuandaMonthsOfYearDateMask(QuandaOrdinalSet monthsOfYear) noexcept
      : months_(monthsOfYear) {
    setMonthDaySets(
        quanda_detail::MonthDaySets::make([monthsOfYear](const quanda_detail::MonthShape& shape) {
          return monthsOfYear.contains(static_cast<std::uint8_t>(shape.monthOfYear))
                     ? ~std::uint32_t{0}
                     : 0U;
        }));
  }

  std::set<std::uint8_t> monthsOfYear() const { return months_.toSet(); }
  const QuandaOrdinalSet& monthSet() const noexcept { return months_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return (months_.lowBits() >> date.month()) & 1U;
  }

  friend bool operator==(const QuandaMonthsOfYearDateMask& lhs,
                         const QuandaMonthsOfYearDateMask& rhs) noexcept {
    return lhs.months_ == rhs.months_;
  }

 private:
  QuandaOrdinalSet months_;
};

template <>
struct std::hash<QuandaMonthsOfYearDateMask> {
  std::size_t operator()(const QuandaMonthsOfYearDateMask& mask) const noexcept {
    return std::hash<QuandaOrdinalSet>{}(mask.monthSet());
  }
};

template <>
struct nlohmann::adl_serializer<QuandaMonthsOfYearDateMask> {
  static void to_json(nlohmann::json& json, const QuandaMonthsOfYearDateMask& mask);
  static QuandaMonthsOfYearDateMask from_json(const nlohmann::json& json);
};
