// QuandaDaysOfWeeksDateMask: given weekdays of a pattern of weeks repeated from the week of an
// anchor date (Monday and Thursday of every third week).
//
// A date matches when its week's entry is true (as in QuandaWeekCycleDateMask, with the same
// counting and the same programming error for the first weeks after 0001-01-01) and its weekday
// is in daysOfWeek. The cycle length is the number of entries, not archived but derived again;
// an empty pattern is a programming error of the constructor and a decoding error of the archive.
//
//   QuandaDaysOfWeeksDateMask mask(anchor, {QuandaDayOfGregorianWeek::monday}, {true, false});
//   // archived as {"anchorDate": 20240101, "daysOfWeek": ["monday"], "weeks": [true, false]}
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string_view>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"
#include "Quanda/DateMasks/QuandaDayOfGregorianWeekSet.h"
#include "Quanda/DateMasks/QuandaWeekCycle.h"

class QuandaDaysOfWeeksDateMask final : public QuandaDateMaskBase<QuandaDaysOfWeeksDateMask> {
 public:
  static constexpr std::string_view kind = "daysOfWeeks";

  // An empty `weeks`, or more entries than 32 bits count, is a programming error.
  QuandaDaysOfWeeksDateMask(QuandaAbstractDate anchorDate, QuandaDayOfGregorianWeekSet daysOfWeek,
                            const std::vector<bool>& weeks)
      : daysOfWeek_(daysOfWeek), cycle_(anchorDate, weeks) {
    setDomainStarts(cycle_.firstDaysWithEntry());
  }

  QuandaAbstractDate anchorDate() const noexcept { return cycle_.anchorDate(); }
  std::set<QuandaDayOfGregorianWeek> daysOfWeek() const { return daysOfWeek_.toSet(); }
  QuandaDayOfGregorianWeekSet daysOfWeekSet() const noexcept { return daysOfWeek_; }
  std::uint32_t weekCycleLength() const noexcept { return cycle_.length(); }
  std::vector<bool> weeks() const { return cycle_.pattern().toVector(); }
  const QuandaWeekCycle& cycle() const noexcept { return cycle_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    const std::uint32_t day = date.daysSinceDatum();
    return cycle_.entryOf(day, firstDayOfWeek) && daysOfWeek_.containsOrdinal(day % 7);
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override {
    return cycle_.daysWithEntry(block) & block.weekdays(daysOfWeek_.bits());
  }
  std::uint32_t answerWordCost() const override { return 2; }
  quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                     QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return cycle_.answerRun(day, firstDayOfWeek);
  }

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek firstDayOfWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek firstDayOfWeek) const override;

 public:
  friend bool operator==(const QuandaDaysOfWeeksDateMask& lhs,
                         const QuandaDaysOfWeeksDateMask& rhs) noexcept {
    return lhs.daysOfWeek_ == rhs.daysOfWeek_ && lhs.cycle_ == rhs.cycle_;
  }

 private:
  QuandaDayOfGregorianWeekSet daysOfWeek_;
  QuandaWeekCycle cycle_;
};

template <>
struct std::hash<QuandaDaysOfWeeksDateMask> {
  std::size_t operator()(const QuandaDaysOfWeeksDateMask& mask) const noexcept {
    return keel::hashFields(mask.anchorDate(), mask.daysOfWeekSet(), mask.weekCycleLength(),
                            mask.cycle().pattern());
  }
};

// {"anchorDate": yyyymmdd, "daysOfWeek": [...], "weeks": [...]}; an empty "weeks" throws
// KeelDecodingError.
template <>
struct nlohmann::adl_serializer<QuandaDaysOfWeeksDateMask> {
  static void to_json(nlohmann::json& json, const QuandaDaysOfWeeksDateMask& mask);
  static QuandaDaysOfWeeksDateMask from_json(const nlohmann::json& json);
};
