// QuandaAbstractDateDomainSplit: a date range cut at a date into a lesser and a greater part.
//
// The result of splitAtLesserMax and splitAtGreaterMin (QuandaAbstractDateDomain.h). A cut that
// misses the range leaves it whole on one side (lesserOnly, greaterOnly); a cut inside it gives
// both parts (lesserAndGreater). Callers read it through lesser() and greater(), each of which is
// empty when its side is; kind() names the case for a switch.
//
//   const auto split = splitAtLesserMax(range, today);
//   if (split.lesser()) archive(*split.lesser());    // the dates up to and including today
//   if (split.greater()) schedule(*split.greater());  // the dates after today
//
// Every part the splitting functions produce runs from its earlier to its later date, whatever
// order the split range's bounds were given in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "Keel/KeelDomain.h"
#include "Keel/KeelHash.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"

class QuandaAbstractDateDomainSplit {
 public:
  using Domain = KeelDomain<QuandaAbstractDate>;

  enum class Kind : std::uint8_t { lesserOnly, greaterOnly, lesserAndGreater };

  // The whole range lies on the lesser side.
  static constexpr QuandaAbstractDateDomainSplit lesserOnly(const Domain& domain) noexcept {
    return {domain, std::nullopt};
  }
  // The whole range lies on the greater side.
  static constexpr QuandaAbstractDateDomainSplit greaterOnly(const Domain& domain) noexcept {
    return {std::nullopt, domain};
  }
  // The range is cut in two.
  static constexpr QuandaAbstractDateDomainSplit lesserAndGreater(const Domain& lesser,
                                                                  const Domain& greater) noexcept {
    return {lesser, greater};
  }

  constexpr Kind kind() const noexcept {
    if (!greater_) return Kind::lesserOnly;
    if (!lesser_) return Kind::greaterOnly;
    return Kind::lesserAndGreater;
  }
  // The lesser part: the payload of lesserOnly and lesserAndGreater, nothing for greaterOnly.
  constexpr const std::optional<Domain>& lesser() const noexcept { return lesser_; }
  // The greater part: the payload of greaterOnly and lesserAndGreater, nothing for lesserOnly.
  constexpr const std::optional<Domain>& greater() const noexcept { return greater_; }

  // "lesserOnly(2024-03-01...2024-03-05)", "lesserAndGreater(2024-03-01...2024-03-02,
  // 2024-03-03...2024-03-05)".
  std::string description() const {
    const auto text = [](const Domain& domain) {
      return domain.min().description() + "..." + domain.max().description();
    };
    switch (kind()) {
      case Kind::lesserOnly:
        return "lesserOnly(" + text(*lesser_) + ")";
      case Kind::greaterOnly:
        return "greaterOnly(" + text(*greater_) + ")";
      case Kind::lesserAndGreater:
        break;
    }
    return "lesserAndGreater(" + text(*lesser_) + ", " + text(*greater_) + ")";
  }

  friend constexpr bool operator==(const QuandaAbstractDateDomainSplit&,
                                   const QuandaAbstractDateDomainSplit&) noexcept = default;

 private:
  constexpr QuandaAbstractDateDomainSplit(std::optional<Domain> lesser,
                                          std::optional<Domain> greater) noexcept
      : lesser_(lesser), greater_(greater) {}

  // At least one is present; kind() is which.
  std::optional<Domain> lesser_;
  std::optional<Domain> greater_;
};

inline std::ostream& operator<<(std::ostream& stream, const QuandaAbstractDateDomainSplit& split) {
  return stream << split.description();
}

template <>
struct std::hash<QuandaAbstractDateDomainSplit> {
  std::size_t operator()(const QuandaAbstractDateDomainSplit& split) const noexcept {
    return keel::hashFields(split.lesser(), split.greater());
  }
};
