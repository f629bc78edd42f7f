#include "Quanda/Formatting/DateRangeFormatting/QuandaFormattedAbstractDateRangeCache.h"

#include <utility>

using Cache = QuandaFormattedAbstractDateRangeCache;

namespace {

// "2024-02-01...2024-02-29", as the range is named in errors.
std::string describeRange(const KeelDomain<QuandaAbstractDate>& dateRange) {
  return dateRange.min().description() + "..." + dateRange.max().description();
}

}  // namespace

std::string Cache::CacheKey::description() const {
  return quanda_detail::describeKeyRecord("CacheKey", {{"dateRange", describeRange(dateRange)},
                                                       {"localeIdentifier", localeIdentifier},
                                                       {"style", caseName(style)}});
}

Cache::QuandaFormattedAbstractDateRangeCache(
    std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
    KeelFiniteCacheThreshold<unsigned> maxCount)
    : cache_(
          [calendarAdapter =
               quanda_detail::requiredAdapter(std::move(calendarAdapter))](const CacheKey& key) {
            return key.dateRange.min().formatRange(key.dateRange.max(), key.style, *calendarAdapter,
                                                   key.localeIdentifier);
          },
          maxCount, sourcePath, "init(calendarAdapter:maxCount:)") {}

KeelResult<std::string> Cache::format(KeelDomain<QuandaAbstractDate> dateRange,
                                      std::string_view localeIdentifier,
                                      QuandaDateRangeFormatStyle style) {
  return cache_.value(
      CacheKey{dateRange, std::string(localeIdentifier), style},
      [&] {
        return KeelArguments{{"dateRange", describeRange(dateRange)},
                             {"style", caseName(style)},
                             {"localeIdentifier", localeIdentifier}};
      },
      "format(dateRange:localeIdentifier:style:)");
}
