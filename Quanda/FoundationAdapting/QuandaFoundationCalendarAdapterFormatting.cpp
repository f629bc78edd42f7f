// The adapter's formatting and naming: every calendar-free value is turned into a UTC instant
// (a time of day on a fixed date first) and written by a cached formatter whose zone is UTC, so
// that no text depends on the device's zone.
#include <unicode/fieldpos.h>
#include <unicode/measunit.h>
#include <unicode/smpdtfmt.h>

#include <array>
#include <cmath>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "Keel/KeelPrecondition.h"
#include "Quanda/FoundationAdapting/QuandaDurationDecomposition.h"
#include "Quanda/FoundationAdapting/QuandaFoundationAdaptingPrivate.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"

using namespace quanda_adapting;
using Adapter = QuandaFoundationCalendarAdapter;

namespace {

constexpr std::string_view path = adapterPath;
constexpr std::string_view producedNoString = "Formatter produced no string";

// Times of day are written as the time of this date, so that no daylight-saving or calendar
// change can alter their text.
constexpr std::uint16_t fixedYear = 2019;
constexpr std::uint8_t fixedMonth = 8;
constexpr std::uint8_t fixedDay = 10;

template <class Second>
quanda_detail::DateTimeComponents<Second> onFixedDate(
    const quanda_detail::TimeOfDayComponents<Second>& time) {
  return {.day = fixedDay,
          .hour = time.hour,
          .minute = time.minute,
          .month = fixedMonth,
          .second = time.second,
          .year = fixedYear};
}

// Dates and date-times are converted as they are.
template <class Components>
const Components& onFixedDate(const Components& components) {
  return components;
}

double udate(KeelDate date) { return date.time_since_epoch().count() * 1000.0; }

// Whether the platform's calendars can write an instant: a finite one within their range (some
// 5.8 million years either side of 1970), beyond which they would write a clamped, wrong date.
bool formattable(KeelDate date) { return std::fabs(date.time_since_epoch().count()) <= 1.8e14; }

// The text a formatter wrote, or the one failure of formatting (with the arguments that args
// makes, only then).
template <class Args>
KeelResult<std::string> written(const icu::UnicodeString& text, UErrorCode status, const Args& args,
                                std::string_view function, std::uint32_t line = __builtin_LINE()) {
  if (U_FAILURE(status) || text.isEmpty()) {
    return KeelError::fault(producedNoString, args(), path, function, errorName(status), line);
  }
  return utf8(text);
}

// The unit formatters' order: that of QuandaDurationDecomposition's units, largest first.
using Unit = QuandaDurationFormatSettings::Unit;
constexpr std::array<Unit, 7> durationUnits{Unit::year, Unit::month,  Unit::weekOfMonth, Unit::day,
                                            Unit::hour, Unit::minute, Unit::second};
std::size_t unitIndex(Unit unit) {
  std::size_t index = 0;
  while (durationUnits[index] != unit) ++index;
  return index;
}
icu::MeasureUnit measureUnit(Unit unit) {
  switch (unit) {
    case Unit::year:
      return icu::MeasureUnit::getYear();
    case Unit::month:
      return icu::MeasureUnit::getMonth();
    case Unit::weekOfMonth:
      return icu::MeasureUnit::getWeek();
    case Unit::day:
      return icu::MeasureUnit::getDay();
    case Unit::hour:
      return icu::MeasureUnit::getHour();
    case Unit::minute:
      return icu::MeasureUnit::getMinute();
    default:
      return icu::MeasureUnit::getSecond();
  }
}

}  // namespace

// ---- Formatting helpers ------------------------------------------------------------------------

