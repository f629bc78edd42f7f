// Internal to the calendar adapter: a zone's offsets from UTC over the years 1900 to 2099 as a
// table, so that the conversions an app makes all day (in the years around now) are a short scan
// and day arithmetic instead of a walk through the tz library's rules.
//
// The table is made once per zone from the tz library's own transitions, and answers exactly as
// the library does: a wall time that the zone skips takes the offset before the gap, a repeated
// one the earlier instant. Outside its years, or for a zone whose offsets change twice within two
// days somewhere in them (where the simple neighbour checks below would not be enough), it
// answers nothing and the caller asks the library.
#pragma once

#include <absl/time/time.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace quanda_adapting {

class ZoneOffsets {
 public:
  ZoneOffsets() = default;
  explicit ZoneOffsets(const absl::TimeZone& zone);

  // The offset in force at an instant (seconds since 1970), nothing outside the table.
  std::optional<std::int32_t> offsetAt(std::int64_t instant) const noexcept {
    if (!covers(instant)) return std::nullopt;
    std::size_t span = spanOfBucket_[bucketOf(instant)];
    while (span + 1 < starts_.size() && starts_[span + 1] <= instant) ++span;
    return offsets_[span];
  }

  // The instant of a wall time given as seconds since 1970 read as if it were UTC, nothing
  // outside the table.
  std::optional<std::int64_t> instantOf(std::int64_t wallTime) const noexcept {
    if (!covers(wallTime)) return std::nullopt;
    // The span whose wall times begin last at or before this one: spans last over two days and
    // offsets differ by less, so it lies at most one span before the bucket's.
    std::size_t span = spanOfBucket_[bucketOf(wallTime)];
    if (span > 0) --span;
    while (span + 1 < starts_.size() && starts_[span + 1] + offsets_[span + 1] <= wallTime) ++span;
    // Repeated: the wall time also falls in the span before, whose instant is the earlier.
    if (span > 0 && wallTime < starts_[span] + offsets_[span - 1]) {
      return wallTime - offsets_[span - 1];
    }
    // Otherwise this span's offset, which for a skipped wall time is the offset before the gap.
    return wallTime - offsets_[span];
  }

 private:
  static constexpr std::int64_t firstInstant = -2208988800;  // 1900-01-01T00:00:00Z
  static constexpr std::int64_t endInstant = 4102444800;     // 2100-01-01T00:00:00Z
  static constexpr std::int64_t margin = 2 * 86400;
  static constexpr std::int64_t bucketLength = 31556952;  // a mean Gregorian year

  bool covers(std::int64_t seconds) const noexcept {
    return !starts_.empty() && seconds >= firstInstant + margin && seconds < endInstant - margin;
  }
  static std::size_t bucketOf(std::int64_t seconds) noexcept {
    return static_cast<std::size_t>((seconds - firstInstant) / bucketLength);
  }

  std::vector<std::int64_t> starts_;  // when each span begins; the first begins the table
  std::vector<std::int32_t> offsets_;
  std::vector<std::uint32_t> spanOfBucket_;  // the span in force when each bucket begins
};

}  // namespace quanda_adapting
