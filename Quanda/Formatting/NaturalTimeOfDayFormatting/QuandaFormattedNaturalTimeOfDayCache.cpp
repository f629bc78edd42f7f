#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaFormattedNaturalTimeOfDayCache.h"

#include <utility>

using Cache = QuandaFormattedNaturalTimeOfDayCache;

namespace {
constexpr std::string_view producerSignature = "init(formatter:maxCount:)";
}  // namespace

std::string Cache::StyleCacheKey::description() const {
  return quanda_detail::describeKeyRecord("StyleCacheKey", {{"localeIdentifier", localeIdentifier},
                                                            {"style", caseName(style)},
                                                            {"timeOfDay", timeOfDay}});
}

std::string Cache::TemplateCacheKey::description() const {
  return quanda_detail::describeKeyRecord("TemplateCacheKey",
                                          {{"localeIdentifier", localeIdentifier},
                                           {"template", caseName(template_)},
                                           {"timeOfDay", timeOfDay}});
}

// Each producer holds a copy of the formatter, which shares its adapter; neither holds the cache.
Cache::QuandaFormattedNaturalTimeOfDayCache(QuandaNaturalTimeOfDayFormatter formatter,
                                            KeelFiniteCacheThreshold<unsigned> maxCount)
    : byStyleCache_(
          [formatter](const StyleCacheKey& key) mutable {
            return formatter.format(key.timeOfDay, key.localeIdentifier, key.style);
          },
          maxCount, sourcePath, producerSignature),
      byTemplateCache_(
          [formatter](const TemplateCacheKey& key) mutable {
            return formatter.format(key.timeOfDay, key.localeIdentifier, key.template_);
          },
          maxCount, sourcePath, producerSignature),
      formatter_(std::move(formatter)) {}

KeelResult<std::string> Cache::format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                      std::string_view localeIdentifier,
                                      QuandaTimeFormatStyle style) {
  return byStyleCache_.value(
      StyleCacheKey{std::string(localeIdentifier), style, timeOfDay},
      [&] {
        return KeelArguments{{"timeOfDay", timeOfDay},
                             {"localeIdentifier", localeIdentifier},
                             {"style", caseName(style)}};
      },
      "format(timeOfDay:localeIdentifier:style:)");
}

KeelResult<std::string> Cache::format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                      std::string_view localeIdentifier,
                                      QuandaKnownTimeFormatTemplate template_) {
  return byTemplateCache_.value(
      TemplateCacheKey{std::string(localeIdentifier), template_, timeOfDay},
      [&] {
        return KeelArguments{{"timeOfDay", timeOfDay},
                             {"localeIdentifier", localeIdentifier},
                             {"template", caseName(template_)}};
      },
      "format(timeOfDay:localeIdentifier:template:)");
}
