// QuandaAppTime: one reading of both clocks taken together, the interface instant and the logic
// instant, as a time provider hands them out (QuandaTimeProviding::currentAppTime).
//
// There is no ordering, hashing or archived form: an app time is a reading to act on, not a key.
#pragma once

#include <ostream>
#include <string>

#include "Keel/KeelPrecision.h"
#include "Quanda/QuandaInterfaceTimeInterval.h"
#include "Quanda/QuandaLogicTimeInterval.h"

class QuandaAppTime {
 public:
  constexpr QuandaAppTime(QuandaInterfaceTimeInterval interfaceTimeInterval,
                          QuandaLogicTimeInterval logicTimeInterval) noexcept
      : interfaceTimeInterval_(interfaceTimeInterval), logicTimeInterval_(logicTimeInterval) {}

  constexpr QuandaInterfaceTimeInterval interfaceTimeInterval() const noexcept {
    return interfaceTimeInterval_;
  }
  constexpr QuandaLogicTimeInterval logicTimeInterval() const noexcept {
    return logicTimeInterval_;
  }

  // Both readings within the tolerance; the interface readings are compared first and the logic
  // readings only when those agree.
  constexpr bool equals(const QuandaAppTime& other, KeelPrecision tolerance) const noexcept {
    return interfaceTimeInterval_.equals(other.interfaceTimeInterval_, tolerance) &&
           logicTimeInterval_.equals(other.logicTimeInterval_, tolerance);
  }

  // "interface 1700000000.25, logic 1700000000.5"
  std::string description() const {
    return "interface " + interfaceTimeInterval_.description() + ", logic " +
           logicTimeInterval_.description();
  }

  friend constexpr bool operator==(const QuandaAppTime&, const QuandaAppTime&) = default;

 private:
  QuandaInterfaceTimeInterval interfaceTimeInterval_;
  QuandaLogicTimeInterval logicTimeInterval_;
};

inline std::ostream& operator<<(std::ostream& stream, const QuandaAppTime& appTime) {
  return stream << appTime.description();
}
