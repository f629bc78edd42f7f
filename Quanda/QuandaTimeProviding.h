// QuandaTimeProviding: the only source of the present time in the library.
//
// Nothing in the library reads a clock directly. Whatever needs "now" takes a provider from its
// caller, so that an app can run on a real clock, tests can pin either clock, and the logic clock
// can be related to the interface clock however the app needs. A provider reads two clocks, the
// interface clock and the logic clock (distinct types, QuandaInterfaceTimeInterval and
// QuandaLogicTimeInterval), and maps an interface instant to the logic instant that goes with it.
//
// The library ships one implementation, QuandaMockTimeProvider.
//
// Every provider also has three operations of its own that need a calendar adapter, passed by the
// caller: the current logic instant as a platform instant, and as a natural or real date-time in
// the device's zone. They are not requirements and cannot be replaced by a provider.
#pragma once

#include "Keel/KeelDate.h"
#include "Keel/KeelResult.h"
#include "Quanda/QuandaAppTime.h"
#include "Quanda/QuandaInterfaceTimeInterval.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

class QuandaAbstractNaturalDateTime;
class QuandaAbstractRealDateTime;
class QuandaCalendarAdapting;

class QuandaTimeProviding {
 public:
  virtual ~QuandaTimeProviding() = default;

  // The present instant on the interface clock.
  virtual QuandaInterfaceTimeInterval currentInterfaceTimeInterval() const = 0;
  // The present instant on the logic clock.
  virtual QuandaLogicTimeInterval currentLogicTimeInterval() const = 0;
  // Both clocks read together.
  virtual QuandaAppTime currentAppTime() const = 0;
  // The logic instant a span after the present one. A provider decides what "after" means for
  // its logic clock (a pinned clock may stay where it is).
  virtual QuandaLogicTimeInterval currentLogicTimeInterval(QuandaRealTimeSpan plus) const = 0;
  // The logic instant that goes with an interface instant.
  virtual QuandaLogicTimeInterval logicTimeIntervalAt(
      QuandaInterfaceTimeInterval interfaceTimeInterval) const = 0;

  // The platform instant of currentLogicTimeInterval(), as the adapter makes it (never fails).
  KeelDate currentLogicDate(QuandaCalendarAdapting& calendarAdapter) const;
  // currentLogicTimeInterval() read into a date-time in the device's zone. A failure is the
  // date-time factory's, wrapped without arguments.
  KeelResult<QuandaAbstractNaturalDateTime> currentLocalLogicNaturalDateTime(
      QuandaCalendarAdapting& calendarAdapter) const;
  KeelResult<QuandaAbstractRealDateTime> currentLocalLogicRealDateTime(
      QuandaCalendarAdapting& calendarAdapter) const;

 protected:
  // Providers are objects used through references; copying is left to the implementations, and
  // kept out of the interface so that a provider cannot be sliced.
  QuandaTimeProviding() = default;
  QuandaTimeProviding(const QuandaTimeProviding&) = default;
  QuandaTimeProviding& operator=(const QuandaTimeProviding&) = default;
};
