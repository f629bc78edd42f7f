// QuandaJunctionDateMask: the dates that all of several masks match, or any of them
// (QuandaAllOfDateMask, QuandaAnyOfDateMask), so that rules combine: "every Monday except during
// the holidays" is all of (Mondays, not (holidays)).
//
// All of no masks matches every date; any of no masks matches none. The masks are shared and
// immutable, tested in the order given (put the cheap or selective ones first); a null mask is a
// programming error.
//
// Searching: when every mask is month-local (weekdays, days and weeks of the month, and their
// combinations), so is the combination: its month day sets are the AND (all of) or the OR (any of)
// of theirs, made once here, and "Friday the 13th" is found by walking month by month.
//
// Otherwise, a date that any one of the masks gives (a match for any-of, a miss for all-of) is the
// earliest such date over the masks, one search each. A date that every mask must give is found
// by leapfrogging: each mask in turn jumps to its own next candidate from the current one, until a
// full round of masks agrees on a date. Every step is a mask's own search, and each jump that
// does not agree moves forward, so the work is bounded by the number of disagreements, not by the
// number of days; a window with no common date ends the search at its end. Masks that never agree
// on anything (two disjoint date cycles) make the leapfrog run through the window jump by jump: a
// search up to 9999-12-31 then takes a few milliseconds, never a scan.
//
//   QuandaAllOfDateMask mondaysOutsideHolidays({mondays,
//   std::make_shared<QuandaNotDateMask>(holidays)});
//   // archived as {"masks": [{"kind": "daysOfWeek", "mask": ["monday"]}, {"kind": "not", ...}]}
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <vector>

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
    for (const auto& mask : masks_) {
      if (mask->matches(date, firstDayOfWeek) != (junction == QuandaJunction::allOf)) {
        return junction == QuandaJunction::anyOf;
      }
    }
    return junction == QuandaJunction::allOf;
  }

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
  // Whether a date giving `matching` needs every mask to give it (else any one mask will do).
  static constexpr bool needsEvery(bool matching) noexcept {
    return matching == (junction == QuandaJunction::allOf);
  }

  std::vector<std::shared_ptr<const QuandaDateMasking>> masks_;
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
