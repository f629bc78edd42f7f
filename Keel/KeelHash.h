// Hash combination for the library's value types: fields are folded in their declared order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace keel {

inline constexpr std::size_t hashCombine(std::size_t seed, std::size_t value) noexcept {
  // std::hash passes integers through unchanged, and the golden-ratio fold alone maps many
  // combinations of small fields (day, month, year) to the same seed. The value is therefore
  // first spread over all bits with the splitmix64 finaliser, then folded in.
  std::uint64_t mixed = value;
  mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
  mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
  mixed ^= mixed >> 31;
  return seed ^
         (static_cast<std::size_t>(mixed) + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
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
