// The adapter's conversions between calendar components and instants.
//
// Every builder and reader is one of four templates below, instantiated per component record and
// told its zone and its signature text. In UTC a conversion is day arithmetic and touches no
// cache. In any other zone it takes the zone from the calendar cache (the last calendar is
// remembered, so a run of conversions in one zone looks nothing up), the offset from the zone's
// table of the years 1900 to 2099, and then the same day arithmetic; outside those years the tz
// library answers.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelPrecondition.h"
#include "Quanda/FoundationAdapting/QuandaCivilDayCountPrivate.h"
#include "Quanda/FoundationAdapting/QuandaFoundationAdaptingPrivate.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"
#include "Quanda/QuandaConstants.h"

using namespace quanda_adapting;
using Adapter = QuandaFoundationCalendarAdapter;

namespace {

constexpr std::string_view path = adapterPath;
constexpr ZoneChoice local{ZoneChoice::Kind::local};
constexpr ZoneChoice utc{ZoneChoice::Kind::utc};
constexpr ZoneChoice named(std::string_view identifier) {
  return {ZoneChoice::Kind::named, identifier};
}

// What a component record holds.
template <class Components>
inline constexpr bool hasDate =
    !std::is_same_v<Components, QuandaCalendarAdapting::DiscreteTimeComponents> &&
    !std::is_same_v<Components, QuandaCalendarAdapting::RealTimeComponents>;
template <class Components>
inline constexpr bool hasTime = !std::is_same_v<Components, QuandaCalendarAdapting::DateComponents>;
template <class Components>
inline constexpr bool hasRealSecond =
    std::is_same_v<Components, QuandaCalendarAdapting::RealTimeComponents> ||
    std::is_same_v<Components, QuandaCalendarAdapting::RealDateTimeComponents>;

// A wall time as the calendar takes and gives it: a date and a time of day, the second split into
// a whole second and a nanosecond.
struct WallTime {
  std::int64_t year;
  std::int64_t month;
  std::int64_t day;
  std::int64_t hour;
  std::int64_t minute;
  std::int64_t second;
  std::int64_t nanosecond;
};

// Whether the date of a wall time exists in the proleptic calendar (any year the records hold).
[[gnu::always_inline]] inline bool dateExists(const WallTime& time) {
  namespace Month = Quanda::DaysIn::Gregorian::Month;
  return time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= (Quanda::isLeapYear(static_cast<std::uint16_t>(time.year))
                          ? Month::leap
                          : Month::nonLeap)[static_cast<std::size_t>(time.month - 1)];
}

// The date of a day count from 1970-01-01, the same way round.
[[gnu::always_inline]] inline quanda_detail::CivilDay civilDay(std::int64_t daysSince1970) {
  const std::int64_t daysSinceDatum = daysSince1970 + quanda_detail::datumDaysBeforeUnixEpoch;
  if (daysSinceDatum >= 0 &&
      daysSinceDatum <= QuandaAbstractDate::validRange.max().daysSinceDatum()) {
    const QuandaAbstractDate date =
        QuandaAbstractDate::makeFromDaysSinceDatum(static_cast<std::uint32_t>(daysSinceDatum));
    return {date.year(), date.month(), date.day()};
  }
  return quanda_detail::civilFromDays(daysSince1970);
}

// ---- Building --------------------------------------------------------------------------------

// The wall time a record asks for: its date, at midnight when it has no time. A real second is
// split by floor into a whole second and a nanosecond; a second that is not finite or does not
// fit 64 bits stops the process.
template <class Components>
[[gnu::always_inline]] inline WallTime wallTimeOf(const Components& components) {
  WallTime time{components.year, components.month, components.day, 0, 0, 0, 0};
  if constexpr (hasTime<Components>) {
    time.hour = components.hour;
    time.minute = components.minute;
    if constexpr (hasRealSecond<Components>) {
      const double second = components.second;
      KEEL_PRECONDITION(std::isfinite(second), "real second is not finite");
      time.second = keel::checkedFromDouble<std::int64_t>(std::floor(second));
      time.nanosecond = keel::checkedFromDouble<std::int64_t>(
          std::floor(std::fmod(second, 1.0) * Quanda::NanosecondsIn::Gregorian::Second::count));
    } else {
      time.second = components.second;
    }
  }
  return time;
}

// "DateComponents(year: 2023, month: 2, day: 29)": the fields a record of this kind sets.
template <class Components>
std::string dateComponentsDescription(const WallTime& time) {
  std::string text = "DateComponents(year: " + std::to_string(time.year) +
                     ", month: " + std::to_string(time.month) +
                     ", day: " + std::to_string(time.day);
  if constexpr (hasTime<Components>) {
    text += ", hour: " + std::to_string(time.hour) + ", minute: " + std::to_string(time.minute) +
            ", second: " + std::to_string(time.second);
  }
  if constexpr (hasRealSecond<Components>)
    text += ", nanosecond: " + std::to_string(time.nanosecond);
  return text + ")";
}

// The `pre` instant of a valid wall time in a zone, whole seconds, from the tz library itself: for
// the years the zone's table does not cover.
[[gnu::noinline]] std::int64_t zoneSeconds(const absl::TimeZone& zone, const WallTime& time) {
  const absl::CivilSecond civil(time.year, time.month, time.day, time.hour, time.minute,
                                time.second);
  return absl::ToUnixSeconds(zone.At(civil).pre);
}

// The seconds since 1970 of a wall time read as if it were UTC.
[[gnu::always_inline]] inline std::int64_t secondsAsIfUtc(const WallTime& time) {
  return quanda_detail::daysFromCivil(time.year, static_cast<unsigned>(time.month),
                                      static_cast<unsigned>(time.day)) *
             86400 +
         time.hour * 3600 + time.minute * 60 + time.second;
}

// The instant of a wall time, nothing when it names no moment of the proleptic calendar (with
// nothing rolled over). In UTC it is day arithmetic; in another zone it is the zone's `pre`
// reading, which is the earlier instant of a repeated wall time and moves a skipped one forward by
// the length of the gap: from the zone's table of offsets in the years it covers, from the tz
// library otherwise.
template <bool withNanosecond>
[[gnu::always_inline]] inline std::optional<double> unixSeconds(const WallTime& time,
                                                                const GregorianCalendar* calendar) {
  // The year always fits (0 to 65535), hours and minutes are never negative.
  if (time.hour > 23 || time.minute > 59 || time.second < 0 || time.second > 59 ||
      time.nanosecond < 0 || time.nanosecond > 999999999 || !dateExists(time)) {
    return std::nullopt;
  }
  std::int64_t whole = secondsAsIfUtc(time);
  if (calendar != nullptr && !calendar->timezone->isUtc) {
    const std::optional<std::int64_t> instant = calendar->timezone->offsets.instantOf(whole);
    whole = instant ? *instant : zoneSeconds(calendar->timezone->zone, time);
  }
  if constexpr (!withNanosecond) return static_cast<double>(whole);
  return static_cast<double>(whole) +
         static_cast<double>(time.nanosecond) / Quanda::NanosecondsIn::Gregorian::Second::count;
}

// ---- Reading ---------------------------------------------------------------------------------

// The wall time of a finite instant in the calendar's zone (UTC without a calendar): the zone's
// offset from its table (or the tz library outside it), then day arithmetic. The nanosecond only
// when the record has a real second. An instant so far out that its year cannot
// fit any record stops the process.
template <bool withNanosecond>
[[gnu::always_inline]] inline WallTime wallTimeAt(double instant,
                                                  const GregorianCalendar* calendar) {
  // Years 0 to 65535 lie well within +-1e13 s; beyond, the year fits no record.
  KEEL_PRECONDITION(std::fabs(instant) < 1e13, "instant's year does not fit the components");
  std::int64_t whole = static_cast<std::int64_t>(instant);
  if (static_cast<double>(whole) > instant) --whole;  // rounded toward minus infinity
  std::int64_t nanosecond = 0;
  if constexpr (withNanosecond) {
    // The fraction is exact; its product may round up to a whole second, kept a nanosecond short.
    nanosecond = std::min<std::int64_t>(
        static_cast<std::int64_t>((instant - static_cast<double>(whole)) *
                                  Quanda::NanosecondsIn::Gregorian::Second::count),
        999999999);
  }
  std::int64_t local = whole;
  if (calendar != nullptr && !calendar->timezone->isUtc) {
    const std::optional<std::int32_t> offset = calendar->timezone->offsets.offsetAt(whole);
    if (!offset) {
      const absl::CivilSecond civil =
          absl::ToCivilSecond(absl::FromUnixSeconds(whole), calendar->timezone->zone);
      return {civil.year(),   civil.month(),  civil.day(), civil.hour(),
              civil.minute(), civil.second(), nanosecond};
    }
    local += *offset;
  }
  const std::int64_t days = quanda_detail::floorDivide(local, 86400);
  const auto secondOfDay = static_cast<std::uint32_t>(local - days * 86400);
  const std::uint32_t hour = secondOfDay / 3600;
  const std::uint32_t secondOfHour = secondOfDay - hour * 3600;
  const std::uint32_t minute = secondOfHour / 60;
  const quanda_detail::CivilDay date = civilDay(days);
  return {date.year, date.month, date.day, hour, minute, secondOfHour - minute * 60, nanosecond};
}

// The record of a wall time, each field narrowed to its width (a value that does not fit stops
// the process). A real second is the whole second plus the nanosecond, summed as doubles.
template <class Components>
Components narrowed(const WallTime& time) {
  Components components{};
  if constexpr (hasDate<Components>) {
    components.year = keel::checkedNarrow<std::uint16_t>(time.year);
    components.month = static_cast<std::uint8_t>(time.month);
    components.day = static_cast<std::uint8_t>(time.day);
  }
  if constexpr (hasTime<Components>) {
    components.hour = static_cast<std::uint8_t>(time.hour);
    components.minute = static_cast<std::uint8_t>(time.minute);
    if constexpr (hasRealSecond<Components>) {
      components.second =
          static_cast<double>(time.second) +
          static_cast<double>(time.nanosecond) / Quanda::NanosecondsIn::Gregorian::Second::count;
    } else {
      components.second = static_cast<std::uint8_t>(time.second);
    }
  }
  return components;
}

// ---- Failures, kept off the conversions' path
// ----------------------------------------------------

// "Calendar(identifier: gregorian, ...)": the calendar of a conversion, the UTC one when a UTC
// conversion (day arithmetic) needed none.
std::string calendarDescription(const GregorianCalendar* calendar,
                                std::string_view currentLocaleIdentifier) {
  if (calendar != nullptr) return calendar->description();
  return GregorianCalendar{std::string(currentLocaleIdentifier), "UTC", nullptr, nullptr}
      .description();
}

// The wrapping of a callee's failure: the operation's input, then the zone's identifier when the
// operation names one.
[[gnu::noinline, gnu::cold]] KeelError wrappedFailure(const KeelError& inner, KeelArgument input,
                                                      ZoneChoice zone, std::string_view function,
                                                      std::uint32_t line = __builtin_LINE()) {
  KeelArguments args{std::move(input)};
  if (zone.kind == ZoneChoice::Kind::named)
    args.emplace_back("timezoneIdentifier", zone.identifier);
  return KeelError::wrap(inner, std::move(args), path, function, line);
}

template <class Components>
[[gnu::noinline, gnu::cold]] KeelError refusedComponents(const Components& components,
                                                         const WallTime& wall, ZoneChoice zone,
                                                         const GregorianCalendar* calendar,
                                                         std::string_view currentLocaleIdentifier,
                                                         std::string_view function,
                                                         std::uint32_t line = __builtin_LINE()) {
  KeelArguments args{{"components", components}};
  if (zone.kind == ZoneChoice::Kind::named)
    args.emplace_back("timezoneIdentifier", zone.identifier);
  args.emplace_back("calendar", calendarDescription(calendar, currentLocaleIdentifier));
  args.emplace_back("dateComponents", dateComponentsDescription<Components>(wall));
  return KeelError::fault("Failed to create local foundation date from dateComponents",
                          std::move(args), path, function, std::nullopt, line);
}

// An instant without components (NaN, an infinity) yields none of them.
template <class Components>
[[gnu::noinline, gnu::cold]] KeelError noComponents(KeelDate foundationDate, ZoneChoice zone,
                                                    const GregorianCalendar* calendar,
                                                    std::string_view currentLocaleIdentifier,
                                                    std::string_view function,
                                                    std::uint32_t line = __builtin_LINE()) {
  constexpr std::string_view message =
      hasDate<Components> ? "dateComponents yields no year" : "dateComponents yields no hour";
  constexpr std::string_view none = "DateComponents()";
  if (zone.kind == ZoneChoice::Kind::named) {
    return KeelError::fault(message,
                            {{"dateComponents", none},
                             {"foundationDate", describeInstant(foundationDate)},
                             {"timezoneIdentifier", zone.identifier}},
                            path, function, std::nullopt, line);
  }
  return KeelError::fault(message,
                          {{"calendar", calendarDescription(calendar, currentLocaleIdentifier)},
                           {"dateComponents", none},
                           {"foundationDate", describeInstant(foundationDate)}},
                          path, function, std::nullopt, line);
}

}  // namespace

