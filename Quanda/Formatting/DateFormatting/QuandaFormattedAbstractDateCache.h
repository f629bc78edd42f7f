// QuandaFormattedAbstractDateCache: dates written by a date style, behind a bounded cache of
// finished strings.
//
// A date formatted again in the same locale and style costs a hash look-up instead of a platform
// formatter call. On a miss the date formats itself through the calendar adapter (its
// formatWith(dateStyle, calendarAdapter, localeIdentifierOverride) with the key's locale), and a
// success is kept; at most maxCount strings are kept, the least recently used going first.
//
//   QuandaFormattedAbstractDateCache dates(adapter, KeelFiniteCacheThreshold(500u));
//   dates.format(date, "de_DE", QuandaDateFormatStyle::full);   // "Donnerstag, 29. Februar 2024"
//
// A failure reports "format(date:localeIdentifier:style:)" outside and, one level in, the
// producer's "init(calendarAdapter:maxCount:)" with the key record, around the date's own error.
// Not synchronized: one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/DateFormatting/QuandaAbstractDateFormatting.h"
#include "Quanda/Formatting/QuandaFormattedStringCache.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

class QuandaFormattedAbstractDateCache final : public QuandaAbstractDateFormatting {
 public:
  struct CacheKey {
    QuandaAbstractDate date;
    std::string localeIdentifier;
    QuandaDateFormatStyle style;

    std::string description() const;
    friend bool operator==(const CacheKey&, const CacheKey&) = default;
  };

  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Date Formatting/QuandaFormattedAbstractDateCache";

  // A null adapter is a programming error.
  QuandaFormattedAbstractDateCache(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
                                   KeelFiniteCacheThreshold<unsigned> maxCount);

  KeelResult<std::string> format(QuandaAbstractDate date, std::string_view localeIdentifier,
                                 QuandaDateFormatStyle style) override;

  const QuandaFormattedStringCache<CacheKey>& cache() const noexcept { return cache_; }

 private:
  QuandaFormattedStringCache<CacheKey> cache_;
};

template <>
struct std::hash<QuandaFormattedAbstractDateCache::CacheKey> {
  std::size_t operator()(const QuandaFormattedAbstractDateCache::CacheKey& key) const noexcept {
    // The fields besides the text, packed in their order into one word: one mixing round, where
    // a round per field would cost more than the rest of a cache hit.
    return keel::hashCombine(
        std::hash<std::string>{}(key.localeIdentifier),
        key.date.serializeToIso8601Numeric() << 8 | static_cast<std::uint64_t>(key.style));
  }
};
