// QuandaDayCycleDateMask: a pattern of days repeated with a fixed period from an anchor day (two
// days on, one day off; every third day).
//
// Entry i of `days` says whether the i-th day of each period matches, the anchor's day being
// entry 0, the day after it entry 1 and the day before it entry n - 1: the cycle runs both ways
// from the anchor. Days are day counts since 0001-01-01 (day 0). For a date whose day count is
// below the anchor's residue (anchor mod n, so only in the first period after 0001-01-01) the entry
// is 0, deliberately.
//
// The cycle length is the number of entries; it is not archived but derived again. An empty
// pattern is a programming error of the constructor (the process stops) and a decoding error of
// the archive. The test is one remainder and one bit; the next match is the nearest wanted entry
// around the pattern, found a word of 64 entries at a time, and the answers of 64 days are the 64
// entries from the first day's.
//
//   QuandaDayCycleDateMask everyThirdDay(anchor.daysSinceDatum(), {true, false, false});
//   // archived as {"anchorDaysSinceDatum": 738886, "days": [true, false, false]}
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <vector>

#include "Keel/KeelHash.h"
#include "Quanda/DateMasks/QuandaCountCycle.h"
#include "Quanda/DateMasks/QuandaDateMaskBase.h"

class QuandaDayCycleDateMask final : public QuandaDateMaskBase<QuandaDayCycleDateMask> {
 public:
  static constexpr std::string_view kind = "dayCycle";

  // An empty `days`, or more entries than 32 bits count, is a programming error.
  QuandaDayCycleDateMask(std::uint32_t anchorDaysSinceDatum, const std::vector<bool>& days);

  std::uint32_t anchorDaysSinceDatum() const noexcept { return days_.anchor(); }
  std::uint32_t dayCycleLength() const noexcept { return days_.pattern().length(); }
  std::vector<bool> days() const { return days_.pattern().toVector(); }
  const QuandaCyclePattern& dayPattern() const noexcept { return days_.pattern(); }

  // The date's entry in the pattern: 0 below the anchor's residue, else (t - residue) mod n.
  std::uint32_t indexOf(std::uint32_t daysSinceDatum) const noexcept {
    return days_.indexOf(daysSinceDatum);
  }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return days_.entryOf(date.daysSinceDatum());
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override {
    return days_.entriesFrom(block.start());
  }
  std::uint32_t answerWordCost() const override { return 2; }
  // Entry 0 below the residue, then the pattern's period.
  quanda_detail::AnswerRun answerRun(std::uint32_t day, QuandaDayOfGregorianWeek) const override;

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override {
    return days_.earliest(matching, first, last);
  }
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override {
    return days_.latest(matching, first, last);
  }

 public:
  friend bool operator==(const QuandaDayCycleDateMask& lhs,
                         const QuandaDayCycleDateMask& rhs) noexcept {
    return lhs.days_ == rhs.days_;
  }

 private:
  QuandaCountCycle days_;
};

template <>
struct std::hash<QuandaDayCycleDateMask> {
  std::size_t operator()(const QuandaDayCycleDateMask& mask) const noexcept {
    return keel::hashFields(mask.anchorDaysSinceDatum(), mask.dayCycleLength(), mask.dayPattern());
  }
};

// {"anchorDaysSinceDatum": n, "days": [...]}; an empty "days" throws KeelDecodingError.
template <>
struct nlohmann::adl_serializer<QuandaDayCycleDateMask> {
  static void to_json(nlohmann::json& json, const QuandaDayCycleDateMask& mask);
  static QuandaDayCycleDateMask from_json(const nlohmann::json& json);
};
