// Behaviour that the three span kinds share: construction, zero, ordering, hashing, sums,
// interpolation and the std::chrono conversions.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <unordered_set>

#include "Keel/KeelDomain.h"
#include "Keel/KeelScalarInterpolable.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

static_assert(KeelScalarInterpolable<QuandaNaturalTimeSpan>);
static_assert(KeelScalarInterpolable<QuandaDiscreteTimeSpan>);
static_assert(KeelScalarInterpolable<QuandaRealTimeSpan>);
static_assert(std::is_trivially_copyable_v<QuandaNaturalTimeSpan> &&
              std::is_trivially_copyable_v<QuandaDiscreteTimeSpan> &&
              std::is_trivially_copyable_v<QuandaRealTimeSpan>);
static_assert(sizeof(QuandaNaturalTimeSpan) == 8 && sizeof(QuandaRealTimeSpan) == 8);

// The kinds never mix implicitly: no cross-kind sum, comparison or conversion from a plain double
// into a whole-second span.
template <class A, class B>
concept Addable = requires(A a, B b) {
  a + b;
};
template <class A, class B>
concept Comparable = requires(A a, B b) {
  a == b;
};
static_assert(!Addable<QuandaNaturalTimeSpan, QuandaDiscreteTimeSpan>);
static_assert(!Addable<QuandaRealTimeSpan, QuandaDiscreteTimeSpan>);
static_assert(!Comparable<QuandaNaturalTimeSpan, QuandaRealTimeSpan>);
static_assert(!std::is_convertible_v<std::uint64_t, QuandaNaturalTimeSpan>);
static_assert(!std::is_constructible_v<QuandaNaturalTimeSpan, double>);
static_assert(!std::is_constructible_v<QuandaDiscreteTimeSpan, double>);
// Only the signed kinds subtract.
template <class S>
concept Subtractable = requires(S a) {
  a - a;
};
static_assert(!Subtractable<QuandaNaturalTimeSpan>);
static_assert(Subtractable<QuandaDiscreteTimeSpan> && Subtractable<QuandaRealTimeSpan>);

// Spans and values are usable in constant expressions.
static_assert(QuandaNaturalTimeSpan::make(1, 2, 3, 4).seconds() == 93784);
static_assert((QuandaDiscreteTimeSpan(5) + QuandaDiscreteTimeSpan(-7)).seconds() == -2);
static_assert(QuandaNaturalTimeSpan::zero.isZero() && QuandaRealTimeSpan::zero.isZero());
static_assert(QuandaLogicTimeInterval::zero.unixEpoch() == 0.0);

template <class Span>
class QuandaTimeSpanCommonTests : public ::testing::Test {};
using SpanKinds =
    ::testing::Types<QuandaNaturalTimeSpan, QuandaDiscreteTimeSpan, QuandaRealTimeSpan>;
TYPED_TEST_SUITE(QuandaTimeSpanCommonTests, SpanKinds);

TYPED_TEST(QuandaTimeSpanCommonTests, OrderingEqualityAndHashFollowSeconds) {
  using Span = TypeParam;
  Span accumulated = Span::zero;
  accumulated += Span(40);
  EXPECT_EQ(accumulated + Span(2), Span(42));
  EXPECT_LT(Span(3), Span(4));
  const std::unordered_set<Span> set{Span(1), Span(2), Span(1)};
  EXPECT_EQ(set.size(), 2u);
  const KeelDomain<Span> domain(Span(10), Span(20));
  EXPECT_EQ(domain.clamp(Span(25)), Span(20));
  EXPECT_TRUE(domain.contains(Span(10)));
}

TYPED_TEST(QuandaTimeSpanCommonTests, InterpolationGoesThroughDoubles) {
  using Span = TypeParam;
  EXPECT_EQ(Span(90).asDouble(), 90.0);
  EXPECT_EQ(lerpOpen(Span(10), 0.5, Span(20)), Span(15));
  EXPECT_GT(Span(5).nextUp(), Span(5));
  EXPECT_LT(Span(5).nextDown(), Span(5));
  EXPECT_EQ(Span(5).nextUp().nextDown(), Span(5));
}

