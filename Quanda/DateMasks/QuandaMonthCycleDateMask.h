// QuandaMonthCycleDateMask: a pattern of whole months repeated with a fixed period from the month
// of an anchor date (every third month; every other year as every 24 months).
//
// Every day of a month whose entry is true matches. Months are counted from January of year 1
// (month count (year - 1) * 12 + month - 1), entry 0 is the anchor's month, and the cycle runs
// both ways from it as a day cycle does (QuandaCountCycle): a month count below the anchor's
// residue (anchor mod n, only in the first n months after 0001-01) reads entry 0. Combined with a
// rule within the month it gives the monthly and yearly rules of a calendar: every three months
// on the 15th is all of (this, QuandaDaysOfMonthDateMask{15}).
//
// The test is one remainder and one bit on the month count; the next month with an entry is
// found a word of 64 entries at a time, and the answers of 64 days are the entries of the (at
// most four) months they touch. Its answers repeat after the least common multiple of n and the
// 4800 months of the 400-year calendar cycle, which the combinations use to end their searches.
//
// The cycle length is the number of entries, not archived but derived again; an empty pattern is
// a programming error of the constructor and a decoding error of the archive.
//
//   QuandaMonthCycleDateMask quarterly(anchor, {true, false, false});
//   // archived as {"anchorDate": 20240115, "months": [true, false, false]}
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

class QuandaMonthCycleDateMask final : public QuandaDateMaskBase<QuandaMonthCycleDateMask> {
 public:
  static constexpr std::string_view kind = "monthCycle";

  // An empty `months`, or more entries than 32 bits count, is a programming error.
  QuandaMonthCycleDateMask(QuandaAbstractDate anchorDate, const std::vector<bool>& months);

  QuandaAbstractDate anchorDate() const noexcept { return anchorDate_; }
  std::uint32_t monthCycleLength() const noexcept { return months_.pattern().length(); }
  std::vector<bool> months() const { return months_.pattern().toVector(); }
  const QuandaCyclePattern& monthPattern() const noexcept { return months_.pattern(); }

  // The months from January of year 1 to the date's month.
  static constexpr std::uint32_t monthCount(QuandaAbstractDate date) noexcept {
    return (date.year() - 1U) * 12U + (date.month() - 1U);
  }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return months_.entryOf(monthCount(date));
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override {
    return block.daysOfMonths(months_.entriesFrom(block.monthsSinceDatum()));
  }
  std::uint32_t answerWordCost() const override { return 2; }
  // Entry 0 below the residue's month, then the period of lcm(n, 4800) months.
  quanda_detail::AnswerRun answerRun(std::uint32_t day, QuandaDayOfGregorianWeek) const override;

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override;

 public:
  friend bool operator==(const QuandaMonthCycleDateMask& lhs,
                         const QuandaMonthCycleDateMask& rhs) noexcept {
    return lhs.anchorDate_ == rhs.anchorDate_ && lhs.months_ == rhs.months_;
  }

 private:
  QuandaAbstractDate anchorDate_;
  QuandaCountCycle months_;
};

template <>
struct std::hash<QuandaMonthCycleDateMask> {
  std::size_t operator()(const QuandaMonthCycleDateMask& mask) const noexcept {
    return keel::hashFields(mask.anchorDate(), mask.monthCycleLength(), mask.monthPattern());
  }
};

// {"anchorDate": yyyymmdd, "months": [...]}; an empty "months" throws KeelDecodingError.
template <>
struct nlohmann::adl_serializer<QuandaMonthCycleDateMask> {
  static void to_json(nlohmann::json& json, const QuandaMonthCycleDateMask& mask);
  static QuandaMonthCycleDateMask from_json(const nlohmann::json& json);
};