// ---- The shared shapes -----------------------------------------------------------------------

KeelResult<GregorianCalendar*> Adapter::Implementation::calendarFor(ZoneChoice zone) {
  if (GregorianCalendar* remembered = rememberedCalendar(zone)) return remembered;
  switch (zone.kind) {
    case ZoneChoice::Kind::utc:
      return getGregorianCalendarBy(device->currentLocaleIdentifier(), "UTC");
    case ZoneChoice::Kind::local:
      return getLocalGregorianCalendar();
    case ZoneChoice::Kind::named:
      break;
  }
  return getGregorianCalendarBy(device->currentLocaleIdentifier(), zone.identifier);
}

template <class Components>
[[gnu::always_inline]] inline KeelResult<KeelDate> Adapter::Implementation::makeFoundationDate(
    const Components& components, ZoneChoice zone, std::string_view function) {
  GregorianCalendar* calendar = nullptr;
  if (zone.kind != ZoneChoice::Kind::utc) {
    calendar = rememberedCalendar(zone);
    if (calendar == nullptr) {
      const KeelResult<GregorianCalendar*> found = calendarFor(zone);
      if (!found) return wrappedFailure(found.error(), {"components", components}, zone, function);
      calendar = found.value();
    }
  }
  const WallTime wall = wallTimeOf(components);
  const std::optional<double> instant = unixSeconds<hasRealSecond<Components>>(wall, calendar);
  if (!instant) {
    return refusedComponents(components, wall, zone, calendar, device->currentLocaleIdentifier(),
                             function);
  }
  return KeelDate(KeelDate::duration(*instant));
}

