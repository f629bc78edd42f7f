// QuandaCountCycle: a pattern of entries repeated along a count (of days, of months) from an
// anchor, the rule shared by QuandaDayCycleDateMask and QuandaMonthCycleDateMask.
//
// With n the pattern's length and r = anchor mod n, count c reads entry (c - r) mod n: the cycle
// runs both ways from the anchor. A count below r (only possible in the first period after
// 0001-01-01) reads entry 0, deliberately, so every count has an answer. The searches find the
// nearest count with a wanted entry a word of 64 entries at a time (QuandaCyclePattern), and the
// 64 entries that follow a count are two word reads.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Quanda/DateMasks/QuandaCyclePattern.h"

class QuandaCountCycle {
 public:
  // An empty `entries`, or more entries than 32 bits count, is a programming error; `what` names
  // the cycle in that error.
  QuandaCountCycle(std::uint32_t anchor, const std::vector<bool>& entries, const char* what);

  std::uint32_t anchor() const noexcept { return anchor_; }
  std::uint32_t residue() const noexcept { return residue_; }
  const QuandaCyclePattern& pattern() const noexcept { return entries_; }

  // The entry index of a count: 0 below the residue, else (count - residue) mod n.
  std::uint32_t indexOf(std::uint32_t count) const noexcept {
    return count < residue_ ? 0 : entries_.remainder(count - residue_);
  }
  bool entryOf(std::uint32_t count) const noexcept { return entries_[indexOf(count)]; }
  // The entries of count ... count + 63 (bit i for count + i).
  std::uint64_t entriesFrom(std::uint32_t count) const noexcept;

  // The earliest (latest) count in first...last whose entry is `entry`.
  std::optional<std::uint32_t> earliest(bool entry, std::uint32_t first, std::uint32_t last) const;
  std::optional<std::uint32_t> latest(bool entry, std::uint32_t first, std::uint32_t last) const;

  friend bool operator==(const QuandaCountCycle& lhs, const QuandaCountCycle& rhs) noexcept {
    return lhs.anchor_ == rhs.anchor_ && lhs.entries_ == rhs.entries_;
  }

 private:
  std::uint32_t anchor_;
  QuandaCyclePattern entries_;
  std::uint32_t residue_;
};
