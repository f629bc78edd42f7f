// QuandaDaysOfWeekDateMask: the dates that fall on given days of the week (every Monday and
// Thursday; weekdays; weekends).
//
// The date matches when its weekday (day count modulo 7) is in daysOfWeek; the preferred first day
// of the week plays no part. The set is seven bits, so the test is a remainder, a shift and an
// AND; the next day count with an answer is a rotation of those bits. The mask is month-local, so
// nextMatch and the combinations with other month-local rules walk month by month. An empty set
// matches nothing.
//
// Archived as the bare list of day names, sorted monday first: ["monday", "thursday"].
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string_view>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"
#include "Quanda/DateMasks/QuandaDayOfGregorianWeekSet.h"

class QuandaDaysOfWeekDateMask final : public QuandaDateMaskBase<QuandaDaysOfWeekDateMask> {
 public:
  static constexpr std::string_view kind = "daysOfWeek";

  // From a std::set<QuandaDayOfGregorianWeek> or a braced list of days.
  explicit QuandaDaysOfWeekDateMask(QuandaDayOfGregorianWeekSet daysOfWeek) noexcept
      : daysOfWeek_(daysOfWeek) {
    setMonthDaySets(
        quanda_detail::MonthDaySets::make([daysOfWeek](const quanda_detail::MonthShape& shape) {
          return quanda_detail::daysOnWeekdays(daysOfWeek.bits(), shape.weekdayOfFirst);
        }));
  }

  std::set<QuandaDayOfGregorianWeek> daysOfWeek() const { return daysOfWeek_.toSet(); }
  QuandaDayOfGregorianWeekSet daysOfWeekSet() const noexcept { return daysOfWeek_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return daysOfWeek_.containsOrdinal(date.daysSinceDatum() % 7);
  }
  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override {
    return block.weekdays(daysOfWeek_.bits());
  }

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override;

 public:
  friend bool operator==(const QuandaDaysOfWeekDateMask& lhs,
                         const QuandaDaysOfWeekDateMask& rhs) noexcept {
    return lhs.daysOfWeek_ == rhs.daysOfWeek_;
  }

 private:
  QuandaDayOfGregorianWeekSet daysOfWeek_;
};

template <>
struct std::hash<QuandaDaysOfWeekDateMask> {
  std::size_t operator()(const QuandaDaysOfWeekDateMask& mask) const noexcept {
    return keel::hashFields(mask.daysOfWeekSet());
  }
};

template <>
struct nlohmann::adl_serializer<QuandaDaysOfWeekDateMask> {
  static void to_json(nlohmann::json& json, const QuandaDaysOfWeekDateMask& mask);
  static QuandaDaysOfWeekDateMask from_json(const nlohmann::json& json);
};
