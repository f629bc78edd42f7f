// The adapter's conversions between calendar components and instants.
//
// Every builder and reader is one of four templates below, instantiated per component record and
// told its zone and its signature text. In UTC a conversion is day arithmetic and touches no
// cache; in any other zone it takes the zone from the calendar cache (the last calendar is
// remembered, so a run of conversions in one zone looks nothing up) and its rules from the tz
// database.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelPrecondition.h"
#include "Quanda/FoundationAdapting/QuandaCivilDayCount.h"
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

// ---- Building --------------------------------------------------------------------------------

// The platform components a record asks for: the date, and the time when the record has one. A
// real second is split by floor into a whole second and a nanosecond; a second that is not finite
// or does not fit 64 bits stops the process.
template <class Components>
PlatformDateComponents platformComponents(const Components& components) {
  PlatformDateComponents platform{components.year, components.month, components.day};
  if constexpr (hasTime<Components>) {
    platform.hour = components.hour;
    platform.minute = components.minute;
    if constexpr (hasRealSecond<Components>) {
      const double second = components.second;
      KEEL_PRECONDITION(std::isfinite(second), "real second is not finite");
      platform.second = keel::checkedFromDouble<std::int64_t>(std::floor(second));
      platform.nanosecond = keel::checkedFromDouble<std::int64_t>(
          std::floor(std::fmod(second, 1.0) * Quanda::NanosecondsIn::Gregorian::Second::count));
    } else {
      platform.second = components.second;
    }
  }
  return platform;
}

// Whether the components name one moment of the proleptic calendar, with nothing rolled over.
bool namesAMoment(const PlatformDateComponents& platform) {
  if (platform.month < 1 || platform.month > 12 || platform.day < 1 || platform.year < 0 ||
      platform.year > 65535) {
    return false;
  }
  const auto year = static_cast<std::uint16_t>(platform.year);
  const auto month = static_cast<std::uint8_t>(platform.month);
  return platform.day <= Quanda::DaysIn::Gregorian::oneBasedMonth(month, year) &&
         platform.hour.value_or(0) <= 23 && platform.minute.value_or(0) <= 59 &&
         platform.second.value_or(0) >= 0 && platform.second.value_or(0) <= 59 &&
         platform.nanosecond.value_or(0) >= 0 && platform.nanosecond.value_or(0) <= 999999999;
}

// The instant of valid components: the wall time in the calendar's zone (the earlier instant of
// a repeated one, a skipped one moved forward by the gap, as the zone's `pre` reading gives), or
// day arithmetic in UTC.
double unixSeconds(const PlatformDateComponents& platform, const GregorianCalendar* calendar) {
  const std::int64_t hour = platform.hour.value_or(0);
  const std::int64_t minute = platform.minute.value_or(0);
  const std::int64_t second = platform.second.value_or(0);
  std::int64_t whole;
  if (calendar == nullptr || calendar->isUtc) {
    whole = quanda_detail::daysFromCivil(platform.year, static_cast<unsigned>(platform.month),
                                         static_cast<unsigned>(platform.day)) *
                86400 +
            hour * 3600 + minute * 60 + second;
  } else {
    const absl::CivilSecond wallTime(platform.year, static_cast<int>(platform.month),
                                     static_cast<int>(platform.day), static_cast<int>(hour),
                                     static_cast<int>(minute), static_cast<int>(second));
    whole = absl::ToUnixSeconds(calendar->zone.At(wallTime).pre);
  }
  return static_cast<double>(whole) + static_cast<double>(platform.nanosecond.value_or(0)) /
                                          Quanda::NanosecondsIn::Gregorian::Second::count;
}

// ---- Reading ---------------------------------------------------------------------------------

struct WallTime {
  std::int64_t year;
  std::int64_t month;
  std::int64_t day;
  std::int64_t hour;
  std::int64_t minute;
  std::int64_t second;
  std::int64_t nanosecond;
};