TYPED_TEST(QuandaTimeSpanCommonTests, ChronoRoundTrip) {
  using Span = TypeParam;
  const Span span(std::chrono::minutes(2));
  EXPECT_EQ(span.seconds(), 120);
  EXPECT_EQ(span.toChrono(), std::chrono::seconds(120));
  EXPECT_EQ(Span(span.toChrono()), span);
}

// makeFromDouble floors for the whole-second kinds, so negative fractions move away from zero.
TEST(QuandaTimeSpanFromDoubleTests, FloorsForWholeSecondKinds) {
  EXPECT_EQ(QuandaNaturalTimeSpan::makeFromDouble(2.9).seconds(), 2u);
  EXPECT_EQ(QuandaNaturalTimeSpan::makeFromDouble(-0.0).seconds(), 0u);
  EXPECT_EQ(QuandaDiscreteTimeSpan::makeFromDouble(-0.5).seconds(), -1);
  EXPECT_EQ(QuandaDiscreteTimeSpan::makeFromDouble(-2.0).seconds(), -2);
  EXPECT_EQ(QuandaDiscreteTimeSpan::makeFromDouble(-9223372036854775808.0).seconds(),
            std::numeric_limits<std::int64_t>::min());
  // The largest double below 2^64 is the largest that fits.
  EXPECT_EQ(
      QuandaNaturalTimeSpan::makeFromDouble(std::nextafter(18446744073709551616.0, 0.0)).seconds(),
      18446744073709549568u);
  EXPECT_EQ(QuandaRealTimeSpan::makeFromDouble(-0.5).seconds(), -0.5);
}

TEST(QuandaTimeSpanFromDoubleTests, WholeSecondNeighboursSaturate) {
  EXPECT_EQ(QuandaNaturalTimeSpan::zero.nextDown(), QuandaNaturalTimeSpan::zero);
  constexpr auto top = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(QuandaDiscreteTimeSpan(top).nextUp(), QuandaDiscreteTimeSpan(top));
}

TEST(QuandaTimeSpanDeathTests, ProgrammingErrorsHalt) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr auto uint64Max = std::numeric_limits<std::uint64_t>::max();
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { QuandaNaturalTimeSpan::makeFromDouble(-0.5); }, "Precondition failed"},
      {[] { QuandaNaturalTimeSpan::makeFromDouble(18446744073709551616.0); },
       "Precondition failed"},
      {[] { QuandaNaturalTimeSpan::makeFromDouble(nan); }, "Precondition failed"},
      {[] { QuandaDiscreteTimeSpan::makeFromDouble(9223372036854775808.0); },
       "Precondition failed"},
      {[] { QuandaDiscreteTimeSpan::makeFromDouble(-9223372036854777856.0); },
       "Precondition failed"},
      {[] { QuandaDiscreteTimeSpan::makeFromDouble(-inf); }, "Precondition failed"},
      {[] { QuandaNaturalTimeSpan(uint64Max) + QuandaNaturalTimeSpan(1); }, "integer overflow"},
      {[] {
         auto discrete = QuandaDiscreteTimeSpan(std::numeric_limits<std::int64_t>::max());
         discrete += QuandaDiscreteTimeSpan(1);
       },
       "integer overflow"},
      {[] { (void)QuandaNaturalTimeSpan(-1); }, "does not fit"},
      {[] { (void)QuandaNaturalTimeSpan(std::chrono::seconds(-1)); }, "does not fit"},
      {[] { (void)QuandaDiscreteTimeSpan(uint64Max); }, "does not fit"},
      {[] { QuandaNaturalTimeSpan(uint64Max).toChrono(); }, "does not fit"},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}