KeelResult<std::string> Adapter::Implementation::formatUsingUtcTimezone(
    KeelDate foundationDate, EStyle dateStyle, LocaleIdentifierOverride localeIdentifierOverride,
    EStyle timeStyle) {
  constexpr std::string_view function =
      "formatUsingUtcTimezone(foundationDate:dateStyle:localeIdentifierOverride:timeStyle:)";
  const auto args = [&]() -> KeelArguments {
    return {{"foundationDate", describeInstant(foundationDate)},
            {"dateStyle", platformStyleName(dateStyle)},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"timeStyle", platformStyleName(timeStyle)}};
  };
  const KeelResult<icu::DateFormat*> formatter =
      getUtcTimezoneGregorianDateFormatter(dateStyle, localeIdentifierOverride, timeStyle);
  if (!formatter) return KeelError::wrap(formatter.error(), args(), path, function);
  if (!formattable(foundationDate))
    return KeelError::fault(producedNoString, args(), path, function);
  // The field-position form: the other forms copy the formatter's calendar on the heap.
  icu::UnicodeString text;
  icu::FieldPosition position;
  formatter.value()->format(udate(foundationDate), text, position);
  return written(text, U_ZERO_ERROR, args, function);
}

KeelResult<std::string> Adapter::Implementation::formatUsingUtcTimezone(
    KeelDate foundationDate, std::string_view formatStringTemplate,
    LocaleIdentifierOverride localeIdentifierOverride, bool shouldLocalizeFormatStringTemplate) {
  constexpr std::string_view function =
      "formatUsingUtcTimezone(foundationDate:formatStringTemplate:localeIdentifierOverride:"
      "shouldLocalizeFormatStringTemplate:)";
  const auto args = [&]() -> KeelArguments {
    return {{"foundationDate", describeInstant(foundationDate)},
            {"formatStringTemplate", formatStringTemplate},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"shouldLocalizeFormatStringTemplate", shouldLocalizeFormatStringTemplate}};
  };
  const KeelResult<icu::DateFormat*> formatter = getUtcTimezoneGregorianDateFormatter(
      formatStringTemplate, localeIdentifierOverride, shouldLocalizeFormatStringTemplate);
  if (!formatter) return KeelError::wrap(formatter.error(), args(), path, function);
  if (!formattable(foundationDate))
    return KeelError::fault(producedNoString, args(), path, function);
  // The field-position form: the other forms copy the formatter's calendar on the heap.
  icu::UnicodeString text;
  icu::FieldPosition position;
  formatter.value()->format(udate(foundationDate), text, position);
  return written(text, U_ZERO_ERROR, args, function);
}

KeelResult<std::string> Adapter::Implementation::formatUsingUtcTimezone(
    KeelDate fromDate, KeelDate toDate, EStyle dateStyle,
    LocaleIdentifierOverride localeIdentifierOverride, EStyle timeStyle) {
  constexpr std::string_view function =
      "formatUsingUtcTimezone(fromDate:toDate:dateStyle:localeIdentifierOverride:timeStyle:)";
  const auto args = [&]() -> KeelArguments {
    return {{"fromDate", describeInstant(fromDate)},
            {"toDate", describeInstant(toDate)},
            {"dateStyle", platformStyleName(dateStyle)},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"timeStyle", platformStyleName(timeStyle)}};
  };
  const KeelResult<DateIntervalFormatter*> formatter =
      getUtcTimezoneGregorianDateIntervalFormatter(dateStyle, localeIdentifierOverride, timeStyle);
  if (!formatter) return KeelError::wrap(formatter.error(), args(), path, function);
  if (!formattable(fromDate) || !formattable(toDate)) {
    return KeelError::fault(producedNoString, args(), path, function);
  }
  // The pair of proleptic calendars, not the formatter's own (hybrid) calendar, carry the ends.
  DateIntervalFormatter& interval = *formatter.value();
  UErrorCode status = U_ZERO_ERROR;
  interval.fromCalendar->setTime(udate(fromDate), status);
  interval.toCalendar->setTime(udate(toDate), status);
  icu::UnicodeString text;
  icu::FieldPosition position;
  interval.formatter->format(*interval.fromCalendar, *interval.toCalendar, text, position, status);
  return written(text, status, args, function);
}

