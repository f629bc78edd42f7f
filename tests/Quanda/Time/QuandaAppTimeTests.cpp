#include <gtest/gtest.h>

#include "Quanda/QuandaAppTime.h"

namespace {

QuandaAppTime appTime(double interface, double logic) {
  return QuandaAppTime(QuandaInterfaceTimeInterval(interface), QuandaLogicTimeInterval(logic));
}

TEST(QuandaAppTimeTests, EqualsNeedsBothReadingsWithinTolerance) {
  const KeelPrecision tolerance = KeelPrecision::coarse;
  EXPECT_TRUE(appTime(1.0, 2.0).equals(appTime(1.0009, 1.9991), tolerance));
  EXPECT_FALSE(appTime(1.0, 2.0).equals(appTime(1.1, 2.0), tolerance));
  EXPECT_FALSE(appTime(1.0, 2.0).equals(appTime(1.0, 2.1), tolerance));
}

}  // namespace
