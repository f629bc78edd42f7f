#include "Quanda/QuandaMockTimeProvider.h"

#include <chrono>

#include "Keel/KeelDate.h"

QuandaInterfaceTimeInterval QuandaMockTimeProvider::currentInterfaceTimeInterval() const {
  if (currentInterfaceTimeIntervalOverride_) return *currentInterfaceTimeIntervalOverride_;
  return QuandaInterfaceTimeInterval(keelNow());
}

QuandaLogicTimeInterval QuandaMockTimeProvider::currentLogicTimeInterval() const {
  if (currentLogicTimeIntervalOverride_) return *currentLogicTimeIntervalOverride_;
  return QuandaLogicTimeInterval(keelNow());
}

QuandaAppTime QuandaMockTimeProvider::currentAppTime() const {
  const QuandaInterfaceTimeInterval interfaceTimeInterval = currentInterfaceTimeInterval();
  const QuandaLogicTimeInterval logicTimeInterval = currentLogicTimeInterval();
  return QuandaAppTime(interfaceTimeInterval, logicTimeInterval);
}

QuandaLogicTimeInterval QuandaMockTimeProvider::currentLogicTimeInterval(
    QuandaRealTimeSpan plus) const {
  if (currentLogicTimeIntervalOverride_) return *currentLogicTimeIntervalOverride_;
  return QuandaLogicTimeInterval(keelNow() + plus.toChrono());
}

QuandaLogicTimeInterval QuandaMockTimeProvider::logicTimeIntervalAt(
    QuandaInterfaceTimeInterval interfaceTimeInterval) const {
  if (currentLogicTimeIntervalOverride_) return *currentLogicTimeIntervalOverride_;
  return QuandaLogicTimeInterval(interfaceTimeInterval.unixEpoch());
}