KeelResult<DurationFormatter*> Adapter::Implementation::geDurationFormatter(
    LocaleIdentifierOverride localeIdentifierOverride, QuandaDurationFormatStyle style) {
  constexpr std::string_view function = "geDurationFormatter(localeIdentifierOverride:style:)";
  const std::string_view localeIdentifier = resolvedLocaleIdentifier(localeIdentifierOverride);
  const DurationFormatterKeyOf<std::string_view> key{localeIdentifier, style};
  if (DurationFormatter* found = durationFormattersByStyle.find(key)) return found;

  const icu::Locale& locale = getLocaleBy(localeIdentifier).locale;
  DurationFormatter formatter{durationFormatSettings(style), std::nullopt, {}, nullptr, {}, {}};
  if (const std::string_view language = locale.getLanguage(); !language.empty()) {
    formatter.languageCode = std::string(language);
  }
  using Settings = QuandaDurationFormatSettings;
  UErrorCode status = U_ZERO_ERROR;
  if (formatter.settings.unitsStyle == Settings::UnitsStyle::positional) {
    const auto number =
        icu::number::NumberFormatter::withLocale(locale).grouping(UNUM_GROUPING_OFF);
    formatter.leadingNumber = number;
    formatter.paddedNumber = number.integerWidth(icu::number::IntegerWidth::zeroFillTo(2));
  } else {
    const bool full = formatter.settings.unitsStyle == Settings::UnitsStyle::full;
    const std::uint32_t allowed = formatter.settings.allowedUnits.value_or(0);
    for (std::size_t index = 0; index < durationUnits.size(); ++index) {
      if (allowed != 0 && (allowed & durationUnits[index]) == 0) continue;
      formatter.unitFormatters[index] =
          icu::number::NumberFormatter::withLocale(locale)
              .unit(measureUnit(durationUnits[index]))
              .unitWidth(full ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_NARROW);
    }
    formatter.listFormatter.reset(icu::ListFormatter::createInstance(
        locale, ULISTFMT_TYPE_UNITS, full ? ULISTFMT_WIDTH_WIDE : ULISTFMT_WIDTH_NARROW, status));
  }
  if (U_FAILURE(status)) {
    return KeelError::fault(
        platformObjectFailure,
        {{"localeIdentifierOverride", localeIdentifierOverride}, {"style", caseName(style)}}, path,
        function, errorName(status));
  }
  return &durationFormattersByStyle.store({std::string(localeIdentifier), style},
                                          std::move(formatter));
}

// ---- Dates, times and date-times ---------------------------------------------------------------

