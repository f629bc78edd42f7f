#include "Quanda/Formatting/NaturalDateTimeFormatting/QuandaFormattedNaturalDateTimeCache.h"

#include <utility>

using Cache = QuandaFormattedNaturalDateTimeCache;

namespace {
constexpr std::string_view producerSignature = "init(calendarAdapter:maxCount:)";
}  // namespace

std::string Cache::StyleCacheKey::description() const {
  return quanda_detail::describeKeyRecord("StyleCacheKey",
                                          {{"dateTime", dateTime},
                                           {"dateTimeStyle", dateTimeStyle},
                                           {"localeIdentifier", localeIdentifier}});
}

std::string Cache::TemplateCacheKey::description() const {
  return quanda_detail::describeKeyRecord("TemplateCacheKey",
                                          {{"dateTime", dateTime},
                                           {"formatStringTemplate", caseName(formatStringTemplate)},
                                           {"localeIdentifier", localeIdentifier}});
}

Cache::QuandaFormattedNaturalDateTimeCache(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
                                           KeelFiniteCacheThreshold<unsigned> maxCount)
    : styleCache_(
          [calendarAdapter =
               quanda_detail::requiredAdapter(calendarAdapter)](const StyleCacheKey& key) {
            return key.dateTime.formatWith(key.dateTimeStyle, *calendarAdapter,
                                           key.localeIdentifier);
          },
          maxCount, sourcePath, producerSignature),
      templateCache_(
          [calendarAdapter = quanda_detail::requiredAdapter(std::move(calendarAdapter))](
              const TemplateCacheKey& key) {
            return key.dateTime.formatWith(key.formatStringTemplate, *calendarAdapter,
                                           key.localeIdentifier);
          },
          maxCount, sourcePath, producerSignature) {}

KeelResult<std::string> Cache::format(QuandaAbstractNaturalDateTime naturalDateTime,
                                      QuandaDateTimeFormatStyle dateTimeStyle,
                                      std::string_view localeIdentifier) {
  return styleCache_.value(
      StyleCacheKey{naturalDateTime, dateTimeStyle, std::string(localeIdentifier)},
      [&] {
        return KeelArguments{{"naturalDateTime", naturalDateTime},
                             {"dateTimeStyle", dateTimeStyle},
                             {"localeIdentifier", localeIdentifier}};
      },
      "format(naturalDateTime:dateTimeStyle:localeIdentifier:)");
}

KeelResult<std::string> Cache::format(QuandaAbstractNaturalDateTime naturalDateTime,
                                      QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                      std::string_view localeIdentifier) {
  return templateCache_.value(
      TemplateCacheKey{naturalDateTime, formatStringTemplate, std::string(localeIdentifier)},
      [&] {
        return KeelArguments{{"naturalDateTime", naturalDateTime},
                             {"formatStringTemplate", caseName(formatStringTemplate)},
                             {"localeIdentifier", localeIdentifier}};
      },
      "format(naturalDateTime:formatStringTemplate:localeIdentifier:)");
}
