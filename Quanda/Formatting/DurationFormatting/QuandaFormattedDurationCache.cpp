#include "Quanda/Formatting/DurationFormatting/QuandaFormattedDurationCache.h"

#include <cstdint>
#include <utility>

using Cache = QuandaFormattedDurationCache;

namespace {

// A span operation's look-up of its seconds, a failure named by the span under its label.
template <class Span>
KeelResult<std::string> lookUp(QuandaFormattedStringCache<Cache::CacheKey>& cache, double seconds,
                               std::string_view label, Span span, std::string_view localeIdentifier,
                               QuandaDurationFormatStyle style, std::string_view function,
                               std::uint32_t lineNumber = __builtin_LINE()) {
  return cache.value(
      Cache::CacheKey{seconds, std::string(localeIdentifier), style},
      [&] {
        return KeelArguments{
            {label, span}, {"style", caseName(style)}, {"localeIdentifier", localeIdentifier}};
      },
      function, lineNumber);
}

}  // namespace

std::string Cache::CacheKey::description() const {
  return quanda_detail::describeKeyRecord(
      "CacheKey",
      {{"duration", duration}, {"localeIdentifier", localeIdentifier}, {"style", caseName(style)}});
}

// The producer holds a copy of the formatter, which shares its adapter; it never holds the cache.
Cache::QuandaFormattedDurationCache(QuandaDurationFormatter formatter,
                                    KeelFiniteCacheThreshold<unsigned> maxCount)
    : formatter_(formatter),
      cache_(
          [formatter](const CacheKey& key) mutable {
            return formatter.format(QuandaRealTimeSpan(key.duration), key.localeIdentifier,
                                    key.style);
          },
          maxCount, sourcePath, "init(formatter:maxCount:)") {}

KeelResult<std::string> Cache::format(QuandaRealTimeSpan real, std::string_view localeIdentifier,
                                      QuandaDurationFormatStyle style) {
  return lookUp(cache_, real.seconds(), "real", real, localeIdentifier, style,
                "format(real:localeIdentifier:style:)");
}

KeelResult<std::string> Cache::format(QuandaDiscreteTimeSpan discrete,
                                      std::string_view localeIdentifier,
                                      QuandaDurationFormatStyle style) {
  return lookUp(cache_, static_cast<double>(discrete.seconds()), "discrete", discrete,
                localeIdentifier, style, "format(discrete:localeIdentifier:style:)");
}

KeelResult<std::string> Cache::format(QuandaNaturalTimeSpan natural,
                                      std::string_view localeIdentifier,
                                      QuandaDurationFormatStyle style) {
  return lookUp(cache_, static_cast<double>(natural.seconds()), "natural", natural,
                localeIdentifier, style, "format(natural:localeIdentifier:style:)");
}