namespace {

// How the platform writes a value: a date style and a time style, or a template and whether it is
// localized.
struct PlatformStyles {
  icu::DateFormat::EStyle dateStyle;
  icu::DateFormat::EStyle timeStyle;
};
struct PlatformTemplate {
  std::string_view formatStringTemplate;
  bool shouldLocalizeFormatStringTemplate;
};

PlatformStyles platform(QuandaDateFormatStyle style) {
  return {platformTwin(style), icu::DateFormat::kNone};
}
PlatformStyles platform(QuandaTimeFormatStyle style) {
  return {icu::DateFormat::kNone, platformTwin(style)};
}
PlatformStyles platform(const QuandaDateTimeFormatStyle& style) {
  return {platformTwin(style.dateStyle()), platformTwin(style.timeStyle())};
}
template <QuandaKnownFormatTemplateEnumeration Template>
PlatformTemplate platform(Template known) {
  return {unlocalizedFormatStringTemplate(known), shouldLocalizeFormatStringTemplate(known)};
}

KeelResult<std::string> formatInUtc(Adapter::Implementation& state, KeelDate date,
                                    Adapter::LocaleIdentifierOverride localeIdentifierOverride,
                                    PlatformStyles styles) {
  return state.formatUsingUtcTimezone(date, styles.dateStyle, localeIdentifierOverride,
                                      styles.timeStyle);
}
KeelResult<std::string> formatInUtc(Adapter::Implementation& state, KeelDate date,
                                    Adapter::LocaleIdentifierOverride localeIdentifierOverride,
                                    PlatformTemplate known) {
  return state.formatUsingUtcTimezone(date, known.formatStringTemplate, localeIdentifierOverride,
                                      known.shouldLocalizeFormatStringTemplate);
}

std::string styleText(const QuandaDateTimeFormatStyle& style) { return style.description(); }
template <QuandaNamedEnumeration Style>
std::string styleText(Style style) {
  return std::string(caseName(style));
}

// The arguments of a formatting operation, in the order of its signature: the value, then the
// style or template and the locale override (the override first for the time styles).
template <class Style>
[[gnu::noinline, gnu::cold]] KeelError formattingFailure(
    const KeelError& inner, KeelArgument value, std::string_view styleKey, const Style& style,
    Adapter::LocaleIdentifierOverride localeIdentifierOverride, std::string_view function,
    std::uint32_t line = __builtin_LINE()) {
  KeelArguments args{std::move(value)};
  if constexpr (std::is_same_v<Style, QuandaTimeFormatStyle>) {
    args.emplace_back("localeIdentifierOverride", localeIdentifierOverride);
    args.emplace_back(styleKey, styleText(style));
  } else {
    args.emplace_back(styleKey, styleText(style));
    args.emplace_back("localeIdentifierOverride", localeIdentifierOverride);
  }
  return KeelError::wrap(inner, std::move(args), path, function, line);
}

// Every formatting of components: the components' UTC instant (a time of day's on the fixed
// date), written by the formatter of the style or template; either failure is wrapped with the
// operation's arguments. Dates pass through the formatting of an instant, as callers of that
// operation see them.
template <class Components, class Style>
KeelResult<std::string> formatComponents(Adapter& adapter, Adapter::Implementation& state,
                                         const Components& components, const Style& style,
                                         Adapter::LocaleIdentifierOverride localeIdentifierOverride,
                                         std::string_view componentsKey, std::string_view styleKey,
                                         std::string_view function) {
  const KeelResult<KeelDate> date = adapter.makeUtcGregorianFoundationDate(onFixedDate(components));
  if (!date) {
    return formattingFailure(date.error(), {componentsKey, components}, styleKey, style,
                             localeIdentifierOverride, function);
  }
  KeelResult<std::string> text = [&] {
    if constexpr (std::is_same_v<Components, QuandaCalendarAdapting::DateComponents>) {
      return adapter.format(date.value(), style, localeIdentifierOverride);
    } else {
      return formatInUtc(state, date.value(), localeIdentifierOverride, platform(style));
    }
  }();
  if (!text) {
    return formattingFailure(text.error(), {componentsKey, components}, styleKey, style,
                             localeIdentifierOverride, function);
  }
  return text;
}

}  // namespace

