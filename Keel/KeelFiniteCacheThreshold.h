// KeelFiniteCacheThreshold<UInt>: the bound of a KeelLazyFiniteCountCache, the greatest number of
// entries the cache keeps at once.
//
// A named type rather than a bare count, so that a cache's bound cannot be mixed up with another
// number at a call site:
//
//   KeelLazyFiniteCountCache<Key, std::string> cache(keelNow, false, produce,
//                                                    KeelFiniteCacheThreshold(200u));
//
// A bound of 0 is valid and means the cache keeps nothing.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "Keel/KeelHash.h"

template <std::unsigned_integral UInt>
class KeelFiniteCacheThreshold {
 public:
  constexpr explicit KeelFiniteCacheThreshold(UInt maxCount) noexcept : maxCount_(maxCount) {}

  constexpr UInt maxCount() const noexcept { return maxCount_; }

  std::string description() const { return std::to_string(maxCount_) + " entries"; }

  friend constexpr bool operator==(const KeelFiniteCacheThreshold&,
                                   const KeelFiniteCacheThreshold&) = default;
  friend constexpr auto operator<=>(const KeelFiniteCacheThreshold&,
                                    const KeelFiniteCacheThreshold&) = default;

 private:
  UInt maxCount_;
};

template <std::unsigned_integral UInt>
std::ostream& operator<<(std::ostream& stream, const KeelFiniteCacheThreshold<UInt>& threshold) {
  return stream << threshold.description();
}

template <std::unsigned_integral UInt>
struct std::hash<KeelFiniteCacheThreshold<UInt>> {
  std::size_t operator()(const KeelFiniteCacheThreshold<UInt>& threshold) const noexcept {
    return keel::hashFields(threshold.maxCount());
  }
};
