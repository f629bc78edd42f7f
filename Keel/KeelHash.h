// Hash combination for the library's value types: fields are folded in their declared order.
#pragma once

#include <cstddef>
#include <functional>

namespace keel {

inline constexpr std::size_t hashCombine(std::size_t seed, std::size_t value) noexcept {
  // The 64-bit golden-ratio mix: cheap, and spreads small consecutive fields well.
  return seed ^ (value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

// Hashes a double so that -0.0 and +0.0, which compare equal, hash alike.
inline std::size_t hashDouble(double value) noexcept {
  return std::hash<double>{}(value == 0.0 ? 0.0 : value);
}

template <class... Fields>
std::size_t hashFields(const Fields&... fields) noexcept {
  std::size_t seed = 0;
  ((seed = hashCombine(seed, std::hash<Fields>{}(fields))), ...);
  return seed;
}

}  // namespace keel