template <class Components>
KeelResult<QuandaLogicTimeInterval> Adapter::Implementation::makeLogicTimeInterval(
    const Components& components, ZoneChoice zone, std::string_view function) {
  const std::string_view builder = zone.kind == ZoneChoice::Kind::local
                                       ? "makeLocalGregorianFoundationDate(from:)"
                                   : zone.kind == ZoneChoice::Kind::utc
                                       ? "makeUtcGregorianFoundationDate(from:)"
                                       : "makeGregorianFoundationDate(from:timezoneIdentifier:)";
  const KeelResult<KeelDate> date = makeFoundationDate(components, zone, builder);
  if (!date) {
    constexpr std::string_view key =
        hasRealSecond<Components> ? "realDateTimeComponents" : "discreteDateTimeComponents";
    return wrappedFailure(date.error(), {key, components}, zone, function);
  }
  return QuandaLogicTimeInterval(date.value());
}

template <class Components>
[[gnu::always_inline]] inline KeelResult<Components> Adapter::Implementation::readComponents(
    KeelDate foundationDate, ZoneChoice zone, std::string_view function) {
  GregorianCalendar* calendar = nullptr;
  if (zone.kind != ZoneChoice::Kind::utc) {
    calendar = rememberedCalendar(zone);
    if (calendar == nullptr) {
      const KeelResult<GregorianCalendar*> found = calendarFor(zone);
      if (!found) {
        return wrappedFailure(found.error(), {"foundationDate", describeInstant(foundationDate)},
                              zone, function);
      }
      calendar = found.value();
    }
  }
  const double instant = foundationDate.time_since_epoch().count();
  if (!std::isfinite(instant)) {
    return noComponents<Components>(foundationDate, zone, calendar,
                                    device->currentLocaleIdentifier(), function);
  }
  return narrowed<Components>(wallTimeAt<hasRealSecond<Components>>(instant, calendar));
}

