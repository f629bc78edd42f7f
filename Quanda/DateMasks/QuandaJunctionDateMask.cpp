#include "Quanda/DateMasks/QuandaJunctionDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {

using Masks = std::vector<std::shared_ptr<const QuandaDateMasking>>;

// The searches below run in either direction. `searchFrom(mask, bound)` asks one mask for its
// nearest wanted day from `bound` on (towards the window's far end), and `end` is the window's
// near end, where a search cannot do better.

// The nearest day on which every mask gives the wanted answer: each mask in turn moves the
// candidate to its own nearest such day from the candidate on, until all agree.
template <class SearchFrom>
std::optional<std::uint32_t> nearestOfEvery(const Masks& masks, std::uint32_t start,
                                            const SearchFrom& searchFrom) {
  if (masks.empty()) return start;
  std::uint32_t candidate = start;
  std::size_t agreeing = 0;
  for (std::size_t index = 0;; index = (index + 1) % masks.size()) {
    const auto found = searchFrom(*masks[index], candidate);
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

// The nearest day on which some mask gives the wanted answer; each later mask only searches up to
// (short of) the best day found so far. `searchBefore(mask, best)` searches the window short of
// `best`, or the whole window when there is none yet.
template <class SearchBefore>
std::optional<std::uint32_t> nearestOfAny(const Masks& masks, std::uint32_t end,
                                          const SearchBefore& searchBefore) {
  std::optional<std::uint32_t> best;
  for (const auto& mask : masks) {
    if (const auto found = searchBefore(*mask, best)) {
      best = found;
      if (*best == end) break;
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
  if (needsEvery(matching)) {
    return nearestOfEvery(masks_, first, [&](const QuandaDateMasking& mask, std::uint32_t from) {
      return mask.earliestDayCount(matching, from, last, firstDayOfWeek);
    });
  }
  return nearestOfAny(masks_, first, [&](const QuandaDateMasking& mask, auto best) {
    return mask.earliestDayCount(matching, first, best ? *best - 1 : last, firstDayOfWeek);
  });
}

template <QuandaJunction junction>
std::optional<std::uint32_t> QuandaJunctionDateMask<junction>::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (this->monthDaySets() != nullptr) {
    return QuandaDateMasking::findLatest(matching, first, last, firstDayOfWeek);
  }
  if (needsEvery(matching)) {
    return nearestOfEvery(masks_, last, [&](const QuandaDateMasking& mask, std::uint32_t through) {
      return mask.latestDayCount(matching, first, through, firstDayOfWeek);
    });
  }
  return nearestOfAny(masks_, last, [&](const QuandaDateMasking& mask, auto best) {
    return mask.latestDayCount(matching, best ? *best + 1 : first, last, firstDayOfWeek);
  });
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
