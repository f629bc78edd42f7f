// QuandaCalendarAdapting: the one seam between the library's calendar-free values and real
// calendars, time zones and locales.
//
// Abstract dates, times of day and date-times belong to no zone and no calendar object. Whatever
// needs one (turning a value into a real instant or back, in the device's zone, in UTC or in a
// named zone, or writing it as localized text) goes through an adapter, passed by the caller to
// each operation that needs it. The library's adapter is QuandaFoundationCalendarAdapter; a test
// or another platform may supply its own by implementing these 58 requirements.
//
// Vocabulary of the names:
// - "Local" is the device's current time zone, "Utc" the zone "UTC", and an operation with a
//   timezoneIdentifier argument uses the zone so named.
// - "Discrete" is the whole-second (natural) kind of a value, "Real" the fractional-second kind.
// - "Gregorian" means the conversion is made in the proleptic Gregorian calendar.
// - A localeIdentifierOverride is optional; without it the device's current locale is used.
//
// Every requirement but currentTimezoneIdentifier() and makeFoundationDate(logicTimeInterval)
// reports failure through its KeelResult, never by throwing or stopping; an error names the
// operation by its signature text (such as
// "makeTimezoneRealDateTimeComponents(foundationDate:timezoneIdentifier:)"), and callers wrap it
// in their own. Component readers fail when the calendar yields no value for a component the
// result needs, builders when the calendar cannot form an instant from the components, and
// operations with a zone identifier when no zone has it.
//
// Overloads that share a name differ in the component record they take. An adapter holds caches
// and is used from one thread at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelDate.h"
#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Formatting/QuandaDateFormatStyle.h"
#include "Quanda/Formatting/QuandaDateRangeFormatStyle.h"
#include "Quanda/Formatting/QuandaDateTimeFormatStyle.h"
#include "Quanda/Formatting/QuandaDurationFormatStyle.h"
#include "Quanda/Formatting/QuandaKnownDateFormatTemplate.h"
#include "Quanda/Formatting/QuandaKnownDateTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaKnownTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaStandaloneDayNameFormatStyle.h"
#include "Quanda/Formatting/QuandaTimeFormatStyle.h"
#include "Quanda/FoundationAdapting/QuandaFirstDayOfGregorianWeekProviding.h"
#include "Quanda/FoundationAdapting/QuandaFormattedDuration.h"
#include "Quanda/FoundationAdapting/QuandaPreferredTimeFormat.h"
#include "Quanda/FoundationAdapting/QuandaPreferredTimeFormatProviding.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"
#include "Quanda/QuandaLogicTimeInterval.h"

