// QuandaFormattedAbstractDateRangeCache: ranges of dates written by a date range style, behind a
// bounded cache of finished strings.
//
// On a miss the range's min formats the range to its max through the calendar adapter
// (formatRange(to, style, calendarAdapter, localeIdentifierOverride) with the key's locale), and a
// success is kept; at most maxCount strings are kept, the least recently used going first. The
// range is written as given: a reversed one is the platform's to write.
//
//   QuandaFormattedAbstractDateRangeCache ranges(adapter, KeelFiniteCacheThreshold(100u));
//   ranges.format({first, last}, "en_US", QuandaDateRangeFormatStyle::medium);   // "Feb 1 – 29,
//   2024"
//
// A failure reports "format(dateRange:localeIdentifier:style:)" outside and, one level in, the
// producer's "init(calendarAdapter:maxCount:)" with the key record. Not synchronized: one thread
// at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Keel/KeelDomain.h"
#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/DateRangeFormatting/QuandaAbstractDateRangeFormatting.h"
#include "Quanda/Formatting/QuandaFormattedStringCache.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

class QuandaFormattedAbstractDateRangeCache final : public QuandaAbstractDateRangeFormatting {
 public:
  struct CacheKey {
    KeelDomain<QuandaAbstractDate> dateRange;
    std::string localeIdentifier;
    QuandaDateRangeFormatStyle style;

    std::string description() const;
    friend bool operator==(const CacheKey&, const CacheKey&) = default;
  };

  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Date Range Formatting/QuandaFormattedAbstractDateRangeCache";

  // A null adapter is a programming error.
  QuandaFormattedAbstractDateRangeCache(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
                                        KeelFiniteCacheThreshold<unsigned> maxCount);

  KeelResult<std::string> format(KeelDomain<QuandaAbstractDate> dateRange,
                                 std::string_view localeIdentifier,
                                 QuandaDateRangeFormatStyle style) override;

  const QuandaFormattedStringCache<CacheKey>& cache() const noexcept { return cache_; }

 private:
  QuandaFormattedStringCache<CacheKey> cache_;
};

template <>
struct std::hash<QuandaFormattedAbstractDateRangeCache::CacheKey> {
  std::size_t operator()(
      const QuandaFormattedAbstractDateRangeCache::CacheKey& key) const noexcept {
    // The dates packed into one word and the style beside the text: two mixing rounds.
    return keel::hashCombine(
        keel::hashCombine(key.dateRange.min().serializeToIso8601Numeric() << 32 |
                              key.dateRange.max().serializeToIso8601Numeric(),
                          std::hash<std::string>{}(key.localeIdentifier)),
        static_cast<std::uint64_t>(key.style));
  }
};
