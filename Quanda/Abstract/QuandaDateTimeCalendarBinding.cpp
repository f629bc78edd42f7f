#include "Quanda/Abstract/QuandaDateTimeCalendarBinding.h"

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"

using namespace quanda_binding;
using Adapter = QuandaCalendarAdapting;
using LocaleOverride = std::optional<std::string_view>;

namespace {

// The adapter's readers of each kind's components, from an instant or a logic interval.
template <class DateTime>
struct DateTimeReaders;

template <>
struct DateTimeReaders<QuandaAbstractNaturalDateTime> {
  template <class Instant>
  static auto local(Adapter& adapter, Instant instant) {
    return adapter.makeLocalTimezoneDiscreteDateTimeComponents(instant);
  }
  template <class Instant>
  static auto utc(Adapter& adapter, Instant instant) {
    return adapter.makeUtcTimezoneDiscreteDateTimeComponents(instant);
  }
  template <class Instant>
  static auto named(Adapter& adapter, Instant instant, std::string_view zone) {
    return adapter.makeTimezoneDiscreteDateTimeComponents(instant, zone);
  }
};

template <>
struct DateTimeReaders<QuandaAbstractRealDateTime> {
  template <class Instant>
  static auto local(Adapter& adapter, Instant instant) {
    return adapter.makeLocalTimezoneRealDateTimeComponents(instant);
  }
  template <class Instant>
  static auto utc(Adapter& adapter, Instant instant) {
    return adapter.makeUtcTimezoneRealDateTimeComponents(instant);
  }
  template <class Instant>
  static auto named(Adapter& adapter, Instant instant, std::string_view zone) {
    return adapter.makeTimezoneRealDateTimeComponents(instant, zone);
  }
};

}  // namespace

