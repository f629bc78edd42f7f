// QuandaWeekCycleDateMask: a pattern of whole weeks repeated with a fixed period from the week of
// an anchor date (every other week; three weeks on, one off).
//
// Every day of a week whose entry is true matches. Weeks begin on the preferred first day of the
// week passed to each call, so the answer can change with it. Entry 0 is the anchor's week; see
// QuandaWeekCycle for the counting, and for the first weeks after 0001-01-01 where testing a date
// is a programming error: the mask's domain starts after them.
//
// The cycle length is the number of entries, not archived but derived again; an empty pattern is
// a programming error of the constructor and a decoding error of the archive.
//
//   QuandaWeekCycleDateMask everyOtherWeek(anchor, {true, false});
//   // archived as {"anchorDate": 20240103, "weeks": [true, false]}
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <vector>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"
#include "Quanda/DateMasks/QuandaWeekCycle.h"

class QuandaWeekCycleDateMask final : public QuandaDateMaskBase<QuandaWeekCycleDateMask> {
 public:
  static constexpr std::string_view kind = "weekCycle";

  // An empty `weeks`, or more entries than 32 bits count, is a programming error.
  QuandaWeekCycleDateMask(QuandaAbstractDate anchorDate, const std::vector<bool>& weeks)
      : cycle_(anchorDate, weeks) {
    setDomainStarts(cycle_.firstDaysWithEntry());
  }

  QuandaAbstractDate anchorDate() const noexcept { return cycle_.anchorDate(); }
  std::uint32_t weekCycleLength() const noexcept { return cycle_.length(); }
  std::vector<bool> weeks() const { return cycle_.pattern().toVector(); }
  const QuandaWeekCycle& cycle() const noexcept { return cycle_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return cycle_.entryOf(date.daysSinceDatum(), firstDayOfWeek);
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override {
    return cycle_.daysWithEntry(block);
  }
  std::uint32_t answerWordCost() const override { return 2; }
  quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                     QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return cycle_.answerRun(day, firstDayOfWeek);
  }

 protected:
  std::optional<std::uint32_t> findEarliest(
      bool matching, std::uint32_t first, std::uint32_t last,
      QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return cycle_.earliestDayWithEntry(matching, first, last, firstDayOfWeek);
  }
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return cycle_.latestDayWithEntry(matching, first, last, firstDayOfWeek);
  }

 public:
  friend bool operator==(const QuandaWeekCycleDateMask& lhs,
                         const QuandaWeekCycleDateMask& rhs) noexcept {
    return lhs.cycle_ == rhs.cycle_;
  }

 private:
  QuandaWeekCycle cycle_;
};

template <>
struct std::hash<QuandaWeekCycleDateMask> {
  std::size_t operator()(const QuandaWeekCycleDateMask& mask) const noexcept {
    return std::hash<QuandaWeekCycle>{}(mask.cycle());
  }
};

// {"anchorDate": yyyymmdd, "weeks": [...]}; an empty "weeks" throws KeelDecodingError.
template <>
struct nlohmann::adl_serializer<QuandaWeekCycleDateMask> {
  static void to_json(nlohmann::json& json, const QuandaWeekCycleDateMask& mask);
  static QuandaWeekCycleDateMask from_json(const nlohmann::json& json);
};
