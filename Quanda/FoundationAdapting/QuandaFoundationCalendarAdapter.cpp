// The adapter's caches, the getters that fill them, and the preferences.
//
// Each getter resolves its locale identifier (the override, else the device's current one),
// looks its key up without building a string, and on a miss builds the platform object, stores
// it and returns it. A failed build stores nothing, so a later call tries again.
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/utypes.h>

#include <cmath>
#include <limits>
#include <string>

#include "Keel/KeelPrecondition.h"
#include "Quanda/FoundationAdapting/QuandaFoundationAdaptingPrivate.h"
#include "Quanda/FoundationAdapting/QuandaSystemDeviceSettings.h"

using namespace quanda_adapting;
using Adapter = QuandaFoundationCalendarAdapter;

namespace {

constexpr std::string_view path = adapterPath;
constexpr std::string_view utcIdentifier = "UTC";

// A fresh formatter set up as every formatter of the adapter is: proleptic where its calendar is
// Gregorian-based, in UTC.
void configure(icu::DateFormat& formatter) {
  std::unique_ptr<icu::Calendar> calendar(formatter.getCalendar()->clone());
  makeProlepticUtc(*calendar);
  formatter.adoptCalendar(calendar.release());
}

}  // namespace

// ---- Shared helpers --------------------------------------------------------------------------

std::unique_ptr<icu::TimeZone> quanda_adapting::makeUtcIcuTimezone() {
  return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone("UTC"));
}

void quanda_adapting::makeProlepticUtc(icu::Calendar& calendar) {
  if (auto* gregorian = dynamic_cast<icu::GregorianCalendar*>(&calendar)) {
    UErrorCode status = U_ZERO_ERROR;
    gregorian->setGregorianChange(-std::numeric_limits<double>::infinity(), status);
  }
  calendar.adoptTimeZone(makeUtcIcuTimezone().release());
}

std::string quanda_adapting::utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

std::string quanda_adapting::describeInstant(KeelDate instant) {
  return keel::describeDouble(instant.time_since_epoch().count());
}

std::string_view quanda_adapting::platformStyleName(icu::DateFormat::EStyle style) {
  switch (style) {
    case icu::DateFormat::kFull:
      return "full";
    case icu::DateFormat::kLong:
      return "long";
    case icu::DateFormat::kMedium:
      return "medium";
    case icu::DateFormat::kShort:
      return "short";
    default:
      return "none";
  }
}

std::string GregorianCalendar::description() const {
  return "Calendar(identifier: gregorian, localeIdentifier: " + localeIdentifier +
         ", timezoneIdentifier: " + timezoneIdentifier + ")";
}

// ---- Life ------------------------------------------------------------------------------------

Adapter::QuandaFoundationCalendarAdapter()
    : QuandaFoundationCalendarAdapter(std::make_shared<QuandaSystemDeviceSettings>()) {}

Adapter::QuandaFoundationCalendarAdapter(std::shared_ptr<const QuandaDeviceSettings> device)
    : implementation_(std::make_unique<Implementation>(std::move(device))) {
  KEEL_PRECONDITION(implementation_->device != nullptr, "calendar adapter without device settings");
}

Adapter::~QuandaFoundationCalendarAdapter() = default;

Adapter::CacheBuildCounts Adapter::cacheBuildCounts() const {
  const Implementation& state = *implementation_;
  return {state.dateFormattersByFormatString.builtCount(),
          state.dateFormattersByStyles.builtCount(),
          state.dateIntervalFormattersByStyles.builtCount(),
          state.durationFormattersByStyle.builtCount(),
          state.gregorianCalendarsByTimezoneIdentifier.builtCount(),
          state.localesByIdentifier.builtCount(),
          state.localizedFormatStrings.builtCount(),
          state.timezonesByIdentifier.builtCount(),
          state.patternGeneratorBuilds,
          state.dateFormatSymbolsBuilds,
          state.weekDataBuilds};
}

std::string Adapter::description() const {
  return "QuandaFoundationCalendarAdapter(currentLocaleIdentifier: " +
         std::string(implementation_->device->currentLocaleIdentifier()) +
         ", currentTimezoneIdentifier: " + currentTimezoneIdentifier() + ")";
}

// ---- Getters ---------------------------------------------------------------------------------

KeelResult<const Timezone*> Adapter::Implementation::getTimezoneBy(std::string_view identifier) {
  if (const Timezone* found = timezonesByIdentifier.find(identifier)) return found;
  const std::optional<absl::TimeZone> zone = loadSystemTimezone(identifier);
  if (!zone) {
    return KeelError::fault("Failed to create timezone", {{"identifier", identifier}}, path,
                            "getTimezoneBy(identifier:)");
  }
  const bool isUtc = identifier == utcIdentifier;
  return &timezonesByIdentifier.store(
      std::string(identifier), Timezone{*zone, isUtc, isUtc ? ZoneOffsets() : ZoneOffsets(*zone)});
}