KeelResult<std::string> Adapter::format(DateComponents abstractDateComponents,
                                        QuandaDateFormatStyle dateStyle,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(*this, *implementation_, abstractDateComponents, dateStyle,
                          localeIdentifierOverride, "abstractDateComponents", "dateStyle",
                          "format(abstractDateComponents:dateStyle:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(DateComponents abstractDateComponents,
                                        QuandaKnownDateFormatTemplate formatStringTemplate,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractDateComponents, formatStringTemplate,
      localeIdentifierOverride, "abstractDateComponents", "formatStringTemplate",
      "format(abstractDateComponents:formatStringTemplate:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(KeelDate foundationDate, QuandaDateFormatStyle dateStyle,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  KeelResult<std::string> text =
      formatInUtc(*implementation_, foundationDate, localeIdentifierOverride, platform(dateStyle));
  if (!text) {
    return formattingFailure(text.error(), {"foundationDate", describeInstant(foundationDate)},
                             "dateStyle", dateStyle, localeIdentifierOverride,
                             "format(foundationDate:dateStyle:localeIdentifierOverride:)");
  }
  return text;
}

KeelResult<std::string> Adapter::format(KeelDate foundationDate,
                                        QuandaKnownDateFormatTemplate formatStringTemplate,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  KeelResult<std::string> text = formatInUtc(
      *implementation_, foundationDate, localeIdentifierOverride, platform(formatStringTemplate));
  if (!text) {
    return formattingFailure(
        text.error(), {"foundationDate", describeInstant(foundationDate)}, "formatStringTemplate",
        formatStringTemplate, localeIdentifierOverride,
        "format(foundationDate:formatStringTemplate:localeIdentifierOverride:)");
  }
  return text;
}

KeelResult<std::string> Adapter::format(DateComponents startDateAbstractDateComponents,
                                        DateComponents endDateAbstractDateComponents,
                                        QuandaDateRangeFormatStyle style,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  constexpr std::string_view function =
      "format(startDateAbstractDateComponents:endDateAbstractDateComponents:style:"
      "localeIdentifierOverride:)";
  const auto args = [&]() -> KeelArguments {
    return {{"startDateAbstractDateComponents", startDateAbstractDateComponents},
            {"endDateAbstractDateComponents", endDateAbstractDateComponents},
            {"style", caseName(style)},
            {"localeIdentifierOverride", localeIdentifierOverride}};
  };
  const KeelResult<KeelDate> start =
      makeUtcGregorianFoundationDate(startDateAbstractDateComponents);
  if (!start) return KeelError::wrap(start.error(), args(), path, function);
  const KeelResult<KeelDate> end = makeUtcGregorianFoundationDate(endDateAbstractDateComponents);
  if (!end) return KeelError::wrap(end.error(), args(), path, function);
  KeelResult<std::string> text =
      implementation_->formatUsingUtcTimezone(start.value(), end.value(), platformTwin(style),
                                              localeIdentifierOverride, icu::DateFormat::kNone);
  if (!text) return KeelError::wrap(text.error(), args(), path, function);
  return text;
}

KeelResult<std::string> Adapter::format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                        LocaleIdentifierOverride localeIdentifierOverride,
                                        QuandaTimeFormatStyle timeStyle) {
  return formatComponents(
      *this, *implementation_, abstractDiscreteTimeComponents, timeStyle, localeIdentifierOverride,
      "abstractDiscreteTimeComponents", "timeStyle",
      "format(abstractDiscreteTimeComponents:localeIdentifierOverride:timeStyle:)");
}

KeelResult<std::string> Adapter::format(RealTimeComponents abstractRealTimeComponents,
                                        LocaleIdentifierOverride localeIdentifierOverride,
                                        QuandaTimeFormatStyle timeStyle) {
  return formatComponents(*this, *implementation_, abstractRealTimeComponents, timeStyle,
                          localeIdentifierOverride, "abstractRealTimeComponents", "timeStyle",
                          "format(abstractRealTimeComponents:localeIdentifierOverride:timeStyle:)");
}

KeelResult<std::string> Adapter::format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                        QuandaKnownTimeFormatTemplate formatStringTemplate,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractDiscreteTimeComponents, formatStringTemplate,
      localeIdentifierOverride, "abstractDiscreteTimeComponents", "formatStringTemplate",
      "format(abstractDiscreteTimeComponents:formatStringTemplate:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(RealTimeComponents abstractRealTimeComponents,
                                        QuandaKnownTimeFormatTemplate formatStringTemplate,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractRealTimeComponents, formatStringTemplate,
      localeIdentifierOverride, "abstractRealTimeComponents", "formatStringTemplate",
      "format(abstractRealTimeComponents:formatStringTemplate:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(
    DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
    QuandaDateTimeFormatStyle dateTimeStyle, LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractDiscreteDateTimeComponents, dateTimeStyle,
      localeIdentifierOverride, "abstractDiscreteDateTimeComponents", "dateTimeStyle",
      "format(abstractDiscreteDateTimeComponents:dateTimeStyle:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(RealDateTimeComponents abstractRealDateTimeComponents,
                                        QuandaDateTimeFormatStyle dateTimeStyle,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractRealDateTimeComponents, dateTimeStyle,
      localeIdentifierOverride, "abstractRealDateTimeComponents", "dateTimeStyle",
      "format(abstractRealDateTimeComponents:dateTimeStyle:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(
    DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
    QuandaKnownDateTimeFormatTemplate formatStringTemplate,
    LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractDiscreteDateTimeComponents, formatStringTemplate,
      localeIdentifierOverride, "abstractDiscreteDateTimeComponents", "formatStringTemplate",
      "format(abstractDiscreteDateTimeComponents:formatStringTemplate:localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::format(RealDateTimeComponents abstractRealDateTimeComponents,
                                        QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                        LocaleIdentifierOverride localeIdentifierOverride) {
  return formatComponents(
      *this, *implementation_, abstractRealDateTimeComponents, formatStringTemplate,
      localeIdentifierOverride, "abstractRealDateTimeComponents", "formatStringTemplate",
      "format(abstractRealDateTimeComponents:formatStringTemplate:localeIdentifierOverride:)");
}

