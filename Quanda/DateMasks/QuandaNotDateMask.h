// QuandaNotDateMask: the dates another mask does not match ("not on holidays").
//
// Searching it is searching the inner mask for the other answer, which every mask supports, so
// finding the next date outside a long holiday range is one jump past the range's end, not a walk
// through it. The not of a month-local mask is month-local (its month day sets are the
// complement), so it searches month by month itself. Its domain, answer runs and periods are the
// inner mask's, and its answer words their inverse. The inner mask is shared and immutable; a
// null mask is a programming error.
//
//   QuandaNotDateMask notHolidays(std::make_shared<QuandaDateRangeDateMask>(summer));
//   // archived as {"mask": {"kind": "dateRange", "mask": {"dateRangeInc": {...}}}}
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"

class QuandaNotDateMask final : public QuandaDateMaskBase<QuandaNotDateMask> {
 public:
  static constexpr std::string_view kind = "not";

  explicit QuandaNotDateMask(std::shared_ptr<const QuandaDateMasking> mask);

  const std::shared_ptr<const QuandaDateMasking>& mask() const noexcept { return mask_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return !mask_->matches(date, firstDayOfWeek);
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block,
                           std::uint64_t care) const override {
    if (monthDaySets() != nullptr) return QuandaDateMasking::answerWord(block, care);
    return ~mask_->answerWord(block, care);
  }
  std::uint32_t answerWordCost() const override {
    return monthDaySets() != nullptr ? 1 : mask_->answerWordCost();
  }
  quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                     QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    return mask_->answerRun(day, firstDayOfWeek);
  }

 protected:
  std::optional<std::uint32_t> findEarliest(
      bool matching, std::uint32_t first, std::uint32_t last,
      QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    if (monthDaySets() != nullptr) {
      return QuandaDateMasking::findEarliest(matching, first, last, firstDayOfWeek);
    }
    return mask_->earliestDayCount(!matching, first, last, firstDayOfWeek);
  }
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    if (monthDaySets() != nullptr) {
      return QuandaDateMasking::findLatest(matching, first, last, firstDayOfWeek);
    }
    return mask_->latestDayCount(!matching, first, last, firstDayOfWeek);
  }

 public:
  friend bool operator==(const QuandaNotDateMask& lhs, const QuandaNotDateMask& rhs) {
    return lhs.mask_->isEqual(*rhs.mask_);
  }

 private:
  std::shared_ptr<const QuandaDateMasking> mask_;
};

template <>
struct std::hash<QuandaNotDateMask> {
  std::size_t operator()(const QuandaNotDateMask& mask) const noexcept {
    return keel::hashCombine(0x6e6f74, mask.mask()->hashValue());
  }
};

// {"mask": <the inner mask in tagged form>}.
template <>
struct nlohmann::adl_serializer<QuandaNotDateMask> {
  static void to_json(nlohmann::json& json, const QuandaNotDateMask& mask);
  static QuandaNotDateMask from_json(const nlohmann::json& json);
};