Locale& Adapter::Implementation::getLocaleBy(std::string_view identifier) {
  if (Locale* found = localesByIdentifier.find(identifier)) return *found;
  std::string owned(identifier);
  icu::Locale locale(owned.c_str());
  return localesByIdentifier.store(owned, Locale{owned, std::move(locale)});
}

icu::DateTimePatternGenerator* Adapter::Implementation::patternGenerator(Locale& locale) {
  if (!locale.patternGenerator) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale.locale, status));
    if (U_FAILURE(status) || !generator) return nullptr;
    locale.patternGenerator = std::move(generator);
    ++patternGeneratorBuilds;
  }
  return locale.patternGenerator.get();
}

icu::DateFormatSymbols* Adapter::Implementation::symbols(Locale& locale) {
  if (!locale.symbols) {
    UErrorCode status = U_ZERO_ERROR;
    auto symbols = std::make_unique<icu::DateFormatSymbols>(locale.locale, "gregorian", status);
    if (U_FAILURE(status)) return nullptr;
    locale.symbols = std::move(symbols);
    ++dateFormatSymbolsBuilds;
  }
  return locale.symbols.get();
}

std::optional<UCalendarDaysOfWeek> Adapter::Implementation::firstDayOfWeek(Locale& locale) {
  if (!locale.firstDayOfWeek) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::GregorianCalendar calendar(locale.locale, status);
    const UCalendarDaysOfWeek day = calendar.getFirstDayOfWeek(status);
    if (U_FAILURE(status)) return std::nullopt;
    locale.firstDayOfWeek = day;
    ++weekDataBuilds;
  }
  return locale.firstDayOfWeek;
}

KeelResult<icu::UnicodeString> Adapter::Implementation::getLocalizedFormatString(
    std::string_view formatStringTemplate, std::string_view localeIdentifier,
    bool shouldLocalizeFormatStringTemplate) {
  const icu::UnicodeString unlocalized = icu::UnicodeString::fromUTF8(icu::StringPiece(
      formatStringTemplate.data(), static_cast<int32_t>(formatStringTemplate.size())));
  if (!shouldLocalizeFormatStringTemplate) return unlocalized;
  const LocalizedFormatStringKeyOf<std::string_view> key{localeIdentifier, formatStringTemplate};
  if (const icu::UnicodeString* found = localizedFormatStrings.find(key)) return *found;
  UErrorCode status = U_ZERO_ERROR;
  icu::DateTimePatternGenerator* generator = patternGenerator(getLocaleBy(localeIdentifier));
  const icu::UnicodeString pattern =
      generator != nullptr ? generator->getBestPattern(unlocalized, status) : icu::UnicodeString();
  if (U_FAILURE(status) || pattern.isEmpty()) {
    return KeelError::fault(
        "No format string produced",
        {{"template", formatStringTemplate}, {"localeIdentifier", localeIdentifier}}, path,
        "getLocalizedFormatString(template:localeIdentifier:shouldLocalizeFormatStringTemplate:)",
        errorName(status));
  }
  return localizedFormatStrings.store(
      {std::string(localeIdentifier), std::string(formatStringTemplate)}, pattern);
}

KeelResult<GregorianCalendar*> Adapter::Implementation::getGregorianCalendarBy(
    std::string_view localeIdentifier, std::string_view timezoneIdentifier) {
  if (lastCalendar != nullptr && lastCalendar->timezoneIdentifier == timezoneIdentifier &&
      lastCalendar->localeIdentifier == localeIdentifier) {
    return lastCalendar;
  }
  const GregorianCalendarCacheKeyOf<std::string_view> key{localeIdentifier, timezoneIdentifier};
  if (GregorianCalendar* found = gregorianCalendarsByTimezoneIdentifier.find(key)) {
    return lastCalendar = found;
  }
  const KeelResult<const Timezone*> zone = getTimezoneBy(timezoneIdentifier);
  if (!zone) {
    return KeelError::wrap(
        zone.error(),
        {{"localeIdentifier", localeIdentifier}, {"timezoneIdentifier", timezoneIdentifier}}, path,
        "getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)");
  }
  Locale& locale = getLocaleBy(localeIdentifier);
  return lastCalendar = &gregorianCalendarsByTimezoneIdentifier.store(
             {std::string(localeIdentifier), std::string(timezoneIdentifier)},
             GregorianCalendar{std::string(localeIdentifier), std::string(timezoneIdentifier),
                               &locale, zone.value()});
}

