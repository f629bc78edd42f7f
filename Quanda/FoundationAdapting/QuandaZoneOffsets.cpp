#include "Quanda/FoundationAdapting/QuandaZoneOffsetsPrivate.h"

namespace quanda_adapting {

ZoneOffsets::ZoneOffsets(const absl::TimeZone& zone) {
  std::vector<std::int64_t> starts{firstInstant};
  std::vector<std::int32_t> offsets{zone.At(absl::FromUnixSeconds(firstInstant)).offset};
  absl::Time after = absl::FromUnixSeconds(firstInstant);
  absl::TimeZone::CivilTransition transition;
  while (zone.NextTransition(after, &transition)) {
    after = zone.At(transition.to).trans;
    const std::int64_t instant = absl::ToUnixSeconds(after);
    if (instant >= endInstant) break;
    const std::int32_t offset = zone.At(after).offset;
    if (offset == offsets.back()) continue;  // a change of name or daylight flag only
    // Two changes within two days: leave the zone to the library.
    if (instant - starts.back() <= margin) return;
    starts.push_back(instant);
    offsets.push_back(offset);
  }
  if (endInstant - starts.back() <= margin) return;
  std::vector<std::uint32_t> spanOfBucket;
  std::size_t span = 0;
  for (std::int64_t bucket = firstInstant; bucket < endInstant; bucket += bucketLength) {
    while (span + 1 < starts.size() && starts[span + 1] <= bucket) ++span;
    spanOfBucket.push_back(static_cast<std::uint32_t>(span));
  }
  starts_ = std::move(starts);
  offsets_ = std::move(offsets);
  spanOfBucket_ = std::move(spanOfBucket);
}

}  // namespace quanda_adapting
