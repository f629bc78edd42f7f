#include "Quanda/DateMasks/QuandaJunctionDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {

using Masks = std::vector<std::shared_ptr<const QuandaDateMasking>>;

// The earliest day in first...last that every mask gives `answer` on: each mask in turn moves the
// candidate to its own earliest such day from the candidate on, until all agree.
std::optional<std::uint32_t> earliestOfEvery(const Masks& masks, bool answer, std::uint32_t first,
                                             std::uint32_t last,
                                             QuandaDayOfGregorianWeek firstDayOfWeek) {
  if (masks.empty()) return first;
  std::uint32_t candidate = first;
  std::size_t agreeing = 0;
  for (std::size_t index = 0;; index = (index + 1) % masks.size()) {
    const auto found = masks[index]->earliestDayCount(answer, candidate, last, firstDayOfWeek);
    if (!found) return std::nullopt;
    if (*found == candidate) {
      ++agreeing;
    } else {
      candidate = *found;
      agreeing = 1;
    }
    if (agreeing == masks.size()) return candidate;
  }
}

std::optional<std::uint32_t> latestOfEvery(const Masks& masks, bool answer, std::uint32_t first,
                                           std::uint32_t last,
                                           QuandaDayOfGregorianWeek firstDayOfWeek) {
  if (masks.empty()) return last;
  std::uint32_t candidate = last;
  std::size_t agreeing = 0;
  for (std::size_t index = 0;; index = (index + 1) % masks.size()) {
    const auto found = masks[index]->latestDayCount(answer, first, candidate, firstDayOfWeek);
    if (!found) return std::nullopt;
    if (*found == candidate) {
      ++agreeing;
    } else {
      candidate = *found;
      agreeing = 1;
    }
    if (agreeing == masks.size()) return candidate;
  }
}

// The earliest day in first...last that some mask gives `answer` on; each later mask only searches
// before the best day found so far.
std::optional<std::uint32_t> earliestOfAny(const Masks& masks, bool answer, std::uint32_t first,
                                           std::uint32_t last,
                                           QuandaDayOfGregorianWeek firstDayOfWeek) {
  std::optional<std::uint32_t> best;
  for (const auto& mask : masks) {
    const std::uint32_t through = best ? *best - 1 : last;
    if (const auto found = mask->earliestDayCount(answer, first, through, firstDayOfWeek)) {
      best = found;
      if (*best == first) break;
    }
  }
  return best;
}

std::optional<std::uint32_t> latestOfAny(const Masks& masks, bool answer, std::uint32_t first,
                                         std::uint32_t last,
                                         QuandaDayOfGregorianWeek firstDayOfWeek) {
  std::optional<std::uint32_t> best;
  for (const auto& mask : masks) {
    const std::uint32_t from = best ? *best + 1 : first;
    if (const auto found = mask->latestDayCount(answer, from, last, firstDayOfWeek)) {
      best = found;
      if (*best == last) break;
    }
  }
  return best;
}

}  // namespace

template <QuandaJunction junction>
QuandaJunctionDateMask<junction>::QuandaJunctionDateMask(Masks masks) : masks_(std::move(masks)) {
  auto sets = junction == QuandaJunction::allOf ? quanda_detail::MonthDaySets::everyDay()
                                                : quanda_detail::MonthDaySets::noDay();
  bool monthLocal = true;
  for (const auto& mask : masks_) {
    KEEL_PRECONDITION(mask != nullptr, "a combination of date masks cannot hold a null mask");
    const auto* inner = mask->monthDaySets();
    if (inner == nullptr) {
      monthLocal = false;
    } else if (monthLocal) {
      sets = junction == QuandaJunction::allOf ? sets & *inner : sets | *inner;
    }
  }
  if (monthLocal) this->setMonthDaySets(sets);
}

template <QuandaJunction junction>
std::optional<std::uint32_t> QuandaJunctionDateMask<junction>::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) {
    return QuandaDateMasking::findEarliest(matching, first, last, firstDayOfWeek);
  }
  return needsEvery(matching) ? earliestOfEvery(masks_, matching, first, last, firstDayOfWeek)
                              : earliestOfAny(masks_, matching, first, last, firstDayOfWeek);
}

template <QuandaJunction junction>
std::optional<std::uint32_t> QuandaJunctionDateMask<junction>::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) {
    return QuandaDateMasking::findLatest(matching, first, last, firstDayOfWeek);
  }
  return needsEvery(matching) ? latestOfEvery(masks_, matching, first, last, firstDayOfWeek)
                              : latestOfAny(masks_, matching, first, last, firstDayOfWeek);
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
