// QuandaDateRangesDateMask: the dates inside any of several closed date ranges (a list of
// holiday or exception periods).
//
// The ranges are kept sorted by lower bound in a KeelRangeSequence, as given otherwise: they may
// overlap, touch or repeat, and equality and hashing are the sequence's. A date matches when some
// range holds it, both ends included, which the sequence answers in logarithmic time. For the
// searches the mask also keeps the ranges merged into disjoint day-count intervals, so the next
// date inside (or outside) the ranges is one binary search away however long the list. No ranges
// match no date.
//
//   QuandaDateRangesDateMask holidays({{julyFirst, julyFourteenth}, {christmasEve, boxingDay}});
//   // archived as {"dateRanges": [{"lowerBound": 20240701, "upperBound": 20240714}, ...]}
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "Keel/KeelClosedRange.h"
#include "Keel/KeelRangeSequence.h"
#include "Quanda/DateMasks/QuandaDateMaskBase.h"

class QuandaDateRangesDateMask final : public QuandaDateMaskBase<QuandaDateRangesDateMask> {
 public:
  static constexpr std::string_view kind = "dateRanges";
  using Range = KeelClosedRange<QuandaAbstractDate>;

  explicit QuandaDateRangesDateMask(KeelRangeSequence<QuandaAbstractDate> dateRanges);
  // Sorts the ranges (KeelClosedRange::areInIncreasingOrder, default search threshold) into the
  // sequence.
  explicit QuandaDateRangesDateMask(std::vector<Range> dateRanges);

  const KeelRangeSequence<QuandaAbstractDate>& dateRanges() const noexcept { return dateRanges_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return dateRanges_.contains(date);
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override;
  std::uint32_t answerWordCost() const override { return 1; }
  // One answer inside each merged range and between two of them.
  quanda_detail::AnswerRun answerRun(std::uint32_t day, QuandaDayOfGregorianWeek) const override;

  friend bool operator==(const QuandaDateRangesDateMask& lhs, const QuandaDateRangesDateMask& rhs) {
    return lhs.dateRanges_ == rhs.dateRanges_;
  }

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override;

 private:
  using Interval = std::pair<std::uint32_t, std::uint32_t>;  // first and last day count

  // The index of the first merged interval that ends at or after day (size() if none).
  std::size_t firstEndingFrom(std::uint32_t day) const;

  KeelRangeSequence<QuandaAbstractDate> dateRanges_;
  std::shared_ptr<const std::vector<Interval>> merged_;  // disjoint, not touching, increasing
};

template <>
struct std::hash<QuandaDateRangesDateMask> {
  std::size_t operator()(const QuandaDateRangesDateMask& mask) const noexcept {
    return std::hash<KeelRangeSequence<QuandaAbstractDate>>{}(mask.dateRanges());
  }
};

// {"dateRanges": [{"lowerBound": yyyymmdd, "upperBound": yyyymmdd}, ...]}, in sorted order. A
// range whose lower bound is above its upper bound throws KeelDecodingError.
template <>
struct nlohmann::adl_serializer<QuandaDateRangesDateMask> {
  static void to_json(nlohmann::json& json, const QuandaDateRangesDateMask& mask);
  static QuandaDateRangesDateMask from_json(const nlohmann::json& json);
};
