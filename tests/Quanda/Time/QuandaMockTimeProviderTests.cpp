#include <gtest/gtest.h>

#include <memory>

#include "Keel/KeelDate.h"
#include "Quanda/QuandaMockTimeProvider.h"
#include "Quanda/QuandaTimeProviderRequiring.h"

namespace {

// The wall clock is bracketed by reading it before and after the call under test.
struct WallClockWindow {
  double before;
  double after;
  bool contains(double reading) const { return before <= reading && reading <= after; }
};

template <class Read>
auto readWithin(WallClockWindow& window, Read read) {
  window.before = keelNow().time_since_epoch().count();
  auto value = read();
  window.after = keelNow().time_since_epoch().count();
  return value;
}

TEST(QuandaMockTimeProviderTests, WithoutOverridesBothClocksFollowTheWallClock) {
  const QuandaMockTimeProvider provider;
  WallClockWindow window{};
  EXPECT_TRUE(window.contains(
      readWithin(window, [&] { return provider.currentInterfaceTimeInterval(); }).unixEpoch()));
  EXPECT_TRUE(window.contains(
      readWithin(window, [&] { return provider.currentLogicTimeInterval(); }).unixEpoch()));
  const QuandaAppTime appTime = readWithin(window, [&] { return provider.currentAppTime(); });
  EXPECT_TRUE(window.contains(appTime.interfaceTimeInterval().unixEpoch()));
  EXPECT_TRUE(window.contains(appTime.logicTimeInterval().unixEpoch()));
  EXPECT_LE(appTime.interfaceTimeInterval().unixEpoch(), appTime.logicTimeInterval().unixEpoch());

  const auto later = readWithin(
      window, [&] { return provider.currentLogicTimeInterval(QuandaRealTimeSpan(-30.0)); });
  EXPECT_TRUE(
      (WallClockWindow{window.before - 30.0, window.after - 30.0}.contains(later.unixEpoch())));
  EXPECT_EQ(provider.logicTimeIntervalAt(QuandaInterfaceTimeInterval(1234.5)),
            QuandaLogicTimeInterval(1234.5));
}

TEST(QuandaMockTimeProviderTests, APinnedLogicClockStaysPinned) {
  QuandaMockTimeProvider provider;
  provider.setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.currentLogicTimeInterval(), QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.currentLogicTimeInterval(QuandaRealTimeSpan(60.0)),
            QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.logicTimeIntervalAt(QuandaInterfaceTimeInterval(5.0)),
            QuandaLogicTimeInterval(1000.0));
  WallClockWindow window{};
  const QuandaAppTime appTime = readWithin(window, [&] { return provider.currentAppTime(); });
  EXPECT_TRUE(window.contains(appTime.interfaceTimeInterval().unixEpoch()));
  EXPECT_EQ(appTime.logicTimeInterval(), QuandaLogicTimeInterval(1000.0));

  provider.setCurrentLogicTimeIntervalOverride(std::nullopt);
  EXPECT_FALSE(provider.currentLogicTimeIntervalOverride().has_value());
  EXPECT_TRUE(window.contains(
      readWithin(window, [&] { return provider.currentLogicTimeInterval(); }).unixEpoch()));
}

TEST(QuandaMockTimeProviderTests, APinnedInterfaceClockLeavesTheLogicClockAlone) {
  QuandaMockTimeProvider provider;
  provider.setCurrentInterfaceTimeIntervalOverride(QuandaInterfaceTimeInterval(2000.0));
  EXPECT_EQ(provider.currentInterfaceTimeIntervalOverride(), QuandaInterfaceTimeInterval(2000.0));
  WallClockWindow window{};
  const QuandaAppTime appTime = readWithin(window, [&] { return provider.currentAppTime(); });
  EXPECT_EQ(appTime.interfaceTimeInterval(), QuandaInterfaceTimeInterval(2000.0));
  EXPECT_TRUE(window.contains(appTime.logicTimeInterval().unixEpoch()));
  EXPECT_EQ(provider.logicTimeIntervalAt(QuandaInterfaceTimeInterval(2000.0)),
            QuandaLogicTimeInterval(2000.0));
}

// A component that needs a provider for its whole life sees the pins of the provider it shares.
class Reminder final : public QuandaTimeProviderRequiring {
 public:
  std::shared_ptr<QuandaTimeProviding> timeProvider() const override { return timeProvider_; }
  void setTimeProvider(std::shared_ptr<QuandaTimeProviding> timeProvider) override {
    timeProvider_ = std::move(timeProvider);
  }
  bool isDue(QuandaLogicTimeInterval at) const {
    return !(timeProvider_->currentLogicTimeInterval() < at);
  }

 private:
  std::shared_ptr<QuandaTimeProviding> timeProvider_;
};

TEST(QuandaMockTimeProviderTests, RequiringObjectsShareTheProvider) {
  auto provider = std::make_shared<QuandaMockTimeProvider>();
  Reminder reminder;
  reminder.setTimeProvider(provider);
  EXPECT_EQ(reminder.timeProvider().get(), provider.get());
  provider->setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(99.0));
  EXPECT_FALSE(reminder.isDue(QuandaLogicTimeInterval(100.0)));
  provider->setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(100.0));
  EXPECT_TRUE(reminder.isDue(QuandaLogicTimeInterval(100.0)));
}

}  // namespace
