// The date's operations through a calendar adapter.
#include <string>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"

using namespace quanda_binding;
using Date = QuandaAbstractDate;
using Adapter = QuandaCalendarAdapting;
using LocaleOverride = std::optional<std::string_view>;

namespace {

constexpr std::string_view path = Date::sourcePath;

// The components of the date after this one. The last valid date has none among the dates, but
// the adapter places 10000-01-01 all the same.
Date::Components nextDayComponents(Date date) {
  if (date == Date::validRange.max()) return {.year = 10000, .month = 1, .day = 1};
  return date.nextDay().components();
}

// The instants of 00:00 of a date and of the next, from one of the adapter's builders.
template <class Build>
KeelResult<KeelDomain<KeelDate>> dayRange(Date date, const Build& build,
                                          std::string_view function) {
  const KeelResult<KeelDate> start = build(date.components());
  if (!start) return KeelError::wrap(start.error(), {{"date", date}}, path, function);
  const KeelResult<KeelDate> end = build(nextDayComponents(date));
  if (!end) {
    return KeelError::wrap(
        end.error(), {{"date", date}, {"startDateIncConcrete", describeInstant(start.value())}},
        path, function);
  }
  return KeelDomain<KeelDate>(start.value(), end.value());
}

}  // namespace

KeelResult<KeelDate> Date::makeLocalFoundationDate(Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeLocalGregorianFoundationDate(components()),
      [&] {
        return KeelArguments{{"date", *this}};
      },
      path, "makeLocalFoundationDate(calendarAdapter:)");
}

KeelResult<KeelDate> Date::makeUtcFoundationDate(Adapter& calendarAdapter) const {
  return passedOn(
      calendarAdapter.makeUtcGregorianFoundationDate(components()),
      [&] {
        return KeelArguments{{"date", *this}};
      },
      path, "makeUtcFoundationDate(calendarAdapter:)");
}

KeelResult<KeelDate> Date::makeFoundationDate(Adapter& calendarAdapter,
                                              std::string_view timezoneIdentifier) const {
  return passedOn(
      calendarAdapter.makeGregorianFoundationDate(components(), timezoneIdentifier),
      [&] {
        return KeelArguments{{"date", *this}};
      },
      path, "makeFoundationDate(calendarAdapter:timezoneIdentifier:)");
}

KeelResult<KeelDomain<KeelDate>> Date::makeLocalDateTimeRange(Adapter& calendarAdapter) const {
  return dayRange(
      *this, [&](Components day) { return calendarAdapter.makeLocalGregorianFoundationDate(day); },
      "makeLocalDateTimeRange(calendarAdapter:)");
}

KeelResult<KeelDomain<KeelDate>> Date::makeUtcDateTimeRange(Adapter& calendarAdapter) const {
  return dayRange(
      *this, [&](Components day) { return calendarAdapter.makeUtcGregorianFoundationDate(day); },
      "makeUtcDateTimeRange(calendarAdapter:)");
}

KeelResult<KeelDomain<KeelDate>> Date::makeDateTimeRange(
    Adapter& calendarAdapter, std::string_view timezoneIdentifier) const {
  return dayRange(
      *this,
      [&](Components day) {
        return calendarAdapter.makeGregorianFoundationDate(day, timezoneIdentifier);
      },
      "makeDateTimeRange(calendarAdapter:timezoneIdentifier:)");
}

KeelResult<std::string> Date::formatWith(QuandaDateFormatStyle dateStyle, Adapter& calendarAdapter,
                                         LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(components(), dateStyle, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"date", *this},
                             {"dateStyle", caseName(dateStyle)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      path, "formatWith(dateStyle:calendarAdapter:localeIdentifierOverride:)");
}

KeelResult<std::string> Date::formatWith(QuandaKnownDateFormatTemplate formatStringTemplate,
                                         Adapter& calendarAdapter,
                                         LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(components(), formatStringTemplate, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"date", *this},
                             {"formatStringTemplate", caseName(formatStringTemplate)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      path, "formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)");
}

KeelResult<std::string> Date::formatRange(Date to, QuandaDateRangeFormatStyle style,
                                          Adapter& calendarAdapter,
                                          LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(components(), to.components(), style, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"from", *this},
                             {"to", to},
                             {"style", caseName(style)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      path, "formatRange(to:style:calendarAdapter:localeIdentifierOverride:)");
}

KeelResult<std::string> Date::localizedStandloneDayOfWeekName(
    Adapter& calendarAdapter, LocaleOverride localeIdentifierOverride,
    QuandaStandaloneDayNameFormatStyle style) const {
  return passedOn(
      calendarAdapter.format(dayOfWeek(), localeIdentifierOverride, style),
      [&] {
        return KeelArguments{{"date", *this},
                             {"localeIdentifierOverride", localeIdentifierOverride},
                             {"style", caseName(style)}};
      },
      path,
      "localizedStandloneDayOfWeekName(calendarAdapter:localeIdentifierOverride:"
      "style:)");
}

KeelResult<std::string> Date::localizedMonthShortName(
    Adapter& calendarAdapter, LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(components(), QuandaKnownDateFormatTemplate::standaloneShortMonth,
                             localeIdentifierOverride),
      [&] {
        return KeelArguments{{"date", *this},
                             {"localeIdentifierOverride", localeIdentifierOverride}};
      },
      path, "localizedMonthShortName(calendarAdapter:localeIdentifierOverride:)");
}

KeelResult<Date> Date::makeUsingLocalTimezone(KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<Date>(calendarAdapter.makeLocalTimezoneDateComponents(foundationDate),
                        readingArguments("foundationDate", foundationDate, calendarAdapter),
                        NamesComponents::no, path,
                        "makeUsingLocalTimezone(foundationDate:calendarAdapter:)");
}

KeelResult<Date> Date::makeUsingUtcTimezone(KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<Date>(calendarAdapter.makeUtcTimezoneDateComponents(foundationDate),
                        readingArguments("foundationDate", foundationDate, calendarAdapter),
                        NamesComponents::no, path,
                        "makeUsingUtcTimezone(foundationDate:calendarAdapter:)");
}

KeelResult<Date> Date::makeUsingTimezone(KeelDate foundationDate, Adapter& calendarAdapter,
                                         std::string_view timezoneIdentifier) {
  return madeFrom<Date>(
      calendarAdapter.makeTimezoneDateComponents(foundationDate, timezoneIdentifier),
      readingArguments("foundationDate", foundationDate, calendarAdapter, timezoneIdentifier),
      NamesComponents::no, path,
      "makeUsingTimezone(foundationDate:calendarAdapter:timezoneIdentifier:)");
}

KeelResult<Date> Date::makeFromCurrentDateUsingLocalTimezone(
    Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider) {
  const KeelDate currentLogicDate = timeProvider.currentLogicDate(calendarAdapter);
  return madeFrom<Date>(
      calendarAdapter.makeLocalTimezoneDateComponents(currentLogicDate),
      [&] {
        return KeelArguments{{"currentLogicDate", describeInstant(currentLogicDate)}};
      },
      NamesComponents::no, path,
      "makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)");
}