template <class Components>
KeelResult<Components> Adapter::Implementation::readComponents(
    QuandaLogicTimeInterval logicTimeInterval, ZoneChoice zone, std::string_view function,
    std::string_view readerFunction) {
  KeelResult<Components> components = readComponents<Components>(
      KeelDate(KeelDate::duration(logicTimeInterval.unixEpoch())), zone, readerFunction);
  if (!components) {
    return wrappedFailure(components.error(), {"logicTimeInterval", logicTimeInterval}, zone,
                          function);
  }
  return components;
}

// ---- Platform instants from calendar components ------------------------------------------------

KeelResult<KeelDate> Adapter::makeLocalGregorianFoundationDate(DateComponents from) {
  return implementation_->makeFoundationDate(from, local,
                                             "makeLocalGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeUtcGregorianFoundationDate(DateComponents from) {
  return implementation_->makeFoundationDate(from, utc, "makeUtcGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeGregorianFoundationDate(DateComponents from,
                                                          std::string_view timezoneIdentifier) {
  return implementation_->makeFoundationDate(
      from, named(timezoneIdentifier), "makeGregorianFoundationDate(from:timezoneIdentifier:)");
}
KeelResult<KeelDate> Adapter::makeLocalGregorianFoundationDate(DiscreteDateTimeComponents from) {
  return implementation_->makeFoundationDate(from, local,
                                             "makeLocalGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeLocalGregorianFoundationDate(RealDateTimeComponents from) {
  return implementation_->makeFoundationDate(from, local,
                                             "makeLocalGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeUtcGregorianFoundationDate(DiscreteDateTimeComponents from) {
  return implementation_->makeFoundationDate(from, utc, "makeUtcGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeUtcGregorianFoundationDate(RealDateTimeComponents from) {
  return implementation_->makeFoundationDate(from, utc, "makeUtcGregorianFoundationDate(from:)");
}
KeelResult<KeelDate> Adapter::makeGregorianFoundationDate(DiscreteDateTimeComponents from,
                                                          std::string_view timezoneIdentifier) {
  return implementation_->makeFoundationDate(
      from, named(timezoneIdentifier), "makeGregorianFoundationDate(from:timezoneIdentifier:)");
}
KeelResult<KeelDate> Adapter::makeGregorianFoundationDate(RealDateTimeComponents from,
                                                          std::string_view timezoneIdentifier) {
  return implementation_->makeFoundationDate(
      from, named(timezoneIdentifier), "makeGregorianFoundationDate(from:timezoneIdentifier:)");
}

// ---- Logic time intervals from date-time components --------------------------------------------

KeelResult<QuandaLogicTimeInterval> Adapter::makeLocalGregorianLogicTimeInterval(
    DiscreteDateTimeComponents from) {
  return implementation_->makeLogicTimeInterval(from, local,
                                                "makeLocalGregorianLogicTimeInterval(from:)");
}
KeelResult<QuandaLogicTimeInterval> Adapter::makeLocalGregorianLogicTimeInterval(
    RealDateTimeComponents from) {
  return implementation_->makeLogicTimeInterval(from, local,
                                                "makeLocalGregorianLogicTimeInterval(from:)");
}
KeelResult<QuandaLogicTimeInterval> Adapter::makeUtcGregorianLogicTimeInterval(
    DiscreteDateTimeComponents from) {
  return implementation_->makeLogicTimeInterval(from, utc,
                                                "makeUtcGregorianLogicTimeInterval(from:)");
}
KeelResult<QuandaLogicTimeInterval> Adapter::makeUtcGregorianLogicTimeInterval(
    RealDateTimeComponents from) {
  return implementation_->makeLogicTimeInterval(from, utc,
                                                "makeUtcGregorianLogicTimeInterval(from:)");
}
KeelResult<QuandaLogicTimeInterval> Adapter::makeGregorianLogicTimeInterval(
    DiscreteDateTimeComponents from, std::string_view timezoneIdentifier) {
  return implementation_->makeLogicTimeInterval(
      from, named(timezoneIdentifier), "makeGregorianLogicTimeInterval(from:timezoneIdentifier:)");
}
KeelResult<QuandaLogicTimeInterval> Adapter::makeGregorianLogicTimeInterval(
    RealDateTimeComponents from, std::string_view timezoneIdentifier) {
  return implementation_->makeLogicTimeInterval(
      from, named(timezoneIdentifier), "makeGregorianLogicTimeInterval(from:timezoneIdentifier:)");
}

// ---- Calendar components of a platform instant -------------------------------------------------

KeelResult<Adapter::DateComponents> Adapter::makeLocalTimezoneDateComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<DateComponents>(
      foundationDate, local, "makeLocalTimezoneDateComponents(foundationDate:)");
}
KeelResult<Adapter::DateComponents> Adapter::makeUtcTimezoneDateComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<DateComponents>(
      foundationDate, utc, "makeUtcTimezoneDateComponents(foundationDate:)");
}
KeelResult<Adapter::DateComponents> Adapter::makeTimezoneDateComponents(
    KeelDate foundationDate, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<DateComponents>(
      foundationDate, named(timezoneIdentifier),
      "makeTimezoneDateComponents(foundationDate:timezoneIdentifier:)");
}
KeelResult<Adapter::DiscreteTimeComponents> Adapter::makeLocalTimezoneDiscreteTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<DiscreteTimeComponents>(
      foundationDate, local, "makeLocalTimezoneDiscreteTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealTimeComponents> Adapter::makeLocalTimezoneRealTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<RealTimeComponents>(
      foundationDate, local, "makeLocalTimezoneRealTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteTimeComponents> Adapter::makeUtcTimezoneDiscreteTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<DiscreteTimeComponents>(
      foundationDate, utc, "makeUtcTimezoneDiscreteTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealTimeComponents> Adapter::makeUtcTimezoneRealTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<RealTimeComponents>(
      foundationDate, utc, "makeUtcTimezoneRealTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteTimeComponents> Adapter::makeTimezoneDiscreteTimeComponents(
    KeelDate foundationDate, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<DiscreteTimeComponents>(
      foundationDate, named(timezoneIdentifier),
      "makeTimezoneDiscreteTimeComponents(foundationDate:timezoneIdentifier:)");
}
KeelResult<Adapter::RealTimeComponents> Adapter::makeTimezoneRealTimeComponents(
    KeelDate foundationDate, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<RealTimeComponents>(
      foundationDate, named(timezoneIdentifier),
      "makeTimezoneRealTimeComponents(foundationDate:timezoneIdentifier:)");
}
KeelResult<Adapter::DiscreteDateTimeComponents>
Adapter::makeLocalTimezoneDiscreteDateTimeComponents(KeelDate foundationDate) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      foundationDate, local, "makeLocalTimezoneDiscreteDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeLocalTimezoneRealDateTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<RealDateTimeComponents>(
      foundationDate, local, "makeLocalTimezoneRealDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteDateTimeComponents> Adapter::makeUtcTimezoneDiscreteDateTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      foundationDate, utc, "makeUtcTimezoneDiscreteDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeUtcTimezoneRealDateTimeComponents(
    KeelDate foundationDate) {
  return implementation_->readComponents<RealDateTimeComponents>(
      foundationDate, utc, "makeUtcTimezoneRealDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteDateTimeComponents> Adapter::makeTimezoneDiscreteDateTimeComponents(
    KeelDate foundationDate, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      foundationDate, named(timezoneIdentifier),
      "makeTimezoneDiscreteDateTimeComponents(foundationDate:timezoneIdentifier:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeTimezoneRealDateTimeComponents(
    KeelDate foundationDate, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<RealDateTimeComponents>(
      foundationDate, named(timezoneIdentifier),
      "makeTimezoneRealDateTimeComponents(foundationDate:timezoneIdentifier:)");
}

// ---- Date-time components of a logic time interval ---------------------------------------------

KeelResult<Adapter::DiscreteDateTimeComponents>
Adapter::makeLocalTimezoneDiscreteDateTimeComponents(QuandaLogicTimeInterval logicTimeInterval) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      logicTimeInterval, local, "makeLocalTimezoneDiscreteDateTimeComponents(logicTimeInterval:)",
      "makeLocalTimezoneDiscreteDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeLocalTimezoneRealDateTimeComponents(
    QuandaLogicTimeInterval logicTimeInterval) {
  return implementation_->readComponents<RealDateTimeComponents>(
      logicTimeInterval, local, "makeLocalTimezoneRealDateTimeComponents(logicTimeInterval:)",
      "makeLocalTimezoneRealDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteDateTimeComponents> Adapter::makeUtcTimezoneDiscreteDateTimeComponents(
    QuandaLogicTimeInterval logicTimeInterval) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      logicTimeInterval, utc, "makeUtcTimezoneDiscreteDateTimeComponents(logicTimeInterval:)",
      "makeUtcTimezoneDiscreteDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeUtcTimezoneRealDateTimeComponents(
    QuandaLogicTimeInterval logicTimeInterval) {
  return implementation_->readComponents<RealDateTimeComponents>(
      logicTimeInterval, utc, "makeUtcTimezoneRealDateTimeComponents(logicTimeInterval:)",
      "makeUtcTimezoneRealDateTimeComponents(foundationDate:)");
}
KeelResult<Adapter::DiscreteDateTimeComponents> Adapter::makeTimezoneDiscreteDateTimeComponents(
    QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<DiscreteDateTimeComponents>(
      logicTimeInterval, named(timezoneIdentifier),
      "makeTimezoneDiscreteDateTimeComponents(logicTimeInterval:timezoneIdentifier:)",
      "makeTimezoneDiscreteDateTimeComponents(foundationDate:timezoneIdentifier:)");
}
KeelResult<Adapter::RealDateTimeComponents> Adapter::makeTimezoneRealDateTimeComponents(
    QuandaLogicTimeInterval logicTimeInterval, std::string_view timezoneIdentifier) {
  return implementation_->readComponents<RealDateTimeComponents>(
      logicTimeInterval, named(timezoneIdentifier),
      "makeTimezoneRealDateTimeComponents(logicTimeInterval:timezoneIdentifier:)",
      "makeTimezoneRealDateTimeComponents(foundationDate:timezoneIdentifier:)");
}

KeelDate Adapter::makeFoundationDate(QuandaLogicTimeInterval logicTimeInterval) {
  return KeelDate(KeelDate::duration(logicTimeInterval.unixEpoch()));
}

// ---- The range check of instants from outside ------------------------------------------------

KeelResult<KeelDate> Adapter::checkedFoundationDate(KeelDate foundationDate,
                                                    std::string_view timezoneIdentifier) {
  constexpr std::string_view function = "checkedFoundationDate(foundationDate:timezoneIdentifier:)";
  const KeelResult<GregorianCalendar*> calendar =
      implementation_->calendarFor(named(timezoneIdentifier));
  const auto args = [&]() -> KeelArguments {
    return {{"foundationDate", describeInstant(foundationDate)},
            {"timezoneIdentifier", timezoneIdentifier}};
  };
  if (!calendar) return KeelError::wrap(calendar.error(), args(), path, function);
  const double instant = foundationDate.time_since_epoch().count();
  if (!std::isfinite(instant)) {
    return KeelError::fault("Foundation date is not finite", args(), path, function);
  }
  // The years 1...9999 lie within +-1e12 s in any zone; beyond, the wall time is not worked out.
  const std::int64_t year =
      std::fabs(instant) < 1e12 ? wallTimeAt<false>(instant, calendar.value()).year : 0;
  if (year < QuandaAbstractDate::validYearRange.min() ||
      year > QuandaAbstractDate::validYearRange.max()) {
    return KeelError::fault("Foundation date outside the years 1...9999", args(), path, function);
  }
  return foundationDate;
}