// ---- Durations ---------------------------------------------------------------------------------

KeelResult<QuandaFormattedDuration> Adapter::format(
    double duration, LocaleIdentifierOverride localeIdentifierOverride,
    QuandaDurationFormatStyle style) {
  constexpr std::string_view function = "format(duration:localeIdentifierOverride:style:)";
  const auto args = [&]() -> KeelArguments {
    return {{"duration", duration},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"style", caseName(style)}};
  };
  const KeelResult<DurationFormatter*> found =
      implementation_->geDurationFormatter(localeIdentifierOverride, style);
  if (!found) return KeelError::wrap(found.error(), args(), path, function);
  const DurationFormatter& formatter = *found.value();
  const std::optional<QuandaDurationDecomposition> decomposition =
      decomposeDuration(duration, formatter.settings);
  if (!decomposition) return KeelError::fault(producedNoString, args(), path, function);

  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString text;
  const std::span<const QuandaDurationDecomposition::Piece> pieces = decomposition->pieces();
  if (formatter.leadingNumber) {
    // Positional: "h:mm:ss", the leading number as it is and the others with two digits.
    for (std::size_t index = 0; index < pieces.size(); ++index) {
      if (index > 0) text += u':';
      const icu::number::LocalizedNumberFormatter& number =
          index == 0 ? *formatter.leadingNumber : *formatter.paddedNumber;
      text += number.formatInt(pieces[index].amount, status).toTempString(status);
    }
  } else {
    std::array<icu::UnicodeString, 7> texts;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
      const auto& unitFormatter = formatter.unitFormatters[unitIndex(pieces[index].unit)];
      KEEL_PRECONDITION(unitFormatter.has_value(), "duration piece of a unit the style disallows");
      texts[index] = unitFormatter->formatInt(pieces[index].amount, status).toString(status);
    }
    formatter.listFormatter->format(texts.data(), static_cast<int32_t>(pieces.size()), text,
                                    status);
  }
  if (U_FAILURE(status) || text.isEmpty()) {
    return KeelError::fault(producedNoString, args(), path, function, errorName(status));
  }
  std::string result = decomposition->isNegative ? "-" : "";
  text.toUTF8String(result);
  return QuandaFormattedDuration{std::move(result), formatter.languageCode};
}

// ---- Names and symbols -------------------------------------------------------------------------

KeelResult<std::string> Adapter::format(QuandaDayOfGregorianWeek standaloneDayOfWeek,
                                        LocaleIdentifierOverride localeIdentifierOverride,
                                        QuandaStandaloneDayNameFormatStyle style) {
  constexpr std::string_view function =
      "format(standaloneDayOfWeek:localeIdentifierOverride:style:)";
  const auto args = [&]() -> KeelArguments {
    return {{"standaloneDayOfWeek", caseName(standaloneDayOfWeek)},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"style", caseName(style)}};
  };
  Implementation& state = *implementation_;
  const KeelResult<GregorianCalendar*> calendar =
      state.getGregorianCalendarBy(state.resolvedLocaleIdentifier(localeIdentifierOverride),
                                   state.device->currentTimezoneIdentifier());
  if (!calendar) return KeelError::wrap(calendar.error(), args(), path, function);
  const icu::DateFormatSymbols* symbols = state.symbols(*calendar.value()->locale);
  if (symbols == nullptr) return KeelError::fault(platformObjectFailure, args(), path, function);
  using Symbols = icu::DateFormatSymbols;
  const Symbols::DtWidthType width =
      style == QuandaStandaloneDayNameFormatStyle::full     ? Symbols::WIDE
      : style == QuandaStandaloneDayNameFormatStyle::short_ ? Symbols::ABBREVIATED
                                                            : Symbols::NARROW;
  int32_t count = 0;
  const icu::UnicodeString* names = symbols->getWeekdays(count, Symbols::STANDALONE, width);
  // The platform's list begins with Sunday (after an empty first entry, so that the index is the
  // platform's own weekday number, Sunday 1 ... Saturday 7).
  const int32_t index = (ordinal(standaloneDayOfWeek) + 1) % 7 + 1;
  KEEL_PRECONDITION(names != nullptr && index < count, "weekday name list too short");
  return utf8(names[index]);
}

