// QuandaFoundationCalendarAdapter: the library's calendar adapter, over the system's tz database
// for zone rules and ICU for everything about locales.
//
// What it does for each requirement of QuandaCalendarAdapting:
// - Conversions are proleptic Gregorian for every year, with no rollover: components that name no
//   moment (2023-02-29, hour 24, a real second of 60) are refused with "Failed to create local
//   foundation date from dateComponents" (the word "local" stays in the text for every zone).
//   Builders take any year the record holds, 0 (1 BC) to 65535, as the year it is; readers give
//   the year an instant has in the zone, so an instant before 0001 or after 9999 reaches the value
//   types' own validation as the year it is. In UTC the conversions are the library's own day
//   arithmetic; in other zones the zone's rules come from the system's tz database.
// - Daylight saving, for a wall time that a zone skips or repeats:
//   - a skipped wall time moves forward by the length of the gap: 02:30 on the night New York
//     springs forward is 03:30 EDT (07:30Z); a 30-minute gap moves it 30 minutes;
//   - a repeated wall time is the earlier of its two instants: 01:30 on the night New York falls
//     back is 01:30 EDT (05:30Z);
//   - a midnight that does not exist (Havana, Santiago) is the first instant of that day, never a
//     moment of the day before: 2024-03-10 00:00 in Havana is 01:00 CDT;
//   - a day skipped whole (Pacific/Apia, 2011-12-30) maps to the first instant after the gap,
//     moved forward by the gap as any skipped time is: 2011-12-30 00:00 is 2011-12-31 00:00.
// - A real second is split by floor into a whole second and a nanosecond (59.999999999 is second
//   59 and nanosecond 999999999); readers sum them back as doubles. A real second that is not
//   finite stops the process, as does an instant read into a record whose year does not fit it
//   (below 0 or above 65535). A NaN or infinite instant has no components at all: readers fail
//   with their first "dateComponents yields no ..." text. checkedFoundationDate() tells, without
//   stopping, whether an instant taken from outside can be read.
// - Zone identifiers are the names of the system's tz database (QuandaTimezoneDatabase); an
//   unknown, empty, wrongly cased or offset-only identifier fails with "Failed to create
//   timezone". Any locale identifier is accepted; one without data formats as the platform's
//   fallback locale does.
// - Formatting is in UTC, so no text depends on the device's zone; a time of day is placed on
//   2019-08-10 first. Style and template formatters use the calendar of their locale (a Thai
//   locale writes the Buddhist year); where that calendar is Gregorian-based it is proleptic, so
//   0001-01-01 prints as January 1. Ranges use a skeleton per locale and style that reproduces the
//   style's own field widths. Durations follow the rules of QuandaDurationDecomposition, written
//   with the locale's unit names and list pattern.
// - The device's locale, zone and first weekday come from the QuandaDeviceSettings given to the
//   constructor (the process's own by default), read at every call, so a change selects other
//   cache entries at once. The first-weekday override applies to calendars of the device's
//   current locale identifier.
//
// Every platform object (zone, locale, calendar, formatter, localized pattern, and the pattern
// generator, symbols and week data a locale brings) is built once per key and kept for the
// adapter's lifetime; a failed build stores nothing. A warm look-up allocates nothing.
// cacheBuildCounts() says how many objects each cache has built.
//
// An adapter is not synchronized: use one from one thread at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"
#include "Quanda/FoundationAdapting/QuandaDeviceSettings.h"

class QuandaFoundationCalendarAdapter final : public QuandaCalendarAdapting {
 public:
  // The device is the process itself (QuandaSystemDeviceSettings).
  QuandaFoundationCalendarAdapter();
  explicit QuandaFoundationCalendarAdapter(std::shared_ptr<const QuandaDeviceSettings> device);
  ~QuandaFoundationCalendarAdapter() override;
  QuandaFoundationCalendarAdapter(const QuandaFoundationCalendarAdapter&) = delete;
  QuandaFoundationCalendarAdapter& operator=(const QuandaFoundationCalendarAdapter&) = delete;

  // ---- Preferences, names and symbols --------------------------------------------------------

