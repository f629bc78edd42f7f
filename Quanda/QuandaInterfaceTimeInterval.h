// QuandaInterfaceTimeInterval: an instant on the interface clock, as seconds since
// 1970-01-01T00:00:00Z in a double.
//
// The interface clock is what the user interface shows and animates against. It is a distinct
// type from QuandaLogicTimeInterval, identical in layout, so that the two clocks cannot be mixed
// by accident; a time provider maps an interface instant to a logic instant
// (QuandaTimeProviding::logicTimeIntervalAt). Unlike the logic interval it can be moved forward
// by adding a span.
//
//   QuandaInterfaceTimeInterval shown = provider.currentInterfaceTimeInterval();
//   QuandaInterfaceTimeInterval fadeEnd = shown + QuandaRealTimeSpan(0.25);
//
// Archived as {"unixEpoch": <double>}. Interpolable (KeelScalarInterpolable) on unixEpoch.
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>

#include "Quanda/QuandaTimeIntervalCore.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

class QuandaInterfaceTimeInterval
    : public quanda_detail::QuandaTimeIntervalCore<QuandaInterfaceTimeInterval> {
 public:
  // QuandaInterfaceTimeInterval(unixEpoch), QuandaInterfaceTimeInterval(KeelDate), zero,
  // makeFromDouble(x), unixEpoch(), asDouble(), nextUp(), nextDown(), equals(other, tolerance),
  // description(), - span, - interval, ==, <=>: see QuandaTimeIntervalCore.
  using QuandaTimeIntervalCore::QuandaTimeIntervalCore;

  // The epoch itself.
  static const QuandaInterfaceTimeInterval zero;

  // The instant span.seconds() later.
  friend constexpr QuandaInterfaceTimeInterval operator+(QuandaInterfaceTimeInterval interval,
                                                         QuandaRealTimeSpan span) noexcept {
    return QuandaInterfaceTimeInterval(interval.unixEpoch() + span.seconds());
  }
};

inline constexpr QuandaInterfaceTimeInterval QuandaInterfaceTimeInterval::zero{0.0};

template <>
struct std::hash<QuandaInterfaceTimeInterval>
    : quanda_detail::QuandaTimeIntervalHash<QuandaInterfaceTimeInterval> {};

template <>
struct nlohmann::adl_serializer<QuandaInterfaceTimeInterval>
    : quanda_detail::QuandaTimeIntervalArchive<QuandaInterfaceTimeInterval> {};