KeelResult<std::vector<std::string>> Adapter::calendarColumnNames(
    LocaleIdentifierOverride localeIdentifierOverride,
    std::optional<QuandaDayOfGregorianWeek> preferredFirstDayOfWeekOverride,
    QuandaStandaloneDayNameFormatStyle style) {
  constexpr std::string_view function =
      "calendarColumnNames(localeIdentifierOverride:preferredFirstDayOfWeekOverride:style:)";
  const auto args = [&]() -> KeelArguments {
    return {{"localeIdentifierOverride", localeIdentifierOverride},
            {"preferredFirstDayOfWeekOverride",
             preferredFirstDayOfWeekOverride
                 ? std::optional<std::string_view>(caseName(*preferredFirstDayOfWeekOverride))
                 : std::nullopt},
            {"style", caseName(style)}};
  };
  QuandaDayOfGregorianWeek day;
  if (preferredFirstDayOfWeekOverride) {
    day = *preferredFirstDayOfWeekOverride;
  } else {
    const KeelResult<QuandaDayOfGregorianWeek> first = preferredFirstDayOfWeek();
    if (!first) return KeelError::wrap(first.error(), args(), path, function);
    day = first.value();
  }
  std::vector<std::string> names;
  names.reserve(7);
  for (int column = 0; column < 7; ++column, day = nextDayOfWeek(day)) {
    KeelResult<std::string> name = format(day, localeIdentifierOverride, style);
    if (!name) return KeelError::wrap(name.error(), args(), path, function);
    names.push_back(std::move(name).value());
  }
  return names;
}

// The two day-period symbols share one routine, told which of them to return.
KeelResult<std::string> Adapter::Implementation::dayPeriodSymbol(
    LocaleIdentifierOverride localeIdentifierOverride, bool pm, std::string_view function) {
  const KeelArguments args{{"localeIdentifierOverride", localeIdentifierOverride}};
  const KeelResult<GregorianCalendar*> calendar = getGregorianCalendarBy(
      resolvedLocaleIdentifier(localeIdentifierOverride), device->currentTimezoneIdentifier());
  if (!calendar) return KeelError::wrap(calendar.error(), args, path, function);
  const icu::DateFormatSymbols* found = symbols(*calendar.value()->locale);
  if (found == nullptr) return KeelError::fault(platformObjectFailure, args, path, function);
  int32_t count = 0;
  const icu::UnicodeString* symbols = found->getAmPmStrings(count);
  KEEL_PRECONDITION(symbols != nullptr && count >= 2, "day-period symbol list too short");
  return utf8(symbols[pm ? 1 : 0]);
}

KeelResult<std::string> Adapter::amSymbol(LocaleIdentifierOverride localeIdentifierOverride) {
  return implementation_->dayPeriodSymbol(localeIdentifierOverride, false,
                                          "amSymbol(localeIdentifierOverride:)");
}

KeelResult<std::string> Adapter::pmSymbol(LocaleIdentifierOverride localeIdentifierOverride) {
  return implementation_->dayPeriodSymbol(localeIdentifierOverride, true,
                                          "pmSymbol(localeIdentifierOverride:)");
}
