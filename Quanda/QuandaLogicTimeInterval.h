// QuandaLogicTimeInterval: an instant on the logic clock, as seconds since
// 1970-01-01T00:00:00Z in a double.
//
// The logic clock is the one that calendar conversions and the "current date" factories work on.
// It is a distinct type from QuandaInterfaceTimeInterval, identical in layout, so that the two
// clocks cannot be mixed by accident. It deliberately has no + with a span: code moves forward on
// the logic clock through the time provider (QuandaTimeProviding::currentLogicTimeInterval(plus))
// or goes back by subtracting spans.
//
//   QuandaLogicTimeInterval start(1700000000.0);
//   QuandaRealTimeSpan elapsed = provider.currentLogicTimeInterval() - start;
//
// Archived as {"unixEpoch": <double>}. Interpolable (KeelScalarInterpolable) on unixEpoch.
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>

#include "Quanda/QuandaTimeIntervalCore.h"

class QuandaLogicTimeInterval
    : public quanda_detail::QuandaTimeIntervalCore<QuandaLogicTimeInterval> {
 public:
  // QuandaLogicTimeInterval(unixEpoch), QuandaLogicTimeInterval(KeelDate), zero,
  // makeFromDouble(x), unixEpoch(), asDouble(), nextUp(), nextDown(), equals(other, tolerance),
  // description(), - span, - interval, ==, <=>: see QuandaTimeIntervalCore.
  using QuandaTimeIntervalCore::QuandaTimeIntervalCore;

  // The epoch itself.
  static const QuandaLogicTimeInterval zero;
};

inline constexpr QuandaLogicTimeInterval QuandaLogicTimeInterval::zero{0.0};

template <>
struct std::hash<QuandaLogicTimeInterval>
    : quanda_detail::QuandaTimeIntervalHash<QuandaLogicTimeInterval> {};

template <>
struct nlohmann::adl_serializer<QuandaLogicTimeInterval>
    : quanda_detail::QuandaTimeIntervalArchive<QuandaLogicTimeInterval> {};
