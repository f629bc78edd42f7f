// QuandaFormattedDurationCache: a QuandaDurationFormatter behind a bounded cache of finished
// strings.
//
// It implements the same interface as the formatter, so either can stand for the other. Every
// span becomes its seconds as a double before the look-up, so a natural span of 90, a discrete
// span of 90 and a real span of 90.0 share one entry. On a miss the formatter writes the real span
// of those seconds, and a success is kept; at most maxCount strings are kept, the least recently
// used going first.
//
//   QuandaFormattedDurationCache durations(QuandaDurationFormatter(adapter),
//                                          KeelFiniteCacheThreshold(200u));
//   durations.format(QuandaNaturalTimeSpan(5400), "fr_FR",
//                    QuandaDurationFormatStyle::shortAbsoluteSubDay);
//
// A failure reports the operation outside ("format(natural:localeIdentifier:style:)" and its
// siblings) and, one level in, the producer's "init(formatter:maxCount:)" with the key record,
// around the formatter's own error. Not synchronized: one thread at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/DurationFormatting/QuandaDurationFormatter.h"
#include "Quanda/Formatting/DurationFormatting/QuandaDurationFormatting.h"
#include "Quanda/Formatting/QuandaFormattedStringCache.h"

class QuandaFormattedDurationCache final : public QuandaDurationFormatting {
 public:
  struct CacheKey {
    double duration;  // seconds
    std::string localeIdentifier;
    QuandaDurationFormatStyle style;

    std::string description() const;
    friend bool operator==(const CacheKey&, const CacheKey&) = default;
  };

  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Duration Formatting/QuandaFormattedDurationCache";

  QuandaFormattedDurationCache(QuandaDurationFormatter formatter,
                               KeelFiniteCacheThreshold<unsigned> maxCount);

  KeelResult<std::string> format(QuandaRealTimeSpan real, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;
  KeelResult<std::string> format(QuandaDiscreteTimeSpan discrete, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;
  KeelResult<std::string> format(QuandaNaturalTimeSpan natural, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;

  const QuandaDurationFormatter& formatter() const noexcept { return formatter_; }
  const QuandaFormattedStringCache<CacheKey>& cache() const noexcept { return cache_; }

 private:
  const QuandaDurationFormatter formatter_;
  QuandaFormattedStringCache<CacheKey> cache_;
};

template <>
struct std::hash<QuandaFormattedDurationCache::CacheKey> {
  std::size_t operator()(const QuandaFormattedDurationCache::CacheKey& key) const noexcept {
    return keel::hashCombine(keel::hashCombine(keel::hashDouble(key.duration),
                                               std::hash<std::string>{}(key.localeIdentifier)),
                             std::hash<QuandaDurationFormatStyle>{}(key.style));
  }
};
