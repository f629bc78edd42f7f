// The two clock types share one implementation; every test runs on both.
#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "Keel/KeelDoubleDomain.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/QuandaInterfaceTimeInterval.h"
#include "Quanda/QuandaLogicTimeInterval.h"

static_assert(KeelScalarInterpolable<QuandaLogicTimeInterval>);
static_assert(KeelScalarInterpolable<QuandaInterfaceTimeInterval>);
static_assert(std::is_trivially_copyable_v<QuandaLogicTimeInterval>);
// The clocks never mix, and only the interface clock moves forward by a span.
static_assert(!std::is_convertible_v<QuandaLogicTimeInterval, QuandaInterfaceTimeInterval>);
static_assert(!std::is_constructible_v<QuandaLogicTimeInterval, QuandaInterfaceTimeInterval>);
static_assert(!std::is_convertible_v<double, QuandaLogicTimeInterval>);
template <class A, class B>
concept Comparable = requires(A a, B b) {
  a < b;
};
static_assert(!Comparable<QuandaLogicTimeInterval, QuandaInterfaceTimeInterval>);
template <class T>
concept MovesForward = requires(T t, QuandaRealTimeSpan span) {
  t + span;
};
static_assert(MovesForward<QuandaInterfaceTimeInterval>);
static_assert(!MovesForward<QuandaLogicTimeInterval>);

namespace {

template <class Interval>
class QuandaTimeIntervalTests : public ::testing::Test {};
using Clocks = ::testing::Types<QuandaLogicTimeInterval, QuandaInterfaceTimeInterval>;
TYPED_TEST_SUITE(QuandaTimeIntervalTests, Clocks);

TYPED_TEST(QuandaTimeIntervalTests, DifferencesAreRealSpans) {
  using T = TypeParam;
  EXPECT_EQ((T(10.0) - T(25.0)).seconds(), -15.0);
  EXPECT_EQ((T(100.0) - QuandaRealTimeSpan(2.5)).unixEpoch(), 97.5);
  EXPECT_EQ(T::makeFromDouble(12.5), T(12.5));
  EXPECT_EQ(T(KeelDate(std::chrono::duration<double>(-1.25))).unixEpoch(), -1.25);
}

TYPED_TEST(QuandaTimeIntervalTests, OrderingEqualityAndHash) {
  using T = TypeParam;
  EXPECT_LT(T(1.0), T(1.5));
  EXPECT_EQ(T(-0.0), T(0.0));
  const std::unordered_set<T> set{T(-0.0), T(0.0), T(1.0)};
  EXPECT_EQ(set.size(), 2u);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(T(nan) == T(nan));
  EXPECT_FALSE(T(nan) < T(0.0) || T(0.0) < T(nan));
}

TYPED_TEST(QuandaTimeIntervalTests, DomainFromDoublesAndItsRange) {
  using T = TypeParam;
  const KeelDomain<T> domain = makeTimeIntervalDomain<T>({5.0, 65.0});
  EXPECT_EQ(domain.min(), T(5.0));
  EXPECT_EQ(domain.max(), T(65.0));
  EXPECT_EQ(range(domain).seconds(), 60.0);
  // Reversed bounds are kept as given, so the range is negative.
  EXPECT_EQ(range(makeTimeIntervalDomain<T>(KeelDoubleDomain(65.0, 5.0))).seconds(), -60.0);
  EXPECT_EQ(lerpOpen(domain.min(), 0.25, domain.max()), T(20.0));
}

TYPED_TEST(QuandaTimeIntervalTests, ArchivesAsAKeyedDouble) {
  using T = TypeParam;
  EXPECT_EQ(nlohmann::json(T(1700000000.25)).dump(), R"({"unixEpoch":1700000000.25})");
  // The text form reads back to the same bits, awkward doubles included.
  const double awkward[] = {
      0.1, 5e-324, -0.0, -1234567.890123, std::numeric_limits<double>::max(), 2.0 / 3.0};
  for (double value : awkward) {
    const std::string text = nlohmann::json(T(value)).dump();
    const T decoded = nlohmann::json::parse(text).get<T>();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(decoded.unixEpoch()),
              std::bit_cast<std::uint64_t>(value))
        << text;
  }
  // An integer number is a valid epoch; extra keys are ignored.
  EXPECT_EQ(nlohmann::json::parse(R"({"unixEpoch": 12, "x": 1})").get<T>(), T(12.0));
}

TYPED_TEST(QuandaTimeIntervalTests, DecodingErrorsAreNlohmanns) {
  using T = TypeParam;
  using nlohmann::json;
  EXPECT_THROW(json::parse(R"({})").get<T>(), json::out_of_range);
  EXPECT_THROW(json::parse(R"({"unixepoch": 1.0})").get<T>(), json::out_of_range);
  for (const char* text : {R"({"unixEpoch": "1.0"})", R"({"unixEpoch": true})",
                           R"({"unixEpoch": null})", R"({"unixEpoch": [1.0]})", "1.0", "[1.0]"}) {
    EXPECT_THROW(json::parse(text).get<T>(), json::type_error) << text;
  }
}

TEST(QuandaInterfaceTimeIntervalTests, MovesForwardBySpans) {
  EXPECT_EQ((QuandaInterfaceTimeInterval(100.0) + QuandaRealTimeSpan(2.5)).unixEpoch(), 102.5);
}

}  // namespace
