#include "Quanda/DateMasks/QuandaCountCycle.h"

#include "Keel/KeelPrecondition.h"

namespace {
QuandaCyclePattern makeEntries(const std::vector<bool>& entries, const char* what) {
  KEEL_PRECONDITION(!entries.empty(), what);
  return QuandaCyclePattern(entries);
}
}  // namespace

QuandaCountCycle::QuandaCountCycle(std::uint32_t anchor, const std::vector<bool>& entries,
                                   const char* what)
    : anchor_(anchor), entries_(makeEntries(entries, what)), residue_(anchor % entries_.length()) {}

std::uint64_t QuandaCountCycle::entriesFrom(std::uint32_t count) const noexcept {
  if (count >= residue_) return entries_.window(entries_.remainder(count - residue_));
  // The counts below the residue read entry 0.
  const std::uint32_t below = residue_ - count;
  const std::uint64_t entryZero = entries_[0] ? ~std::uint64_t{0} : 0;
  if (below >= 64) return entryZero;
  return (entryZero & ((std::uint64_t{1} << below) - 1)) | entries_.window(0) << below;
}

std::optional<std::uint32_t> QuandaCountCycle::earliest(bool entry, std::uint32_t first,
                                                        std::uint32_t last) const {
  if (!entries_.containsValue(entry)) return std::nullopt;
  std::uint32_t count = first;
  if (count < residue_) {
    // Below the residue every count reads entry 0.
    if (entries_[0] == entry) return count;
    count = residue_;
    if (count > last) return std::nullopt;
  }
  const std::uint64_t found =
      std::uint64_t{count} + entries_.distanceToNext(entry, entries_.remainder(count - residue_));
  if (found > last) return std::nullopt;
  return static_cast<std::uint32_t>(found);
}

std::optional<std::uint32_t> QuandaCountCycle::latest(bool entry, std::uint32_t first,
                                                      std::uint32_t last) const {
  if (!entries_.containsValue(entry)) return std::nullopt;
  if (last >= residue_) {
    const std::int64_t found = std::int64_t{last} - entries_.distanceToPrevious(
                                                        entry, entries_.remainder(last - residue_));
    if (found >= std::int64_t{residue_}) {
      if (found < std::int64_t{first}) return std::nullopt;
      return static_cast<std::uint32_t>(found);
    }
  }
  // Nothing from the residue on: the counts below it read entry 0.
  if (residue_ == 0 || entries_[0] != entry) return std::nullopt;
  const std::uint32_t below = last < residue_ ? last : residue_ - 1;
  if (below < first) return std::nullopt;
  return below;
}