namespace quanda_detail {

template <class DateTime, class Traits>
KeelResult<KeelDate> DateTimeCalendarBinding<DateTime, Traits>::makeLocalFoundationDate(
    Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeLocalGregorianFoundationDate(self().components()),
      [&] {
        return KeelArguments{{"dateTime", self()}};
      },
      Traits::sourcePath, "makeLocalFoundationDate(calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<KeelDate> DateTimeCalendarBinding<DateTime, Traits>::makeUtcFoundationDate(
    Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeUtcGregorianFoundationDate(self().components()),
      [&] {
        return KeelArguments{{"dateTime", self()}};
      },
      Traits::sourcePath, "makeUtcFoundationDate(calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<KeelDate> DateTimeCalendarBinding<DateTime, Traits>::makeFoundationDate(
    Adapter& calendarAdapter, std::string_view timezoneIdentifier) const {
  return passedOn(
      calendarAdapter.makeGregorianFoundationDate(self().components(), timezoneIdentifier),
      [&] {
        return KeelArguments{{"dateTime", self()}, {"timezoneIdentifier", timezoneIdentifier}};
      },
      Traits::sourcePath, "makeFoundationDate(calendarAdapter:timezoneIdentifier:)");
}

template <class DateTime, class Traits>
KeelResult<QuandaLogicTimeInterval>
DateTimeCalendarBinding<DateTime, Traits>::makeLocalLogicTimeInterval(
    Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeLocalGregorianLogicTimeInterval(self().components()),
      [&] {
        return KeelArguments{{"dateTime", self()}};
      },
      Traits::sourcePath, "makeLocalLogicTimeInterval(calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<QuandaLogicTimeInterval>
DateTimeCalendarBinding<DateTime, Traits>::makeUtcLogicTimeInterval(
    Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeUtcGregorianLogicTimeInterval(self().components()),
      [&] {
        return KeelArguments{{"dateTime", self()}};
      },
      Traits::sourcePath, "makeUtcLogicTimeInterval(calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<std::string> DateTimeCalendarBinding<DateTime, Traits>::formatWith(
    QuandaDateTimeFormatStyle dateTimeStyle, Adapter& calendarAdapter,
    LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(self().components(), dateTimeStyle, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"dateTime", self()},
                             {"dateTimeStyle", dateTimeStyle},
                             {"calendarAdapter", describeAdapter(calendarAdapter)},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      Traits::sourcePath, "formatWith(dateTimeStyle:calendarAdapter:localeIdentifierOverride:)");
}

template <class DateTime, class Traits>
KeelResult<std::string> DateTimeCalendarBinding<DateTime, Traits>::formatWith(
    QuandaKnownDateTimeFormatTemplate formatStringTemplate, Adapter& calendarAdapter,
    LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(self().components(), formatStringTemplate, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"dateTime", self()},
                             {"formatStringTemplate", caseName(formatStringTemplate)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      Traits::sourcePath,
      "formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingLocalTimezone(
    KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<DateTime>(DateTimeReaders<DateTime>::local(calendarAdapter, foundationDate),
                            readingArguments("foundationDate", foundationDate, calendarAdapter),
                            NamesComponents::yes, Traits::sourcePath,
                            "makeUsingLocalTimezone(foundationDate:calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingUtcTimezone(
    KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<DateTime>(DateTimeReaders<DateTime>::utc(calendarAdapter, foundationDate),
                            readingArguments("foundationDate", foundationDate, calendarAdapter),
                            NamesComponents::yes, Traits::sourcePath,
                            "makeUsingUtcTimezone(foundationDate:calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingTimezone(
    KeelDate foundationDate, Adapter& calendarAdapter, std::string_view timezoneIdentifier) {
  return madeFrom<DateTime>(
      DateTimeReaders<DateTime>::named(calendarAdapter, foundationDate, timezoneIdentifier),
      readingArguments("foundationDate", foundationDate, calendarAdapter, timezoneIdentifier),
      NamesComponents::yes, Traits::sourcePath,
      "makeUsingTimezone(foundationDate:calendarAdapter:timezoneIdentifier:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingLocalTimezone(
    QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) {
  return madeFrom<DateTime>(
      DateTimeReaders<DateTime>::local(calendarAdapter, logicTimeInterval),
      readingArguments("logicTimeInterval", logicTimeInterval, calendarAdapter),
      NamesComponents::yes, Traits::sourcePath,
      "makeUsingLocalTimezone(logicTimeInterval:calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingUtcTimezone(
    QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) {
  return madeFrom<DateTime>(
      DateTimeReaders<DateTime>::utc(calendarAdapter, logicTimeInterval),
      readingArguments("logicTimeInterval", logicTimeInterval, calendarAdapter),
      NamesComponents::yes, Traits::sourcePath,
      "makeUsingUtcTimezone(logicTimeInterval:calendarAdapter:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeUsingTimezone(
    QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter,
    std::string_view timezoneIdentifier) {
  return madeFrom<DateTime>(
      DateTimeReaders<DateTime>::named(calendarAdapter, logicTimeInterval, timezoneIdentifier),
      readingArguments("logicTimeInterval", logicTimeInterval, calendarAdapter, timezoneIdentifier),
      NamesComponents::yes, Traits::sourcePath,
      "makeUsingTimezone(logicTimeInterval:calendarAdapter:timezoneIdentifier:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime>
DateTimeCalendarBinding<DateTime, Traits>::makeFromCurrentDateUsingLocalTimezone(
    Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider) {
  const KeelDate currentLogicDate = timeProvider.currentLogicDate(calendarAdapter);
  return madeFrom<DateTime>(DateTimeReaders<DateTime>::local(calendarAdapter, currentLogicDate),
                            readingArguments("currentLogicDate", currentLogicDate, calendarAdapter),
                            NamesComponents::yes, Traits::sourcePath,
                            "makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)");
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCalendarBinding<DateTime, Traits>::makeFromCurrentDateUsingTimezone(
    Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider,
    std::string_view timezoneIdentifier) {
  const KeelDate currentLogicDate = timeProvider.currentLogicDate(calendarAdapter);
  return madeFrom<DateTime>(
      DateTimeReaders<DateTime>::named(calendarAdapter, currentLogicDate, timezoneIdentifier),
      readingArguments("currentLogicDate", currentLogicDate, calendarAdapter, timezoneIdentifier),
      NamesComponents::yes, Traits::sourcePath,
      "makeFromCurrentDateUsingTimezone(calendarAdapter:timeProvider:timezoneIdentifier:)");
}

template class DateTimeCalendarBinding<QuandaAbstractNaturalDateTime, NaturalDateTimeTraits>;
template class DateTimeCalendarBinding<QuandaAbstractRealDateTime, RealDateTimeTraits>;

}  // namespace quanda_detail