  // The device's first-weekday override for a calendar of its current locale, else the locale's
  // week data, read from the local calendar.
  KeelResult<QuandaDayOfGregorianWeek> preferredFirstDayOfWeek() override;
  // Decided once per adapter from the current locale's localized "jj" pattern: twentyFourHour
  // when it contains "H", twelveHour otherwise ("k" and "K" count as 12-hour, as they always
  // have here). Later changes of the device's locale are not seen.
  KeelResult<QuandaPreferredTimeFormat> preferredTimeFormat() override;
  KeelResult<std::vector<std::string>> calendarColumnNames(
      LocaleIdentifierOverride localeIdentifierOverride,
      std::optional<QuandaDayOfGregorianWeek> preferredFirstDayOfWeekOverride,
      QuandaStandaloneDayNameFormatStyle style) override;
  KeelResult<std::string> amSymbol(LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> pmSymbol(LocaleIdentifierOverride localeIdentifierOverride) override;
  std::string currentTimezoneIdentifier() const override;

  // ---- Formatting ----------------------------------------------------------------------------

  KeelResult<std::string> format(DateComponents abstractDateComponents,
                                 QuandaDateFormatStyle dateStyle,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(DateComponents abstractDateComponents,
                                 QuandaKnownDateFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(KeelDate foundationDate, QuandaDateFormatStyle dateStyle,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(KeelDate foundationDate,
                                 QuandaKnownDateFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  // The platform decides how a range whose ends are the same date, or reversed, is written.
  KeelResult<std::string> format(DateComponents startDateAbstractDateComponents,
                                 DateComponents endDateAbstractDateComponents,
                                 QuandaDateRangeFormatStyle style,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                 LocaleIdentifierOverride localeIdentifierOverride,
                                 QuandaTimeFormatStyle timeStyle) override;
  KeelResult<std::string> format(RealTimeComponents abstractRealTimeComponents,
                                 LocaleIdentifierOverride localeIdentifierOverride,
                                 QuandaTimeFormatStyle timeStyle) override;
  KeelResult<std::string> format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                 QuandaKnownTimeFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(RealTimeComponents abstractRealTimeComponents,
                                 QuandaKnownTimeFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
                                 QuandaDateTimeFormatStyle dateTimeStyle,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(RealDateTimeComponents abstractRealDateTimeComponents,
                                 QuandaDateTimeFormatStyle dateTimeStyle,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
                                 QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  KeelResult<std::string> format(RealDateTimeComponents abstractRealDateTimeComponents,
                                 QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                 LocaleIdentifierOverride localeIdentifierOverride) override;
  // The text as the rules of QuandaDurationDecomposition give it, a negative duration with "-"
  // before it, and the language code of the resolved locale identifier (absent when it has
  // none). Fails with "Formatter produced no string" for a duration that is not finite or whose
  // whole seconds do not fit 64 bits.
  KeelResult<QuandaFormattedDuration> format(double duration,
                                             LocaleIdentifierOverride localeIdentifierOverride,
                                             QuandaDurationFormatStyle style) override;
  KeelResult<std::string> format(QuandaDayOfGregorianWeek standaloneDayOfWeek,
                                 LocaleIdentifierOverride localeIdentifierOverride,
                                 QuandaStandaloneDayNameFormatStyle style) override;

  // ---- Platform instants from calendar components --------------------------------------------

  KeelResult<KeelDate> makeLocalGregorianFoundationDate(DateComponents from) override;
  KeelResult<KeelDate> makeUtcGregorianFoundationDate(DateComponents from) override;
  KeelResult<KeelDate> makeGregorianFoundationDate(DateComponents from,
                                                   std::string_view timezoneIdentifier) override;
  KeelResult<KeelDate> makeLocalGregorianFoundationDate(DiscreteDateTimeComponents from) override;
  KeelResult<KeelDate> makeLocalGregorianFoundationDate(RealDateTimeComponents from) override;
  KeelResult<KeelDate> makeUtcGregorianFoundationDate(DiscreteDateTimeComponents from) override;
  KeelResult<KeelDate> makeUtcGregorianFoundationDate(RealDateTimeComponents from) override;
  KeelResult<KeelDate> makeGregorianFoundationDate(DiscreteDateTimeComponents from,
                                                   std::string_view timezoneIdentifier) override;
  KeelResult<KeelDate> makeGregorianFoundationDate(RealDateTimeComponents from,
                                                   std::string_view timezoneIdentifier) override;

  // ---- Logic time intervals from date-time components ----------------------------------------

  KeelResult<QuandaLogicTimeInterval> makeLocalGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from) override;
  KeelResult<QuandaLogicTimeInterval> makeLocalGregorianLogicTimeInterval(
      RealDateTimeComponents from) override;
  KeelResult<QuandaLogicTimeInterval> makeUtcGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from) override;
  KeelResult<QuandaLogicTimeInterval> makeUtcGregorianLogicTimeInterval(
      RealDateTimeComponents from) override;
  KeelResult<QuandaLogicTimeInterval> makeGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from, std::string_view timezoneIdentifier) override;
  KeelResult<QuandaLogicTimeInterval> makeGregorianLogicTimeInterval(
      RealDateTimeComponents from, std::string_view timezoneIdentifier) override;

  // ---- Calendar components of a platform instant ---------------------------------------------

  KeelResult<DateComponents> makeLocalTimezoneDateComponents(KeelDate foundationDate) override;
  KeelResult<DateComponents> makeUtcTimezoneDateComponents(KeelDate foundationDate) override;
  KeelResult<DateComponents> makeTimezoneDateComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) override;
  KeelResult<DiscreteTimeComponents> makeLocalTimezoneDiscreteTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<RealTimeComponents> makeLocalTimezoneRealTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<DiscreteTimeComponents> makeUtcTimezoneDiscreteTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<RealTimeComponents> makeUtcTimezoneRealTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<DiscreteTimeComponents> makeTimezoneDiscreteTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) override;
  KeelResult<RealTimeComponents> makeTimezoneRealTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) override;
  KeelResult<DiscreteDateTimeComponents> makeLocalTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<RealDateTimeComponents> makeLocalTimezoneRealDateTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<DiscreteDateTimeComponents> makeUtcTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<RealDateTimeComponents> makeUtcTimezoneRealDateTimeComponents(
      KeelDate foundationDate) override;
  KeelResult<DiscreteDateTimeComponents> makeTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) override;
  KeelResult<RealDateTimeComponents> makeTimezoneRealDateTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) override;

  // ---- Date-time components of a logic time interval -----------------------------------------

  KeelResult<DiscreteDateTimeComponents> makeLocalTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) override;
  KeelResult<RealDateTimeComponents> makeLocalTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) override;
  KeelResult<DiscreteDateTimeComponents> makeUtcTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) override;
  KeelResult<RealDateTimeComponents> makeUtcTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) override;
  KeelResult<DiscreteDateTimeComponents> makeTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) override;
  KeelResult<RealDateTimeComponents> makeTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) override;

  KeelDate makeFoundationDate(QuandaLogicTimeInterval logicTimeInterval) override;

  // ---- Beyond the interface ------------------------------------------------------------------

  // The instant itself when the readers can take it in the zone without stopping and it falls
  // within the years 0001...9999 there: "Foundation date is not finite", "Foundation date outside
  // the years 1...9999", or the zone's own "Failed to create timezone" otherwise. Callers that
  // take an instant from outside (a user, a file) check it first.
  KeelResult<KeelDate> checkedFoundationDate(KeelDate foundationDate,
                                             std::string_view timezoneIdentifier);

  // How many objects each cache has built. The named caches hold what they are named for; the
  // last three count what a locale brings along on first use.
  struct CacheBuildCounts {
    std::size_t dateFormattersByFormatString = 0;
    std::size_t dateFormattersByStyles = 0;
    std::size_t dateIntervalFormattersByStyles = 0;
    std::size_t durationFormattersByStyle = 0;
    std::size_t gregorianCalendarsByTimezoneIdentifier = 0;
    std::size_t localesByIdentifier = 0;
    std::size_t localizedFormatStrings = 0;
    std::size_t timezonesByIdentifier = 0;
    std::size_t patternGenerators = 0;
    std::size_t dateFormatSymbols = 0;
    std::size_t weekData = 0;

    friend bool operator==(const CacheBuildCounts&, const CacheBuildCounts&) = default;
  };
  CacheBuildCounts cacheBuildCounts() const;

  // "QuandaFoundationCalendarAdapter(currentLocaleIdentifier: en_US, currentTimezoneIdentifier:
  // UTC)", as errors name the adapter.
  std::string description() const;

  // The adapter's state, opaque outside its own sources.
  struct Implementation;

 private:
  std::unique_ptr<Implementation> implementation_;
};
