#include "Quanda/Formatting/DateFormatting/QuandaFormattedAbstractDateCache.h"

#include <utility>

using Cache = QuandaFormattedAbstractDateCache;

std::string Cache::CacheKey::description() const {
  return quanda_detail::describeKeyRecord(
      "CacheKey",
      {{"date", date}, {"localeIdentifier", localeIdentifier}, {"style", caseName(style)}});
}

Cache::QuandaFormattedAbstractDateCache(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
                                        KeelFiniteCacheThreshold<unsigned> maxCount)
    : cache_(
          [calendarAdapter =
               quanda_detail::requiredAdapter(std::move(calendarAdapter))](const CacheKey& key) {
            return key.date.formatWith(key.style, *calendarAdapter, key.localeIdentifier);
          },
          maxCount, sourcePath, "init(calendarAdapter:maxCount:)") {}

KeelResult<std::string> Cache::format(QuandaAbstractDate date, std::string_view localeIdentifier,
                                      QuandaDateFormatStyle style) {
  return cache_.value(
      CacheKey{date, std::string(localeIdentifier), style},
      [&] {
        return KeelArguments{
            {"date", date}, {"localeIdentifier", localeIdentifier}, {"style", caseName(style)}};
      },
      "format(date:localeIdentifier:style:)");
}
