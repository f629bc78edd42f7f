// QuandaMockTimeProvider: a time provider on the device's wall clock in which either clock can be
// pinned to a fixed instant, for tests and previews.
//
// Without overrides both clocks read std::chrono::system_clock afresh at every call, and the two
// clocks coincide. Setting an override pins that clock from the next read on; clearing it returns
// the clock to the wall clock. Pinning one clock has no effect on the other, and a pinned logic
// clock stays pinned through currentLogicTimeInterval(plus) and logicTimeIntervalAt(...), which
// both return the pin itself.
//
//   auto provider = std::make_shared<QuandaMockTimeProvider>();
//   provider->setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(1000.0));
//
// The provider is an object with identity, shared by reference, and not copyable. It has no lock:
// callers serialise reads and writes from several threads.
#pragma once

#include <optional>

#include "Quanda/QuandaAppTime.h"
#include "Quanda/QuandaInterfaceTimeInterval.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "Quanda/QuandaTimeProviding.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

class QuandaMockTimeProvider final : public QuandaTimeProviding {
 public:
  // Both clocks on the wall clock.
  QuandaMockTimeProvider() = default;
  QuandaMockTimeProvider(const QuandaMockTimeProvider&) = delete;
  QuandaMockTimeProvider& operator=(const QuandaMockTimeProvider&) = delete;

  // The interface override if set, else the wall clock.
  QuandaInterfaceTimeInterval currentInterfaceTimeInterval() const override;
  // The logic override if set, else the wall clock.
  QuandaLogicTimeInterval currentLogicTimeInterval() const override;
  // currentInterfaceTimeInterval(), then currentLogicTimeInterval(): without overrides the wall
  // clock is read twice, so the two parts can differ by the time between the reads.
  QuandaAppTime currentAppTime() const override;
  // The logic override itself if set (the span is ignored, so that a pinned clock stays
  // pinned), else the wall clock plus the span.
  QuandaLogicTimeInterval currentLogicTimeInterval(QuandaRealTimeSpan plus) const override;
  // The logic override if set (whatever instant is asked about), else the logic instant with the
  // same unixEpoch as the interface instant.
  QuandaLogicTimeInterval logicTimeIntervalAt(
      QuandaInterfaceTimeInterval interfaceTimeInterval) const override;

  const std::optional<QuandaInterfaceTimeInterval>& currentInterfaceTimeIntervalOverride()
      const noexcept {
    return currentInterfaceTimeIntervalOverride_;
  }
  void setCurrentInterfaceTimeIntervalOverride(
      std::optional<QuandaInterfaceTimeInterval> interfaceOverride) noexcept {
    currentInterfaceTimeIntervalOverride_ = interfaceOverride;
  }

  const std::optional<QuandaLogicTimeInterval>& currentLogicTimeIntervalOverride() const noexcept {
    return currentLogicTimeIntervalOverride_;
  }
  void setCurrentLogicTimeIntervalOverride(
      std::optional<QuandaLogicTimeInterval> logicOverride) noexcept {
    currentLogicTimeIntervalOverride_ = logicOverride;
  }

 private:
  std::optional<QuandaInterfaceTimeInterval> currentInterfaceTimeIntervalOverride_;
  std::optional<QuandaLogicTimeInterval> currentLogicTimeIntervalOverride_;
};
