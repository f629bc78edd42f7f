// The formatters and the caches of formatted strings: the duration formatter's English period
// rule, one production per key whatever kind of span asks, the bound under eviction, failures
// reported through every layer and never kept, and each cache giving exactly what its uncached
// source gives.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quanda/Abstract/ErrorChainExpectations.h"
#include "Quanda/Formatting/DateFormatting/QuandaFormattedAbstractDateCache.h"
#include "Quanda/Formatting/DateRangeFormatting/QuandaFormattedAbstractDateRangeCache.h"
#include "Quanda/Formatting/DurationFormatting/QuandaFormattedDurationCache.h"
#include "Quanda/Formatting/NaturalDateTimeFormatting/QuandaFormattedNaturalDateTimeCache.h"
#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaFormattedNaturalTimeOfDayCache.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/ForwardingAdapter.h"

namespace {

using Style = QuandaDurationFormatStyle;
using Date = QuandaAbstractDate;
using Time = QuandaAbstractNaturalTimeOfDay;
using DateTime = QuandaAbstractNaturalDateTime;

constexpr std::string_view durationFormatterPath =
    "Quanda/Formatting/Duration Formatting/QuandaDurationFormatter";

// A real adapter behind a forwarding one that the formatters and caches share.
struct Adapters {
  TestAdapter real{"en_US", "America/New_York"};
  std::shared_ptr<ForwardingAdapter> forwarding = std::make_shared<ForwardingAdapter>(real.adapter);
};

ExpectedErrorLink injectedLink(int position) {
  return {.function = std::string(injectedFunction),
          .args = {"position=" + std::to_string(position)},
          .message = std::string(injectedFailure),
          .file = forwardingAdapterPath};
}

TEST(QuandaDurationFormatter, DropsOneFinalPeriodOfEnglishTextOnly) {
  Adapters adapters;
  QuandaDurationFormatter formatter(adapters.forwarding);
  const struct {
    std::string text;
    std::optional<std::string> languageCode;
    std::string expected;
  } cases[] = {
      {"1 hr, 1 min.", "en", "1 hr, 1 min"},
      {"1 Std., 1 Min.", "de", "1 Std., 1 Min."},
      {"1 min.", std::nullopt, "1 min."},
      {"etc..", "en", "etc."},
      {"1h 2m", "en", "1h 2m"},
      {".", "en", ""},
      {"", "en", ""},
      {"1 min.", "en_AU", "1 min."},
  };
  for (const auto& [text, languageCode, expected] : cases) {
    adapters.forwarding->durationAnswer = QuandaFormattedDuration{text, languageCode};
    EXPECT_EQ(formatter.format(QuandaRealTimeSpan(61.0), "xx", Style::shortDelta).value(), expected)
        << text;
  }
  // With the library's adapter: Australian English abbreviates with periods, which the adapter
  // keeps and the formatter drops.
  adapters.forwarding->durationAnswer.reset();
  EXPECT_EQ(adapters.real.adapter.format(61.0, "en_AU", Style::shortDelta).value(),
            (QuandaFormattedDuration{"1min. 1s.", "en"}));
  EXPECT_EQ(formatter.format(QuandaNaturalTimeSpan(61), "en_AU", Style::shortDelta).value(),
            "1min. 1s");
  EXPECT_TRUE(formatter.format(QuandaNaturalTimeSpan(61), "de_DE", Style::shortDelta)
                  .value()
                  .ends_with(" Sek."));
}

TEST(QuandaDurationFormatter, EverySpanReachesTheAdapterAsItsSecondsAndFailsThroughTwoLayers) {
  Adapters adapters;
  QuandaDurationFormatter formatter(adapters.forwarding);
  const std::string natural =
      formatter.format(QuandaNaturalTimeSpan(90), "en_US", Style::positional).value();
  EXPECT_EQ(formatter.format(QuandaRealTimeSpan(90.0), "en_US", Style::positional).value(),
            natural);
  EXPECT_EQ(formatter.format(QuandaDiscreteTimeSpan(-90), "en_US", Style::positional).value(),
            "-" + natural);
  EXPECT_EQ(adapters.forwarding->durations, (std::vector<double>{90.0, 90.0, -90.0}));

  adapters.forwarding->failing = {19};
  const KeelResult<std::string> failure =
      formatter.format(QuandaDiscreteTimeSpan(90), "fr_FR", Style::shortDelta);
  ASSERT_FALSE(failure);
  expectErrorChain(
      failure.error(),
      {{"format(discrete:localeIdentifier:style:)", {"discrete", "style", "localeIdentifier"}},
       {"format(duration:localeIdentifier:style:)",
        {"duration=90", "localeIdentifier=fr_FR", "style=shortDelta"}},
       injectedLink(19)},
      durationFormatterPath);
}

TEST(QuandaNaturalTimeOfDayFormatter, WritesWhatTheAdapterWritesAndWrapsItsFailure) {
  Adapters adapters;
  QuandaNaturalTimeOfDayFormatter formatter(adapters.forwarding);
  const Time time = Time::make(13, 5, 9).value();
  QuandaCalendarAdapting& adapter = adapters.real.adapter;
  EXPECT_EQ(formatter.format(time, "ja_JP", QuandaTimeFormatStyle::short_).value(),
            time.formatWith(QuandaTimeFormatStyle::short_, adapter, "ja_JP").value());
  const auto hour = QuandaKnownTimeFormatTemplate::standaloneHourRespecting12or24Hour;
  EXPECT_EQ(formatter.format(time, "de_DE", hour).value(),
            time.formatWith(hour, adapter, "de_DE").value());

  adapters.forwarding->failing = {11, 13};
  const std::string_view path = QuandaNaturalTimeOfDayFormatter::sourcePath;
  expectErrorChain(formatter.format(time, "en_US", QuandaTimeFormatStyle::full).error(),
                   {{"format(timeOfDay:localeIdentifier:style:)",
                     {"timeOfDay=13:05:09", "localeIdentifier=en_US", "style=full"}},
                    injectedLink(11)},
                   path);
  expectErrorChain(
      formatter.format(time, "en_US", hour).error(),
      {{"format(timeOfDay:localeIdentifier:template:)",
        {"timeOfDay", "localeIdentifier", "template=standaloneHourRespecting12or24Hour"}},
       injectedLink(13)},
      path);
}

// One cache operation seen from outside: the text it gives, and the same request without a cache.
struct CachedRequest {
  std::function<KeelResult<std::string>()> cached;
  std::function<KeelResult<std::string>()> uncached;
};

// The five caches over one forwarding adapter, each with its own bound.
struct Caches {
  explicit Caches(unsigned maxCount)
      : durations(QuandaDurationFormatter(adapters.forwarding), KeelFiniteCacheThreshold(maxCount)),
        times(QuandaNaturalTimeOfDayFormatter(adapters.forwarding),
              KeelFiniteCacheThreshold(maxCount)),
        dateTimes(adapters.forwarding, KeelFiniteCacheThreshold(maxCount)),
        dates(adapters.forwarding, KeelFiniteCacheThreshold(maxCount)),
        ranges(adapters.forwarding, KeelFiniteCacheThreshold(maxCount)) {}

