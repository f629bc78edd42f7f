// QuandaFormattedNaturalTimeOfDayCache: a QuandaNaturalTimeOfDayFormatter behind two bounded
// caches of finished strings, one for times asked by style and one for times asked by template.
//
// It implements the same interface as the formatter, so either can stand for the other. On a
// miss the formatter writes the time, and a success is kept; each cache keeps at most maxCount
// strings, the least recently used going first, so the object holds up to twice that many.
//
//   QuandaFormattedNaturalTimeOfDayCache times(QuandaNaturalTimeOfDayFormatter(adapter),
//                                              KeelFiniteCacheThreshold(200u));
//   times.format(time, "en_US", QuandaTimeFormatStyle::short_);
//
// A failure reports the operation outside and, one level in, the producer's
// "init(formatter:maxCount:)" with the key record, around the formatter's own error. Not
// synchronized: one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaNaturalTimeOfDayFormatter.h"
#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaNaturalTimeOfDayFormatting.h"
#include "Quanda/Formatting/QuandaFormattedStringCache.h"

class QuandaFormattedNaturalTimeOfDayCache final : public QuandaNaturalTimeOfDayFormatting {
 public:
  struct StyleCacheKey {
    std::string localeIdentifier;
    QuandaTimeFormatStyle style;
    QuandaAbstractNaturalTimeOfDay timeOfDay;

    std::string description() const;
    friend bool operator==(const StyleCacheKey&, const StyleCacheKey&) = default;
  };
  struct TemplateCacheKey {
    std::string localeIdentifier;
    QuandaKnownTimeFormatTemplate template_;
    QuandaAbstractNaturalTimeOfDay timeOfDay;

    std::string description() const;
    friend bool operator==(const TemplateCacheKey&, const TemplateCacheKey&) = default;
  };

  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Natural Time Of Day Formatting/QuandaFormattedNaturalTimeOfDayCache";

  QuandaFormattedNaturalTimeOfDayCache(QuandaNaturalTimeOfDayFormatter formatter,
                                       KeelFiniteCacheThreshold<unsigned> maxCount);

  KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                 std::string_view localeIdentifier,
                                 QuandaTimeFormatStyle style) override;
  KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                 std::string_view localeIdentifier,
                                 QuandaKnownTimeFormatTemplate template_) override;

  const QuandaNaturalTimeOfDayFormatter& formatter() const noexcept { return formatter_; }
  const QuandaFormattedStringCache<StyleCacheKey>& byStyleCache() const noexcept {
    return byStyleCache_;
  }
  const QuandaFormattedStringCache<TemplateCacheKey>& byTemplateCache() const noexcept {
    return byTemplateCache_;
  }

 private:
  QuandaFormattedStringCache<StyleCacheKey> byStyleCache_;
  QuandaFormattedStringCache<TemplateCacheKey> byTemplateCache_;
  const QuandaNaturalTimeOfDayFormatter formatter_;
};

template <>
struct std::hash<QuandaFormattedNaturalTimeOfDayCache::StyleCacheKey> {
  std::size_t operator()(
      const QuandaFormattedNaturalTimeOfDayCache::StyleCacheKey& key) const noexcept {
    // The style and the packed hhmmss in one word beside the text: one mixing round.
    return keel::hashCombine(
        std::hash<std::string>{}(key.localeIdentifier),
        static_cast<std::uint64_t>(key.style) << 32 | key.timeOfDay.serializeToIso8601Numeric());
  }
};

template <>
struct std::hash<QuandaFormattedNaturalTimeOfDayCache::TemplateCacheKey> {
  std::size_t operator()(
      const QuandaFormattedNaturalTimeOfDayCache::TemplateCacheKey& key) const noexcept {
    return keel::hashCombine(std::hash<std::string>{}(key.localeIdentifier),
                             static_cast<std::uint64_t>(key.template_) << 32 |
                                 key.timeOfDay.serializeToIso8601Numeric());
  }
};
