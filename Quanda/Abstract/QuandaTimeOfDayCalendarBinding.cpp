#include "Quanda/Abstract/QuandaTimeOfDayCalendarBinding.h"

#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"

using namespace quanda_binding;
using Adapter = QuandaCalendarAdapting;
using LocaleOverride = std::optional<std::string_view>;

namespace {

// The adapter's readers of each kind's components.
template <class Time>
struct TimeReaders;

template <>
struct TimeReaders<QuandaAbstractNaturalTimeOfDay> {
  static auto local(Adapter& adapter, KeelDate date) {
    return adapter.makeLocalTimezoneDiscreteTimeComponents(date);
  }
  static auto utc(Adapter& adapter, KeelDate date) {
    return adapter.makeUtcTimezoneDiscreteTimeComponents(date);
  }
};

template <>
struct TimeReaders<QuandaAbstractRealTimeOfDay> {
  static auto local(Adapter& adapter, KeelDate date) {
    return adapter.makeLocalTimezoneRealTimeComponents(date);
  }
  static auto utc(Adapter& adapter, KeelDate date) {
    return adapter.makeUtcTimezoneRealTimeComponents(date);
  }
};

}  // namespace

namespace quanda_detail {

template <class Time, class Traits>
KeelResult<std::string> TimeOfDayCalendarBinding<Time, Traits>::formatWith(
    QuandaTimeFormatStyle timeStyle, Adapter& calendarAdapter,
    LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(self().components(), localeIdentifierOverride, timeStyle),
      [&] {
        return KeelArguments{{"timeOfDay", self()},
                             {"timeStyle", caseName(timeStyle)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)}};
      },
      Traits::sourcePath, "formatWith(timeStyle:calendarAdapter:localeIdentifierOverride:)");
}

template <class Time, class Traits>
KeelResult<std::string> TimeOfDayCalendarBinding<Time, Traits>::formatWith(
    QuandaKnownTimeFormatTemplate formatStringTemplate, Adapter& calendarAdapter,
    LocaleOverride localeIdentifierOverride) const {
  return passedOn(
      calendarAdapter.format(self().components(), formatStringTemplate, localeIdentifierOverride),
      [&] {
        return KeelArguments{{"timeOfDay", self()},
                             {"formatStringTemplate", caseName(formatStringTemplate)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)}};
      },
      Traits::sourcePath,
      "formatWith(formatStringTemplate:calendarAdapter:localeIdentifierOverride:)");
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCalendarBinding<Time, Traits>::makeUsingLocalTimezone(
    KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<Time>(TimeReaders<Time>::local(calendarAdapter, foundationDate),
                        readingArguments("foundationDate", foundationDate, calendarAdapter),
                        NamesComponents::no, Traits::sourcePath,
                        "makeUsingLocalTimezone(foundationDate:calendarAdapter:)");
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCalendarBinding<Time, Traits>::makeUsingUtcTimezone(
    KeelDate foundationDate, Adapter& calendarAdapter) {
  return madeFrom<Time>(TimeReaders<Time>::utc(calendarAdapter, foundationDate),
                        readingArguments("foundationDate", foundationDate, calendarAdapter),
                        NamesComponents::no, Traits::sourcePath,
                        "makeUsingUtcTimezone(foundationDate:calendarAdapter:)");
}

template <class Time, class Traits>
KeelResult<Time> TimeOfDayCalendarBinding<Time, Traits>::makeFromCurrentDateUsingLocalTimezone(
    Adapter& calendarAdapter, const QuandaTimeProviding& timeProvider) {
  const KeelDate currentLogicDate = timeProvider.currentLogicDate(calendarAdapter);
  return madeFrom<Time>(
      TimeReaders<Time>::local(calendarAdapter, currentLogicDate),
      [&] {
        return KeelArguments{{"timeProvider", describeProvider(timeProvider)},
                             {"currentLogicDate", describeInstant(currentLogicDate)},
                             {"calendarAdapter", describeAdapter(calendarAdapter)}};
      },
      NamesComponents::yes, Traits::sourcePath,
      "makeFromCurrentDateUsingLocalTimezone(calendarAdapter:timeProvider:)");
}

template class TimeOfDayCalendarBinding<QuandaAbstractNaturalTimeOfDay, NaturalTimeOfDayTraits>;
template class TimeOfDayCalendarBinding<QuandaAbstractRealTimeOfDay, RealTimeOfDayTraits>;

}  // namespace quanda_detail
