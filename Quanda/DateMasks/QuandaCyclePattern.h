// QuandaCyclePattern: the on/off entries of a cycle mask (two days on, one day off; every other
// week), held as bits.
//
// The cycle masks read one entry per test and, to find their next occurrence, the nearest entry
// of a given value from a position around the cycle, and for the word-parallel searches the 64
// entries that follow a position, wrapping around. Packed 64 entries to a word, that nearest entry
// is a count of trailing (or leading) zeros per word rather than a walk over booleans; the entries
// are followed by the pattern repeated over 64 more, so that any 64 consecutive entries are two
// word reads and a shift. A pattern converts back to the std::vector<bool> it was made from
// (toVector); its length must fit 32 bits, a longer list being a programming error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

class QuandaCyclePattern {
 public:
  explicit QuandaCyclePattern(const std::vector<bool>& entries);

  std::uint32_t length() const noexcept { return length_; }
  // count mod length, by two multiplications with a reciprocal made once rather than a division
  // (the cycles take a remainder for every test and every word). Requires a length above 0.
  std::uint32_t remainder(std::uint32_t count) const noexcept {
    const std::uint64_t fraction = reciprocal_ * count;  // count / length, in 64 fraction bits
    const std::uint64_t low = (fraction & 0xFFFFFFFFU) * length_;
    const std::uint64_t high = (fraction >> 32) * length_;
    return static_cast<std::uint32_t>((high + (low >> 32)) >> 32);
  }
  bool operator[](std::uint32_t index) const noexcept {
    return (words_[index >> 6] >> (index & 63U)) & 1U;
  }
  // Entries index ... index + 63 around the cycle (bit i: entry (index + i) mod length), for
  // index 0 ... length - 1.
  std::uint64_t window(std::uint32_t index) const noexcept {
    const std::uint32_t word = index >> 6;
    const std::uint32_t bit = index & 63U;
    const std::uint64_t low = words_[word] >> bit;
    return bit == 0 ? low : low | words_[word + 1] << (64 - bit);
  }
  // Whether some entry has this value.
  bool containsValue(bool value) const noexcept {
    return value ? trueCount_ != 0 : trueCount_ != length_;
  }
  // The number of steps forward from index (0 ... length - 1) to the nearest entry of this value,
  // wrapping around the end: 0 when entry index itself has it. Requires containsValue(value).
  std::uint32_t distanceToNext(bool value, std::uint32_t index) const noexcept;
  // The number of steps backward from index to the nearest entry of this value, wrapping around
  // the start. Requires containsValue(value).
  std::uint32_t distanceToPrevious(bool value, std::uint32_t index) const noexcept;

  std::vector<bool> toVector() const;

  friend bool operator==(const QuandaCyclePattern& lhs, const QuandaCyclePattern& rhs) noexcept {
    return lhs.length_ == rhs.length_ && lhs.words_ == rhs.words_;
  }

 private:
  // The first (last) index in from...to of an entry of this value, or to + 1 (from - 1) if none.
  std::uint64_t findForward(bool value, std::uint64_t from, std::uint64_t to) const noexcept;
  std::int64_t findBackward(bool value, std::int64_t from, std::int64_t to) const noexcept;

  // The entries, then the pattern again over 64 more entries (entry i at bit i for i < length +
  // 64, reading entry i mod length), then zeros.
  std::vector<std::uint64_t> words_;
  std::uint64_t reciprocal_ = 0;  // 2^64 / length rounded up (wrapping to 0 for length 1)
  std::uint32_t length_ = 0;
  std::uint32_t trueCount_ = 0;
};

template <>
struct std::hash<QuandaCyclePattern> {
  std::size_t operator()(const QuandaCyclePattern& pattern) const noexcept;
};