KeelResult<GregorianCalendar*> Adapter::Implementation::getLocalGregorianCalendar() {
  const KeelResult<GregorianCalendar*> calendar = getGregorianCalendarBy(
      device->currentLocaleIdentifier(), device->currentTimezoneIdentifier());
  if (!calendar) return KeelError::wrap(calendar.error(), {}, path, "getLocalGregorianCalendar()");
  return calendar;
}

KeelResult<icu::DateFormat*> Adapter::Implementation::getUtcTimezoneGregorianDateFormatter(
    EStyle dateStyle, LocaleIdentifierOverride localeIdentifierOverride, EStyle timeStyle) {
  constexpr std::string_view function =
      "getUtcTimezoneGregorianDateFormatter(dateStyle:localeIdentifierOverride:timeStyle:)";
  const std::string_view localeIdentifier = resolvedLocaleIdentifier(localeIdentifierOverride);
  const DateFormatterStyleKeyOf<std::string_view> key{dateStyle, localeIdentifier, timeStyle,
                                                      utcIdentifier};
  if (auto* found = dateFormattersByStyles.find(key)) return found->get();
  const auto args = [&]() -> KeelArguments {
    return {{"dateStyle", platformStyleName(dateStyle)},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"timeStyle", platformStyleName(timeStyle)}};
  };
  const KeelResult<const Timezone*> zone = getTimezoneBy(utcIdentifier);
  if (!zone) return KeelError::wrap(zone.error(), args(), path, function);
  std::unique_ptr<icu::DateFormat> formatter(icu::DateFormat::createDateTimeInstance(
      dateStyle, timeStyle, getLocaleBy(localeIdentifier).locale));
  if (!formatter) return KeelError::fault(platformObjectFailure, args(), path, function);
  configure(*formatter);
  return dateFormattersByStyles
      .store({dateStyle, std::string(localeIdentifier), timeStyle, std::string(utcIdentifier)},
             std::move(formatter))
      .get();
}

KeelResult<icu::DateFormat*> Adapter::Implementation::getUtcTimezoneGregorianDateFormatter(
    std::string_view formatStringTemplate, LocaleIdentifierOverride localeIdentifierOverride,
    bool shouldLocalizeFormatStringTemplate) {
  constexpr std::string_view function =
      "getUtcTimezoneGregorianDateFormatter(formatStringTemplate:localeIdentifierOverride:"
      "shouldLocalizeFormatStringTemplate:)";
  const std::string_view localeIdentifier = resolvedLocaleIdentifier(localeIdentifierOverride);
  const DateFormatterFormatStringKeyOf<std::string_view> key{
      formatStringTemplate, localeIdentifier, shouldLocalizeFormatStringTemplate, utcIdentifier};
  if (auto* found = dateFormattersByFormatString.find(key)) return found->get();
  const auto args = [&]() -> KeelArguments {
    return {{"formatStringTemplate", formatStringTemplate},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"shouldLocalizeFormatStringTemplate", shouldLocalizeFormatStringTemplate}};
  };
  const KeelResult<icu::UnicodeString> pattern = getLocalizedFormatString(
      formatStringTemplate, localeIdentifier, shouldLocalizeFormatStringTemplate);
  if (!pattern) return KeelError::wrap(pattern.error(), args(), path, function);
  const KeelResult<const Timezone*> zone = getTimezoneBy(utcIdentifier);
  if (!zone) return KeelError::wrap(zone.error(), args(), path, function);
  UErrorCode status = U_ZERO_ERROR;
  auto formatter = std::make_unique<icu::SimpleDateFormat>(
      pattern.value(), getLocaleBy(localeIdentifier).locale, status);
  if (U_FAILURE(status)) {
    return KeelError::fault(platformObjectFailure, args(), path, function, errorName(status));
  }
  configure(*formatter);
  return dateFormattersByFormatString
      .store({std::string(formatStringTemplate), std::string(localeIdentifier),
              shouldLocalizeFormatStringTemplate, std::string(utcIdentifier)},
             std::move(formatter))
      .get();
}

