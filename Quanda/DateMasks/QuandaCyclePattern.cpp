#include "Quanda/DateMasks/QuandaCyclePattern.h"

#include <bit>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelHash.h"

QuandaCyclePattern::QuandaCyclePattern(const std::vector<bool>& entries)
    : length_(keel::checkedNarrow<std::uint32_t>(entries.size())) {
  const std::uint64_t extended = std::uint64_t{length_} + 64;
  words_.resize(extended / 64 + 1);
  for (std::uint32_t index = 0; index < length_; ++index) trueCount_ += entries[index] ? 1 : 0;
  if (length_ == 0) return;
  reciprocal_ = ~std::uint64_t{0} / length_ + 1;
  for (std::uint64_t index = 0, entry = 0; index < extended; ++index) {
    if (entries[entry]) words_[index >> 6] |= std::uint64_t{1} << (index & 63U);
    if (++entry == length_) entry = 0;
  }
}

std::uint64_t QuandaCyclePattern::findForward(bool value, std::uint64_t from,
                                              std::uint64_t to) const noexcept {
  for (std::uint64_t index = from; index <= to;) {
    const std::uint64_t word = value ? words_[index >> 6] : ~words_[index >> 6];
    const std::uint64_t ahead = word >> (index & 63U);
    if (ahead != 0) {
      const std::uint64_t found = index + std::countr_zero(ahead);
      return found <= to ? found : to + 1;
    }
    index = (index | 63U) + 1;
  }
  return to + 1;
}

std::int64_t QuandaCyclePattern::findBackward(bool value, std::int64_t from,
                                              std::int64_t to) const noexcept {
  for (std::int64_t index = to; index >= from;) {
    const std::uint64_t word = value ? words_[index >> 6] : ~words_[index >> 6];
    const std::uint64_t behind = word << (63U - (static_cast<std::uint64_t>(index) & 63U));
    if (behind != 0) {
      const std::int64_t found = index - std::countl_zero(behind);
      return found >= from ? found : from - 1;
    }
    index = (index & ~std::int64_t{63}) - 1;
  }
  return from - 1;
}

std::uint32_t QuandaCyclePattern::distanceToNext(bool value, std::uint32_t index) const noexcept {
  const std::uint64_t last = length_ - 1U;
  const std::uint64_t found = findForward(value, index, last);
  if (found <= last) return static_cast<std::uint32_t>(found - index);
  return static_cast<std::uint32_t>(findForward(value, 0, last) + length_ - index);
}

std::uint32_t QuandaCyclePattern::distanceToPrevious(bool value,
                                                     std::uint32_t index) const noexcept {
  const std::int64_t found = findBackward(value, 0, index);
  if (found >= 0) return static_cast<std::uint32_t>(index - found);
  return static_cast<std::uint32_t>(index + length_ - findBackward(value, 0, length_ - 1));
}

std::vector<bool> QuandaCyclePattern::toVector() const {
  std::vector<bool> entries(length_);
  for (std::uint32_t index = 0; index < length_; ++index) entries[index] = (*this)[index];
  return entries;
}

std::size_t std::hash<QuandaCyclePattern>::operator()(
    const QuandaCyclePattern& pattern) const noexcept {
  std::size_t seed = std::hash<std::uint32_t>{}(pattern.length());
  for (std::uint32_t index = 0; index < pattern.length(); ++index) {
    seed = keel::hashCombine(seed, pattern[index]);
  }
  return seed;
}
