// QuandaFormattedNaturalDateTimeCache: whole-second date-times written by a date-time style or a
// known template, behind two bounded caches of finished strings, one per way of asking.
//
// On a miss the date-time formats itself through the calendar adapter (its formatWith(...) with
// the key's locale as the override), and a success is kept; each cache keeps at most maxCount
// strings, the least recently used going first, so the object holds up to twice that many.
//
//   QuandaFormattedNaturalDateTimeCache dateTimes(adapter, KeelFiniteCacheThreshold(500u));
//   dateTimes.format(dateTime, QuandaDateTimeFormatStyle::dateAndTime(long_, short_), "en_US");
//
// A failure reports the operation outside ("format(naturalDateTime:dateTimeStyle:
// localeIdentifier:)" or "format(naturalDateTime:formatStringTemplate:localeIdentifier:)") and,
// one level in, the producer's "init(calendarAdapter:maxCount:)" with the key record. Not
// synchronized: one thread at a time.
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
#include "Quanda/Formatting/NaturalDateTimeFormatting/QuandaNaturalDateTimeFormatting.h"
#include "Quanda/Formatting/QuandaFormattedStringCache.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

class QuandaFormattedNaturalDateTimeCache final : public QuandaNaturalDateTimeFormatting {
 public:
  struct StyleCacheKey {
    QuandaAbstractNaturalDateTime dateTime;
    QuandaDateTimeFormatStyle dateTimeStyle;
    std::string localeIdentifier;

    std::string description() const;
    friend bool operator==(const StyleCacheKey&, const StyleCacheKey&) = default;
  };
  struct TemplateCacheKey {
    QuandaAbstractNaturalDateTime dateTime;
    QuandaKnownDateTimeFormatTemplate formatStringTemplate;
    std::string localeIdentifier;

    std::string description() const;
    friend bool operator==(const TemplateCacheKey&, const TemplateCacheKey&) = default;
  };

  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Natural Date Time Formatting/QuandaFormattedNaturalDateTimeCache";

  // A null adapter is a programming error.
  QuandaFormattedNaturalDateTimeCache(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter,
                                      KeelFiniteCacheThreshold<unsigned> maxCount);

  KeelResult<std::string> format(QuandaAbstractNaturalDateTime naturalDateTime,
                                 QuandaDateTimeFormatStyle dateTimeStyle,
                                 std::string_view localeIdentifier) override;
  KeelResult<std::string> format(QuandaAbstractNaturalDateTime naturalDateTime,
                                 QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                 std::string_view localeIdentifier) override;

  const QuandaFormattedStringCache<StyleCacheKey>& styleCache() const noexcept {
    return styleCache_;
  }
  const QuandaFormattedStringCache<TemplateCacheKey>& templateCache() const noexcept {
    return templateCache_;
  }

 private:
  QuandaFormattedStringCache<StyleCacheKey> styleCache_;
  QuandaFormattedStringCache<TemplateCacheKey> templateCache_;
};

template <>
struct std::hash<QuandaFormattedNaturalDateTimeCache::StyleCacheKey> {
  std::size_t operator()(
      const QuandaFormattedNaturalDateTimeCache::StyleCacheKey& key) const noexcept {
    // The date-time's packed number (below 2^47) and the two styles (0 for none, else the
    // ordinal + 1) in one word beside the text: one mixing round.
    const auto styleBits = [](auto style) -> std::uint64_t {
      return style ? static_cast<std::uint64_t>(*style) + 1 : 0;
    };
    return keel::hashCombine(std::hash<std::string>{}(key.localeIdentifier),
                             key.dateTime.serializedToRfc3339Numeric() |
                                 styleBits(key.dateTimeStyle.dateStyle()) << 48 |
                                 styleBits(key.dateTimeStyle.timeStyle()) << 52);
  }
};

template <>
struct std::hash<QuandaFormattedNaturalDateTimeCache::TemplateCacheKey> {
  std::size_t operator()(
      const QuandaFormattedNaturalDateTimeCache::TemplateCacheKey& key) const noexcept {
    return keel::hashCombine(std::hash<std::string>{}(key.localeIdentifier),
                             key.dateTime.serializedToRfc3339Numeric() |
                                 static_cast<std::uint64_t>(key.formatStringTemplate) << 48);
  }
};
