// QuandaJunctionDateMask: the dates that all of several masks match, or any of them
// (QuandaAllOfDateMask, QuandaAnyOfDateMask), so that rules combine: "every Monday except during
// the holidays" is all of (Mondays, not (holidays)).
//
// All of no masks matches every date; any of no masks matches none. The masks are shared and
// immutable, tested in the order given (put the cheap or selective ones first); a null mask is a
// programming error. The combination's domain is the intersection of the masks' domains: matches
// checks it before asking any mask, so a date before a week cycle's first residue stops the
// process whatever the order of the masks, and the searches never report such a date.
//
// Searching: when every mask is month-local (weekdays, days and weeks of the month, and their
// combinations), so is the combination: its month day sets are the AND (all of) or the OR (any of)
// of theirs, made once here, and "Friday the 13th" is found by walking month by month.
//
// Otherwise the combination is searched word-parallel (see QuandaDateMasking): for each block of
// 64 days it ANDs (ORs) the answer words of its masks, its month-local masks merged into one set
// of days read first, and asks a mask for its word only while some day of the block is still
// undecided, as matches stops at the first mask that decides. A block thus costs no more than
// reading its 64 days one by one, and usually a few word operations. The combination is periodic
// between the break points of its masks (the ends of date ranges, the first residues of cycles),
// with the least common multiple of their periods; one period read without the answer settles
// the rest of the run. So "every 2 days from one anchor and every 2 days from the next" knows
// after one block that it never matches, and no search reads a window more than once.
//
// clang-format off
//   QuandaAllOfDateMask mondaysOutsideHolidays(
//       {mondays, std::make_shared<QuandaNotDateMask>(holidays)});
//   // archived as {"masks": [{"kind": "daysOfWeek", "mask": ["monday"]}, {"kind": "not", ...}]}
// clang-format on
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <vector>

#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskBase.h"

enum class QuandaJunction { allOf, anyOf };

template <QuandaJunction junction>
class QuandaJunctionDateMask final : public QuandaDateMaskBase<QuandaJunctionDateMask<junction>> {
 public:
  static constexpr std::string_view kind = junction == QuandaJunction::allOf ? "allOf" : "anyOf";

  explicit QuandaJunctionDateMask(std::vector<std::shared_ptr<const QuandaDateMasking>> masks);

  const std::vector<std::shared_ptr<const QuandaDateMasking>>& masks() const noexcept {
    return masks_;
  }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDayOfWeek) const override {
    const std::uint32_t domainStart = this->domainStart(firstDayOfWeek);
    KEEL_PRECONDITION(domainStart == 0 || date.daysSinceDatum() >= domainStart,
                      quanda_detail::dateBeforeDomainMessage);
    for (const auto& mask : masks_) {
      if (mask->matches(date, firstDayOfWeek) != (junction == QuandaJunction::allOf)) {
        return junction == QuandaJunction::anyOf;
      }
    }
    return junction == QuandaJunction::allOf;
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t care) const override;
  std::uint32_t answerWordCost() const override { return answerWordCost_; }
  // The intersection of the masks' runs, with the least common multiple of their periods.
  quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                     QuandaDayOfGregorianWeek firstDayOfWeek) const override;

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek firstDayOfWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek firstDayOfWeek) const override;

 public:
  friend bool operator==(const QuandaJunctionDateMask& lhs, const QuandaJunctionDateMask& rhs) {
    if (lhs.masks_.size() != rhs.masks_.size()) return false;
    for (std::size_t index = 0; index < lhs.masks_.size(); ++index) {
      if (!lhs.masks_[index]->isEqual(*rhs.masks_[index])) return false;
    }
    return true;
  }

 private:
  std::vector<std::shared_ptr<const QuandaDateMasking>> masks_;
  // The masks as the word-parallel reading takes them, when the combination is not month-local:
  // the month-local ones merged into one set of days (if any), then the others, cheapest first.
  quanda_detail::MonthDaySets monthLocalPart_;
  bool hasMonthLocalPart_ = false;
  std::vector<const QuandaDateMasking*> otherParts_;  // cheapest first
  std::uint32_t answerWordCost_ = 1;
};

using QuandaAllOfDateMask = QuandaJunctionDateMask<QuandaJunction::allOf>;
using QuandaAnyOfDateMask = QuandaJunctionDateMask<QuandaJunction::anyOf>;

template <QuandaJunction junction>
struct std::hash<QuandaJunctionDateMask<junction>> {
  std::size_t operator()(const QuandaJunctionDateMask<junction>& mask) const noexcept {
    std::size_t seed = std::hash<int>{}(static_cast<int>(junction));
    for (const auto& inner : mask.masks()) seed = keel::hashCombine(seed, inner->hashValue());
    return seed;
  }
};

// {"masks": [<each mask in tagged form>, ...]}.
template <QuandaJunction junction>
struct nlohmann::adl_serializer<QuandaJunctionDateMask<junction>> {
  static void to_json(nlohmann::json& json, const QuandaJunctionDateMask<junction>& mask);
  static QuandaJunctionDateMask<junction> from_json(const nlohmann::json& json);
};