// The wall time of a finite instant in the calendar's zone (UTC without a calendar). An instant
// so far out that its year cannot fit any record stops the process.
WallTime wallTime(double instant, const GregorianCalendar* calendar) {
  // Years 0 to 65535 lie well within +-1e13 s; beyond, the year fits no record.
  KEEL_PRECONDITION(std::fabs(instant) < 1e13, "instant's year does not fit the components");
  const double floored = std::floor(instant);
  const auto whole = static_cast<std::int64_t>(floored);
  // The fraction is exact; the product may round up to a whole second, which stays a nanosecond
  // short of it.
  const std::int64_t nanosecond = std::min<std::int64_t>(
      static_cast<std::int64_t>((instant - floored) *
                                Quanda::NanosecondsIn::Gregorian::Second::count),
      999999999);
  if (calendar == nullptr || calendar->isUtc) {
    const std::int64_t days = quanda_detail::floorDivide(whole, 86400);
    const std::int64_t secondOfDay = whole - days * 86400;
    const quanda_detail::CivilDay date = quanda_detail::civilFromDays(days);
    return {date.year,        date.month, date.day, secondOfDay / 3600, secondOfDay / 60 % 60,
            secondOfDay % 60, nanosecond};
  }
  const absl::CivilSecond civil = absl::ToCivilSecond(absl::FromUnixSeconds(whole), calendar->zone);
  return {civil.year(),   civil.month(),  civil.day(), civil.hour(),
          civil.minute(), civil.second(), nanosecond};
}

// The record of a wall time, each field narrowed to its width (a value that does not fit stops
// the process). A real second is the whole second plus the nanosecond, summed as doubles.
template <class Components>
Components narrowed(const WallTime& time) {
  Components components{};
  if constexpr (hasDate<Components>) {
    components.year = keel::checkedNarrow<std::uint16_t>(time.year);
    components.month = keel::checkedNarrow<std::uint8_t>(time.month);
    components.day = keel::checkedNarrow<std::uint8_t>(time.day);
  }
  if constexpr (hasTime<Components>) {
    components.hour = keel::checkedNarrow<std::uint8_t>(time.hour);
    components.minute = keel::checkedNarrow<std::uint8_t>(time.minute);
    if constexpr (hasRealSecond<Components>) {
      components.second =
          static_cast<double>(time.second) +
          static_cast<double>(time.nanosecond) / Quanda::NanosecondsIn::Gregorian::Second::count;
    } else {
      components.second = keel::checkedNarrow<std::uint8_t>(time.second);
    }
  }
  return components;
}

// The failure of a reader whose instant has no components: the first component it needs.
template <class Components>
constexpr std::string_view firstMissingComponent() {
  return hasDate<Components> ? "dateComponents yields no year" : "dateComponents yields no hour";
}

// "DateComponents()": an instant without components yields none of them.
constexpr std::string_view noDateComponents = "DateComponents()";

}  // namespace

// ---- The shared shapes -----------------------------------------------------------------------

KeelResult<GregorianCalendar*> Adapter::Implementation::calendarFor(ZoneChoice zone) {
  switch (zone.kind) {
    case ZoneChoice::Kind::utc:
      return static_cast<GregorianCalendar*>(nullptr);
    case ZoneChoice::Kind::local:
      return getLocalGregorianCalendar();
    case ZoneChoice::Kind::named:
      break;
  }
  return getGregorianCalendarBy(device->currentLocaleIdentifier(), zone.identifier);
}

std::string Adapter::Implementation::calendarDescription(ZoneChoice zone,
                                                         const GregorianCalendar* calendar) const {
  if (calendar != nullptr) return calendar->description();
  return GregorianCalendar{std::string(device->currentLocaleIdentifier()), "UTC", nullptr,
                           absl::UTCTimeZone(), zone.kind == ZoneChoice::Kind::utc}
      .description();
}