  // Requests that differ by n, through each of the seven lookups of the five caches.
  std::vector<CachedRequest> requests(int n) {
    QuandaCalendarAdapting& adapter = adapters.real.adapter;
    const Date date = Date::make(2024, 2, 1).value().addingDays(n);
    const Time time = Time::makeFromSecondsSinceDayBegan(static_cast<std::uint32_t>(n * 61));
    const DateTime dateTime = date + time;
    const auto dateTimeStyle = QuandaDateTimeFormatStyle::dateAndTime(
        QuandaDateFormatStyle::medium, QuandaTimeFormatStyle::short_);
    const auto dateTimeTemplate = QuandaKnownDateTimeFormatTemplate::fullDateToMinuteShort;
    const auto timeTemplate = QuandaKnownTimeFormatTemplate::standaloneMinuteWithoutUnit;
    QuandaDurationFormatter formatter(adapters.forwarding);
    return {
        {[=, this] {
           return durations.format(QuandaNaturalTimeSpan(n), "de_DE", Style::shortDelta);
         },
         [=]() mutable {
           return formatter.format(QuandaNaturalTimeSpan(n), "de_DE", Style::shortDelta);
         }},
        {[=, this] { return times.format(time, "en_GB", QuandaTimeFormatStyle::short_); },
         [=, &adapter] {
           return time.formatWith(QuandaTimeFormatStyle::short_, adapter, "en_GB");
         }},
        {[=, this] { return times.format(time, "en_GB", timeTemplate); },
         [=, &adapter] { return time.formatWith(timeTemplate, adapter, "en_GB"); }},
        {[=, this] { return dateTimes.format(dateTime, dateTimeStyle, "fr_FR"); },
         [=, &adapter] { return dateTime.formatWith(dateTimeStyle, adapter, "fr_FR"); }},
        {[=, this] { return dateTimes.format(dateTime, dateTimeTemplate, "fr_FR"); },
         [=, &adapter] { return dateTime.formatWith(dateTimeTemplate, adapter, "fr_FR"); }},
        {[=, this] { return dates.format(date, "ja_JP", QuandaDateFormatStyle::full); },
         [=, &adapter] { return date.formatWith(QuandaDateFormatStyle::full, adapter, "ja_JP"); }},
        {[=, this] {
           return ranges.format({date, date.addingDays(3)}, "en_US",
                                QuandaDateRangeFormatStyle::medium);
         },
         [=, &adapter] {
           return date.formatRange(date.addingDays(3), QuandaDateRangeFormatStyle::medium, adapter,
                                   "en_US");
         }},
    };
  }