KeelResult<DateIntervalFormatter*>
Adapter::Implementation::getUtcTimezoneGregorianDateIntervalFormatter(
    EStyle dateStyle, LocaleIdentifierOverride localeIdentifierOverride, EStyle timeStyle) {
  constexpr std::string_view function =
      "getUtcTimezoneGregorianDateIntervalFormatter(dateStyle:localeIdentifierOverride:"
      "timeStyle:)";
  const std::string_view localeIdentifier = resolvedLocaleIdentifier(localeIdentifierOverride);
  const DateIntervalFormatterStyleKeyOf<std::string_view> key{dateStyle, localeIdentifier,
                                                              timeStyle, utcIdentifier};
  if (DateIntervalFormatter* found = dateIntervalFormattersByStyles.find(key)) return found;
  const auto args = [&]() -> KeelArguments {
    return {{"dateStyle", platformStyleName(dateStyle)},
            {"localeIdentifierOverride", localeIdentifierOverride},
            {"timeStyle", platformStyleName(timeStyle)}};
  };
  // The range is written with the fields, and the widths, of the style's own pattern: the
  // skeleton of the style formatter's pattern (a German short date keeps its two-digit year).
  const KeelResult<icu::DateFormat*> styleFormatter =
      getUtcTimezoneGregorianDateFormatter(dateStyle, localeIdentifierOverride, timeStyle);
  if (!styleFormatter) return KeelError::wrap(styleFormatter.error(), args(), path, function);
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString pattern;
  static_cast<const icu::SimpleDateFormat*>(styleFormatter.value())->toPattern(pattern);
  const icu::UnicodeString skeleton =
      icu::DateTimePatternGenerator::staticGetSkeleton(pattern, status);
  std::unique_ptr<icu::DateIntervalFormat> formatter(icu::DateIntervalFormat::createInstance(
      skeleton, getLocaleBy(localeIdentifier).locale, status));
  if (U_FAILURE(status) || !formatter) {
    return KeelError::fault(platformObjectFailure, args(), path, function, errorName(status));
  }
  formatter->adoptTimeZone(makeUtcIcuTimezone().release());
  const icu::Calendar* calendar = styleFormatter.value()->getCalendar();
  return &dateIntervalFormattersByStyles.store(
      {dateStyle, std::string(localeIdentifier), timeStyle, std::string(utcIdentifier)},
      DateIntervalFormatter{std::move(formatter), std::unique_ptr<icu::Calendar>(calendar->clone()),
                            std::unique_ptr<icu::Calendar>(calendar->clone())});
}

// ---- Preferences -----------------------------------------------------------------------------

KeelResult<QuandaPreferredTimeFormat> Adapter::preferredTimeFormat() {
  Implementation& state = *implementation_;
  if (state.cachedPreferredTimeFormat) return *state.cachedPreferredTimeFormat;
  UErrorCode status = U_ZERO_ERROR;
  icu::DateTimePatternGenerator* generator =
      state.patternGenerator(state.getLocaleBy(state.device->currentLocaleIdentifier()));
  const icu::UnicodeString pattern =
      generator != nullptr ? generator->getBestPattern(u"jj", status) : icu::UnicodeString();
  if (U_FAILURE(status) || pattern.isEmpty()) {
    return KeelError::fault("Couldn't get localized 'jj' format string",
                            {{"adapter", description()}}, path, "preferredTimeFormat()",
                            errorName(status));
  }
  // Only "H" counts as a 24-hour clock; "k" (1 to 24) and "K" are taken as 12-hour.
  state.cachedPreferredTimeFormat = pattern.indexOf(u'H') >= 0
                                        ? QuandaPreferredTimeFormat::twentyFourHour
                                        : QuandaPreferredTimeFormat::twelveHour;
  return *state.cachedPreferredTimeFormat;
}

KeelResult<QuandaDayOfGregorianWeek> Adapter::preferredFirstDayOfWeek() {
  constexpr std::string_view function = "preferredFirstDayOfWeek()";
  Implementation& state = *implementation_;
  const KeelResult<GregorianCalendar*> calendar = state.getLocalGregorianCalendar();
  if (!calendar) return KeelError::wrap(calendar.error(), {}, path, function);
  // The local calendar is the one of the device's current locale, so the user's choice applies.
  if (const auto chosen = state.device->firstDayOfWeekOverride()) return *chosen;
  const std::optional<UCalendarDaysOfWeek> firstWeekday =
      state.firstDayOfWeek(*calendar.value()->locale);
  if (!firstWeekday) {
    return KeelError::fault(platformObjectFailure, {{"calendar", calendar.value()->description()}},
                            path, function);
  }
  // The platform counts Sunday 1 ... Saturday 7; anything else is taken as Saturday.
  if (*firstWeekday < UCAL_SUNDAY || *firstWeekday >= UCAL_SATURDAY) {
    return QuandaDayOfGregorianWeek::saturday;
  }
  return makeDayOfGregorianWeek(static_cast<std::uint8_t>((*firstWeekday + 5) % 7));
}

std::string Adapter::currentTimezoneIdentifier() const {
  return std::string(implementation_->device->currentTimezoneIdentifier());
}