template <class Components>
KeelResult<KeelDate> Adapter::Implementation::makeFoundationDate(const Components& components,
                                                                 ZoneChoice zone,
                                                                 std::string_view function) {
  const KeelResult<GregorianCalendar*> calendar = calendarFor(zone);
  if (!calendar) {
    if (zone.kind == ZoneChoice::Kind::named) {
      return KeelError::wrap(calendar.error(),
                             {{"components", components}, {"timezoneIdentifier", zone.identifier}},
                             path, function);
    }
    return KeelError::wrap(calendar.error(), {{"components", components}}, path, function);
  }
  const PlatformDateComponents platform = platformComponents(components);
  if (!namesAMoment(platform)) {
    KeelArguments args{{"components", components}};
    if (zone.kind == ZoneChoice::Kind::named)
      args.emplace_back("timezoneIdentifier", zone.identifier);
    args.emplace_back("calendar", calendarDescription(zone, calendar.value()));
    args.emplace_back("dateComponents", platform.description());
    return KeelError::fault("Failed to create local foundation date from dateComponents",
                            std::move(args), path, function);
  }
  return KeelDate(KeelDate::duration(unixSeconds(platform, calendar.value())));
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
    if (zone.kind == ZoneChoice::Kind::named) {
      return KeelError::wrap(date.error(),
                             {{key, components}, {"timezoneIdentifier", zone.identifier}}, path,
                             function);
    }
    return KeelError::wrap(date.error(), {{key, components}}, path, function);
  }
  return QuandaLogicTimeInterval(date.value());
}

template <class Components>
KeelResult<Components> Adapter::Implementation::readComponents(KeelDate foundationDate,
                                                               ZoneChoice zone,
                                                               std::string_view function) {
  const bool isNamed = zone.kind == ZoneChoice::Kind::named;
  const KeelResult<GregorianCalendar*> calendar = calendarFor(zone);
  if (!calendar) {
    if (isNamed) {
      return KeelError::wrap(calendar.error(),
                             {{"foundationDate", describeInstant(foundationDate)},
                              {"timezoneIdentifier", zone.identifier}},
                             path, function);
    }
    return KeelError::wrap(calendar.error(), {{"foundationDate", describeInstant(foundationDate)}},
                           path, function);
  }
  const double instant = foundationDate.time_since_epoch().count();
  if (!std::isfinite(instant)) {
    if (isNamed) {
      return KeelError::fault(firstMissingComponent<Components>(),
                              {{"dateComponents", noDateComponents},
                               {"foundationDate", describeInstant(foundationDate)},
                               {"timezoneIdentifier", zone.identifier}},
                              path, function);
    }
    return KeelError::fault(firstMissingComponent<Components>(),
                            {{"calendar", calendarDescription(zone, calendar.value())},
                             {"dateComponents", noDateComponents},
                             {"foundationDate", describeInstant(foundationDate)}},
                            path, function);
  }
  return narrowed<Components>(wallTime(instant, calendar.value()));
}

template <class Components>
KeelResult<Components> Adapter::Implementation::readComponents(
    QuandaLogicTimeInterval logicTimeInterval, ZoneChoice zone, std::string_view function,
    std::string_view readerFunction) {
  const KeelResult<Components> components = readComponents<Components>(
      KeelDate(KeelDate::duration(logicTimeInterval.unixEpoch())), zone, readerFunction);
  if (!components) {
    if (zone.kind == ZoneChoice::Kind::named) {
      return KeelError::wrap(
          components.error(),
          {{"logicTimeInterval", logicTimeInterval}, {"timezoneIdentifier", zone.identifier}}, path,
          function);
    }
    return KeelError::wrap(components.error(), {{"logicTimeInterval", logicTimeInterval}}, path,
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
  const KeelArguments args{{"foundationDate", describeInstant(foundationDate)},
                           {"timezoneIdentifier", timezoneIdentifier}};
  if (!calendar) return KeelError::wrap(calendar.error(), args, path, function);
  const double instant = foundationDate.time_since_epoch().count();
  if (!std::isfinite(instant)) {
    return KeelError::fault("Foundation date is not finite", args, path, function);
  }
  // The years 1...9999 lie within +-1e12 s in any zone; beyond, the wall time is not worked out.
  if (std::fabs(instant) >= 1e12) {
    return KeelError::fault("Foundation date outside the years 1...9999", args, path, function);
  }
  const std::int64_t year = wallTime(instant, calendar.value()).year;
  if (year < QuandaAbstractDate::validYearRange.min() ||
      year > QuandaAbstractDate::validYearRange.max()) {
    return KeelError::fault("Foundation date outside the years 1...9999", args, path, function);
  }
  return foundationDate;
}