  std::vector<std::size_t> counts() const {
    return {durations.cache().count(),
            times.byStyleCache().count(),
            times.byTemplateCache().count(),
            dateTimes.styleCache().count(),
            dateTimes.templateCache().count(),
            dates.cache().count(),
            ranges.cache().count()};
  }

  Adapters adapters;
  QuandaFormattedDurationCache durations;
  QuandaFormattedNaturalTimeOfDayCache times;
  QuandaFormattedNaturalDateTimeCache dateTimes;
  QuandaFormattedAbstractDateCache dates;
  QuandaFormattedAbstractDateRangeCache ranges;
};

TEST(QuandaFormattedValueCaches, ProduceOncePerKeyGiveWhatTheSourceGivesAndKeepTheirBound) {
  constexpr unsigned bound = 4;
  Caches caches(bound);
  ForwardingAdapter& adapter = *caches.adapters.forwarding;
  for (int n = 0; n < 10; ++n) {
    const std::vector<CachedRequest> requests = caches.requests(n);
    for (std::size_t index = 0; index < requests.size(); ++index) {
      SCOPED_TRACE(testing::Message() << "request " << index << ", n = " << n);
      const std::string expected = requests[index].uncached().value();
      adapter.calls.clear();
      EXPECT_EQ(requests[index].cached().value(), expected);
      EXPECT_EQ(adapter.calls.size(), 1u);  // a miss: one production, one adapter call
      adapter.calls.clear();
      EXPECT_EQ(requests[index].cached().value(), expected);
      EXPECT_TRUE(adapter.calls.empty());  // a hit asks nothing of the adapter
    }
  }
  for (const std::size_t count : caches.counts()) EXPECT_EQ(count, bound);
  // The oldest keys were evicted: asking again produces again.
  adapter.calls.clear();
  EXPECT_TRUE(caches.requests(0)[0].cached());
  EXPECT_EQ(adapter.calls.size(), 1u);
}

TEST(QuandaFormattedValueCaches, SpansOfEveryKindShareOneEntryAndLocalesSeparateThem) {
  Caches caches(100);
  ForwardingAdapter& adapter = *caches.adapters.forwarding;
  const std::string text =
      caches.durations.format(QuandaNaturalTimeSpan(90), "en_US", Style::longTermCompact).value();
  EXPECT_EQ(
      caches.durations.format(QuandaRealTimeSpan(90.0), "en_US", Style::longTermCompact).value(),
      text);
  EXPECT_EQ(
      caches.durations.format(QuandaDiscreteTimeSpan(90), "en_US", Style::longTermCompact).value(),
      text);
  EXPECT_EQ(adapter.durations.size(), 1u);
  EXPECT_TRUE(caches.durations.format(QuandaNaturalTimeSpan(90), "en_GB", Style::longTermCompact));
  EXPECT_EQ(adapter.durations.size(), 2u);

  const DateTime dateTime = DateTime::makeFromRfc3339String("2024-02-29T13:05:00").value();
  const auto style = QuandaDateTimeFormatStyle::timeOnly(QuandaTimeFormatStyle::short_);
  EXPECT_NE(caches.dateTimes.format(dateTime, style, "en_US").value(),
            caches.dateTimes.format(dateTime, style, "de_DE").value());
  EXPECT_EQ(caches.dateTimes.styleCache().count(), 2u);
}

TEST(QuandaFormattedValueCaches, AFailureNamesTheOperationThenTheProducerAndIsNotKept) {
  Caches caches(100);
  ForwardingAdapter& adapter = *caches.adapters.forwarding;
  adapter.failing = {6};
  const Date date = Date::make(2024, 2, 29).value();
  const KeelResult<std::string> failure =
      caches.dates.format(date, "de_DE", QuandaDateFormatStyle::long_);
  ASSERT_FALSE(failure);
  expectErrorChain(
      failure.error(),
      {{"format(date:localeIdentifier:style:)", {"date", "localeIdentifier", "style"}},
       {"init(calendarAdapter:maxCount:)",
        {"key=CacheKey(date: 2024-02-29, localeIdentifier: de_DE, style: long)"}},
       {.function = "formatWith(dateStyle:calendarAdapter:localeIdentifierOverride:)",
        .args = {"date", "dateStyle", "calendarAdapter", "localeIdentifierOverride=de_DE"},
        .file = Date::sourcePath},
       injectedLink(6)},
      QuandaFormattedAbstractDateCache::sourcePath);
  EXPECT_EQ(caches.dates.cache().count(), 0u);
  adapter.failing.clear();
  EXPECT_EQ(caches.dates.format(date, "de_DE", QuandaDateFormatStyle::long_).value(),
            "29. Februar 2024");

  adapter.failing = {19};
  const KeelResult<std::string> duration =
      caches.durations.format(QuandaNaturalTimeSpan(5400), "fr_FR", Style::positional);
  ASSERT_FALSE(duration);
  expectErrorChain(
      duration.error(),
      {{"format(natural:localeIdentifier:style:)", {"natural", "style", "localeIdentifier"}},
       {"init(formatter:maxCount:)",
        {"key=CacheKey(duration: 5400, localeIdentifier: fr_FR, style: positional)"}},
       {.function = "format(real:localeIdentifier:style:)",
        .args = {"real", "style", "localeIdentifier"},
        .file = durationFormatterPath},
       {.function = "format(duration:localeIdentifier:style:)",
        .args = {"duration", "localeIdentifier", "style"},
        .file = durationFormatterPath},
       injectedLink(19)},
      QuandaFormattedDurationCache::sourcePath);

  adapter.failing = {10};
  const KeelResult<std::string> range =
      caches.ranges.format({date, date.addingDays(5)}, "en_US", QuandaDateRangeFormatStyle::full);
  ASSERT_FALSE(range);
  EXPECT_EQ(range.error().functionName(), "format(dateRange:localeIdentifier:style:)");
  EXPECT_EQ(range.error().argument("dateRange"), "2024-02-29...2024-03-05");
  EXPECT_EQ(range.error().error()->functionName(), "init(calendarAdapter:maxCount:)");
}

}  // namespace
