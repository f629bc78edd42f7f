#include "Quanda/QuandaTimeProviding.h"

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"

namespace {

constexpr std::string_view path = "Quanda/QuandaTimeProviding";
constexpr auto noArguments = [] { return KeelArguments{}; };

}  // namespace

KeelDate QuandaTimeProviding::currentLogicDate(QuandaCalendarAdapting& calendarAdapter) const {
  return calendarAdapter.makeFoundationDate(currentLogicTimeInterval());
}

KeelResult<QuandaAbstractNaturalDateTime> QuandaTimeProviding::currentLocalLogicNaturalDateTime(
    QuandaCalendarAdapting& calendarAdapter) const {
  return quanda_binding::passedOn(QuandaAbstractNaturalDateTime::makeUsingLocalTimezone(
                                      currentLogicTimeInterval(), calendarAdapter),
                                  noArguments, path,
                                  "currentLocalLogicNaturalDateTime(calendarAdapter:)");
}

KeelResult<QuandaAbstractRealDateTime> QuandaTimeProviding::currentLocalLogicRealDateTime(
    QuandaCalendarAdapting& calendarAdapter) const {
  return quanda_binding::passedOn(QuandaAbstractRealDateTime::makeUsingLocalTimezone(
                                      currentLogicTimeInterval(), calendarAdapter),
                                  noArguments, path,
                                  "currentLocalLogicRealDateTime(calendarAdapter:)");
}
