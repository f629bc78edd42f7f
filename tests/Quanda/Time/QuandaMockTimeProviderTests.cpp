#include <gtest/gtest.h>

#include <memory>

#include "Keel/KeelDate.h"
#include "Quanda/QuandaMockTimeProvider.h"
#include "Quanda/QuandaTimeProviderRequiring.h"

namespace {

// Whether read() returns the wall clock's reading at the time of the call, plus offset: the clock
// is read before and after to bracket it.
template <class Read>
bool followsWallClock(Read read, double offset = 0.0) {
  const double before = keelNow().time_since_epoch().count() + offset;
  const double reading = read();
  return before <= reading && reading <= keelNow().time_since_epoch().count() + offset;
}

TEST(QuandaMockTimeProviderTests, WithoutOverridesBothClocksFollowTheWallClock) {
  const QuandaMockTimeProvider provider;
  EXPECT_TRUE(
      followsWallClock([&] { return provider.currentInterfaceTimeInterval().unixEpoch(); }));
  EXPECT_TRUE(followsWallClock([&] { return provider.currentLogicTimeInterval().unixEpoch(); }));
  EXPECT_TRUE(followsWallClock(
      [&] { return provider.currentAppTime().interfaceTimeInterval().unixEpoch(); }));
  EXPECT_TRUE(
      followsWallClock([&] { return provider.currentAppTime().logicTimeInterval().unixEpoch(); }));
  const QuandaAppTime appTime = provider.currentAppTime();
  EXPECT_LE(appTime.interfaceTimeInterval().unixEpoch(), appTime.logicTimeInterval().unixEpoch());
  EXPECT_TRUE(followsWallClock(
      [&] { return provider.currentLogicTimeInterval(QuandaRealTimeSpan(-30.0)).unixEpoch(); },
      -30.0));
  EXPECT_EQ(provider.logicTimeIntervalAt(QuandaInterfaceTimeInterval(1234.5)),
            QuandaLogicTimeInterval(1234.5));
}

TEST(QuandaMockTimeProviderTests, PinnedClocksStayPinnedAndLeaveTheOtherClockAlone) {
  QuandaMockTimeProvider provider;
  provider.setCurrentLogicTimeIntervalOverride(QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.currentLogicTimeInterval(), QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.currentLogicTimeInterval(QuandaRealTimeSpan(60.0)),
            QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.logicTimeIntervalAt(QuandaInterfaceTimeInterval(5.0)),
            QuandaLogicTimeInterval(1000.0));
  EXPECT_EQ(provider.currentAppTime().logicTimeInterval(), QuandaLogicTimeInterval(1000.0));
  EXPECT_TRUE(followsWallClock(
      [&] { return provider.currentAppTime().interfaceTimeInterval().unixEpoch(); }));
  provider.setCurrentLogicTimeIntervalOverride(std::nullopt);
  EXPECT_FALSE(provider.currentLogicTimeIntervalOverride().has_value());
  EXPECT_TRUE(followsWallClock([&] { return provider.currentLogicTimeInterval().unixEpoch(); }));

  provider.setCurrentInterfaceTimeIntervalOverride(QuandaInterfaceTimeInterval(2000.0));
  EXPECT_EQ(provider.currentInterfaceTimeIntervalOverride(), QuandaInterfaceTimeInterval(2000.0));
  EXPECT_EQ(provider.currentAppTime().interfaceTimeInterval(), QuandaInterfaceTimeInterval(2000.0));
  EXPECT_TRUE(
      followsWallClock([&] { return provider.currentAppTime().logicTimeInterval().unixEpoch(); }));
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
