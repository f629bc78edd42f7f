// KeelDoubleDomain: a closed domain of doubles, such as the fractional seconds of a minute.
// The same operations as KeelDomain<double>; NaN lies in no domain.
#pragma once

#include "Keel/KeelDomain.h"

class KeelDoubleDomain : public KeelDomain<double> {
 public:
  using KeelDomain<double>::KeelDomain;
  constexpr KeelDoubleDomain(const KeelDomain<double>& domain) : KeelDomain<double>(domain) {}
};

template <>
struct std::hash<KeelDoubleDomain> {
  std::size_t operator()(const KeelDoubleDomain& domain) const noexcept {
    return keel::hashCombine(keel::hashDouble(domain.min()), keel::hashDouble(domain.max()));
  }
};