class QuandaCalendarAdapting : public QuandaFirstDayOfGregorianWeekProviding,
                               public QuandaPreferredTimeFormatProviding {
 public:
  using DateComponents = QuandaAbstractDate::Components;
  using DiscreteTimeComponents = QuandaAbstractNaturalTimeOfDay::Components;
  using RealTimeComponents = QuandaAbstractRealTimeOfDay::Components;
  using DiscreteDateTimeComponents = QuandaAbstractNaturalDateTime::Components;
  using RealDateTimeComponents = QuandaAbstractRealDateTime::Components;
  using LocaleIdentifierOverride = std::optional<std::string_view>;

  ~QuandaCalendarAdapting() override = default;

  // ---- Preferences, names and symbols --------------------------------------------------------

  // The weekday on which the user's calendar starts weeks.
  KeelResult<QuandaDayOfGregorianWeek> preferredFirstDayOfWeek() override = 0;
  // Whether the user's locale shows hours on a 12-hour or a 24-hour clock.
  KeelResult<QuandaPreferredTimeFormat> preferredTimeFormat() override = 0;
  // The seven standalone weekday names in the style, starting from the override when given and
  // from preferredFirstDayOfWeek() otherwise.
  virtual KeelResult<std::vector<std::string>> calendarColumnNames(
      LocaleIdentifierOverride localeIdentifierOverride,
      std::optional<QuandaDayOfGregorianWeek> preferredFirstDayOfWeekOverride,
      QuandaStandaloneDayNameFormatStyle style) = 0;
  virtual KeelResult<std::string> amSymbol(LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> pmSymbol(LocaleIdentifierOverride localeIdentifierOverride) = 0;
  // The identifier of the device's current time zone.
  virtual std::string currentTimezoneIdentifier() const = 0;

  // ---- Formatting ----------------------------------------------------------------------------

  virtual KeelResult<std::string> format(DateComponents abstractDateComponents,
                                         QuandaDateFormatStyle dateStyle,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(DateComponents abstractDateComponents,
                                         QuandaKnownDateFormatTemplate formatStringTemplate,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(KeelDate foundationDate, QuandaDateFormatStyle dateStyle,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(KeelDate foundationDate,
                                         QuandaKnownDateFormatTemplate formatStringTemplate,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(DateComponents startDateAbstractDateComponents,
                                         DateComponents endDateAbstractDateComponents,
                                         QuandaDateRangeFormatStyle style,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                         LocaleIdentifierOverride localeIdentifierOverride,
                                         QuandaTimeFormatStyle timeStyle) = 0;
  virtual KeelResult<std::string> format(RealTimeComponents abstractRealTimeComponents,
                                         LocaleIdentifierOverride localeIdentifierOverride,
                                         QuandaTimeFormatStyle timeStyle) = 0;
  virtual KeelResult<std::string> format(DiscreteTimeComponents abstractDiscreteTimeComponents,
                                         QuandaKnownTimeFormatTemplate formatStringTemplate,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(RealTimeComponents abstractRealTimeComponents,
                                         QuandaKnownTimeFormatTemplate formatStringTemplate,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(
      DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
      QuandaDateTimeFormatStyle dateTimeStyle,
      LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(RealDateTimeComponents abstractRealDateTimeComponents,
                                         QuandaDateTimeFormatStyle dateTimeStyle,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(
      DiscreteDateTimeComponents abstractDiscreteDateTimeComponents,
      QuandaKnownDateTimeFormatTemplate formatStringTemplate,
      LocaleIdentifierOverride localeIdentifierOverride) = 0;
  virtual KeelResult<std::string> format(RealDateTimeComponents abstractRealDateTimeComponents,
                                         QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                         LocaleIdentifierOverride localeIdentifierOverride) = 0;
  // A duration in seconds, with the language code of the locale that wrote it.
  virtual KeelResult<QuandaFormattedDuration> format(
      double duration, LocaleIdentifierOverride localeIdentifierOverride,
      QuandaDurationFormatStyle style) = 0;
  virtual KeelResult<std::string> format(QuandaDayOfGregorianWeek standaloneDayOfWeek,
                                         LocaleIdentifierOverride localeIdentifierOverride,
                                         QuandaStandaloneDayNameFormatStyle style) = 0;

  // ---- Platform instants from calendar components --------------------------------------------

  virtual KeelResult<KeelDate> makeLocalGregorianFoundationDate(DateComponents from) = 0;
  virtual KeelResult<KeelDate> makeUtcGregorianFoundationDate(DateComponents from) = 0;
  virtual KeelResult<KeelDate> makeGregorianFoundationDate(DateComponents from,
                                                           std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<KeelDate> makeLocalGregorianFoundationDate(
      DiscreteDateTimeComponents from) = 0;
  virtual KeelResult<KeelDate> makeLocalGregorianFoundationDate(RealDateTimeComponents from) = 0;
  virtual KeelResult<KeelDate> makeUtcGregorianFoundationDate(DiscreteDateTimeComponents from) = 0;
  virtual KeelResult<KeelDate> makeUtcGregorianFoundationDate(RealDateTimeComponents from) = 0;
  virtual KeelResult<KeelDate> makeGregorianFoundationDate(DiscreteDateTimeComponents from,
                                                           std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<KeelDate> makeGregorianFoundationDate(RealDateTimeComponents from,
                                                           std::string_view timezoneIdentifier) = 0;

  // ---- Logic time intervals from date-time components ----------------------------------------

  virtual KeelResult<QuandaLogicTimeInterval> makeLocalGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from) = 0;
  virtual KeelResult<QuandaLogicTimeInterval> makeLocalGregorianLogicTimeInterval(
      RealDateTimeComponents from) = 0;
  virtual KeelResult<QuandaLogicTimeInterval> makeUtcGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from) = 0;
  virtual KeelResult<QuandaLogicTimeInterval> makeUtcGregorianLogicTimeInterval(
      RealDateTimeComponents from) = 0;
  virtual KeelResult<QuandaLogicTimeInterval> makeGregorianLogicTimeInterval(
      DiscreteDateTimeComponents from, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<QuandaLogicTimeInterval> makeGregorianLogicTimeInterval(
      RealDateTimeComponents from, std::string_view timezoneIdentifier) = 0;

  // ---- Calendar components of a platform instant ---------------------------------------------

  virtual KeelResult<DateComponents> makeLocalTimezoneDateComponents(KeelDate foundationDate) = 0;
  virtual KeelResult<DateComponents> makeUtcTimezoneDateComponents(KeelDate foundationDate) = 0;
  virtual KeelResult<DateComponents> makeTimezoneDateComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<DiscreteTimeComponents> makeLocalTimezoneDiscreteTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<RealTimeComponents> makeLocalTimezoneRealTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<DiscreteTimeComponents> makeUtcTimezoneDiscreteTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<RealTimeComponents> makeUtcTimezoneRealTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<DiscreteTimeComponents> makeTimezoneDiscreteTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<RealTimeComponents> makeTimezoneRealTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<DiscreteDateTimeComponents> makeLocalTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<RealDateTimeComponents> makeLocalTimezoneRealDateTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<DiscreteDateTimeComponents> makeUtcTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<RealDateTimeComponents> makeUtcTimezoneRealDateTimeComponents(
      KeelDate foundationDate) = 0;
  virtual KeelResult<DiscreteDateTimeComponents> makeTimezoneDiscreteDateTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<RealDateTimeComponents> makeTimezoneRealDateTimeComponents(
      KeelDate foundationDate, std::string_view timezoneIdentifier) = 0;

  // ---- Date-time components of a logic time interval -----------------------------------------

  virtual KeelResult<DiscreteDateTimeComponents> makeLocalTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) = 0;
  virtual KeelResult<RealDateTimeComponents> makeLocalTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) = 0;
  virtual KeelResult<DiscreteDateTimeComponents> makeUtcTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) = 0;
  virtual KeelResult<RealDateTimeComponents> makeUtcTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval) = 0;
  virtual KeelResult<DiscreteDateTimeComponents> makeTimezoneDiscreteDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) = 0;
  virtual KeelResult<RealDateTimeComponents> makeTimezoneRealDateTimeComponents(
      QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) = 0;

  // ---- The one infallible conversion ---------------------------------------------------------

  // The platform instant whose seconds since 1970 are the interval's unixEpoch.
  virtual KeelDate makeFoundationDate(QuandaLogicTimeInterval logicTimeInterval) = 0;

 protected:
  QuandaCalendarAdapting() = default;
  QuandaCalendarAdapting(const QuandaCalendarAdapting&) = default;
  QuandaCalendarAdapting& operator=(const QuandaCalendarAdapting&) = default;
};
