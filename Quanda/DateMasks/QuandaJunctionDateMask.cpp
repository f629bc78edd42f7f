#include "Quanda/DateMasks/QuandaJunctionDateMask.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {
using Masks = std::vector<std::shared_ptr<const QuandaDateMasking>>;
}  // namespace

template <QuandaJunction junction>
QuandaJunctionDateMask<junction>::QuandaJunctionDateMask(Masks masks) : masks_(std::move(masks)) {
  constexpr bool allOf = junction == QuandaJunction::allOf;
  const auto combine = [](const quanda_detail::MonthDaySets& lhs,
                          const quanda_detail::MonthDaySets& rhs) {
    return allOf ? lhs & rhs : lhs | rhs;
  };
  monthLocalPart_ =
      allOf ? quanda_detail::MonthDaySets::everyDay() : quanda_detail::MonthDaySets::noDay();
  std::array<std::uint32_t, 7> domainStarts{};
  for (const auto& mask : masks_) {
    KEEL_PRECONDITION(mask != nullptr, "a combination of date masks cannot hold a null mask");
    if (const auto* sets = mask->monthDaySets()) {
      monthLocalPart_ = combine(monthLocalPart_, *sets);
      hasMonthLocalPart_ = true;
    } else {
      otherParts_.push_back(mask.get());
    }
    const auto& starts = QuandaDateMasking::domainStartsOf(*mask);
    for (std::size_t day = 0; day < starts.size(); ++day) {
      domainStarts[day] = std::max(domainStarts[day], starts[day]);
    }
  }
  this->setDomainStarts(domainStarts);
  if (otherParts_.empty()) {
    this->setMonthDaySets(monthLocalPart_);
    return;
  }
  std::stable_sort(otherParts_.begin(), otherParts_.end(),
                   [](const QuandaDateMasking* lhs, const QuandaDateMasking* rhs) {
                     return lhs->answerWordCost() < rhs->answerWordCost();
                   });
  answerWordCost_ = hasMonthLocalPart_ ? 1 : 0;
  for (const QuandaDateMasking* part : otherParts_) answerWordCost_ += part->answerWordCost();
}

// A day stays undecided while every mask read so far gives it the answer that does not settle the
// combination (a match for all of, a miss for any of); a mask is read only for those days.
template <QuandaJunction junction>
std::uint64_t QuandaJunctionDateMask<junction>::answerWord(const quanda_detail::DayBlock& block,
                                                           std::uint64_t care) const {
  if (this->monthDaySets() != nullptr) return QuandaDateMasking::answerWord(block, care);
  constexpr std::uint64_t flip = junction == QuandaJunction::allOf ? 0 : ~std::uint64_t{0};
  std::uint64_t undecided = care;
  if (hasMonthLocalPart_) undecided &= block.monthDays(monthLocalPart_) ^ flip;
  for (const QuandaDateMasking* part : otherParts_) {
    if (undecided == 0) break;
    undecided &= part->answerWord(block, undecided) ^ flip;
  }
  return undecided ^ flip;
}

template <QuandaJunction junction>
quanda_detail::AnswerRun QuandaJunctionDateMask<junction>::answerRun(
    std::uint32_t day, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) return QuandaDateMasking::answerRun(day, firstDayOfWeek);
  quanda_detail::AnswerRun run{0, QuandaAbstractDate::validDaysSinceDatumRange.max(),
                               hasMonthLocalPart_ ? monthLocalPart_.period() : 1};
  for (const QuandaDateMasking* part : otherParts_) {
    const quanda_detail::AnswerRun partRun = part->answerRun(day, firstDayOfWeek);
    run.first = std::max(run.first, partRun.first);
    run.last = std::min(run.last, partRun.last);
    run.period = quanda_detail::combinedPeriod(run.period, partRun.period);
  }
  return run;
}

template <QuandaJunction junction>
std::optional<std::uint32_t> QuandaJunctionDateMask<junction>::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) {
    return QuandaDateMasking::findEarliest(matching, first, last, firstDayOfWeek);
  }
  return this->findEarliestByWords(matching, first, last, firstDayOfWeek);
}

template <QuandaJunction junction>
std::optional<std::uint32_t> QuandaJunctionDateMask<junction>::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) {
    return QuandaDateMasking::findLatest(matching, first, last, firstDayOfWeek);
  }
  return this->findLatestByWords(matching, first, last, firstDayOfWeek);
}

template <QuandaJunction junction>
void nlohmann::adl_serializer<QuandaJunctionDateMask<junction>>::to_json(
    nlohmann::json& json, const QuandaJunctionDateMask<junction>& mask) {
  nlohmann::json masks = nlohmann::json::array();
  for (const auto& inner : mask.masks()) masks.push_back(encodeTaggedDateMask(*inner));
  json = {{"masks", std::move(masks)}};
}

template <QuandaJunction junction>
QuandaJunctionDateMask<junction>
nlohmann::adl_serializer<QuandaJunctionDateMask<junction>>::from_json(const nlohmann::json& json) {
  Masks masks;
  for (const nlohmann::json& inner :
       quanda_detail::requireJsonArray(quanda_detail::requireJsonKey(json, "masks"))) {
    masks.push_back(decodeTaggedDateMask(inner));
  }
  return QuandaJunctionDateMask<junction>(std::move(masks));
}

template class QuandaJunctionDateMask<QuandaJunction::allOf>;
template class QuandaJunctionDateMask<QuandaJunction::anyOf>;
template struct nlohmann::adl_serializer<QuandaAllOfDateMask>;
template struct nlohmann::adl_serializer<QuandaAnyOfDateMask>;
