#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "Keel/KeelCheckedArithmetic.h"
#include "Keel/KeelDoubleDomain.h"
#include "Keel/KeelMathUtil.h"
#include "Keel/KeelPrecision.h"
#include "Keel/KeelResult.h"
#include "Keel/KeelScalarInterpolable.h"

namespace {

struct Described {
  std::string description() const { return "described"; }
};

KeelResult<int> parse(std::string_view text) {
  if (text != "1")
    return KeelResult<int>("Bad text", {{"text", text}}, "Keel/Inner", "parse(text:)", 10, "U_ERR");
  return 1;
}

KeelResult<int> outer(std::string_view text) {
  const KeelResult<int> inner = parse(text);
  if (!inner)
    return KeelResult<int>(inner.error(), {{"text", text}}, "Keel/Outer", "outer(text:)", 20);
  return inner.value() + 1;
}

TEST(KeelResult, CarriesAValueOrAWrappedErrorChain) {
  EXPECT_EQ(outer("1").value(), 2);

  const KeelResult<int> failed = outer("x");
  ASSERT_FALSE(failed.hasValue());
  EXPECT_EQ(failed.optionalValue(), std::nullopt);
  const KeelError& error = failed.error();
  EXPECT_EQ(error.message(), "");
  EXPECT_EQ(error.functionName(), "outer(text:)");
  EXPECT_EQ(error.lineNumber(), 20u);
  ASSERT_NE(error.error(), nullptr);
  EXPECT_EQ(&error.innermost(), error.error());
  EXPECT_EQ(error.innermost().message(), "Bad text");
  EXPECT_EQ(error.innermost().fileName(), "Keel/Inner");
  EXPECT_EQ(error.innermost().frameworkError(), "U_ERR");
  EXPECT_EQ(error.innermost().error(), nullptr);
  EXPECT_EQ(error.chainDescription(),
            "{text: x} in outer(text:) (Keel/Outer:20)\n"
            "  \"Bad text\" {text: x} in parse(text:) (Keel/Inner:10) [U_ERR]");
  EXPECT_EQ(KeelResult<int>(error).error(), error);
  EXPECT_EQ(outer("x").error(), error);  // equal by content, not identity
}

TEST(KeelError, OneLineSitesTakeTheCallersLine) {
  const std::uint32_t faultLine = __LINE__ + 1;
  const KeelResult<int> fault = KeelError::fault("Bad", {{"n", 1}}, "Keel/Site", "f(n:)", "U_X");
  const std::uint32_t wrapLine = __LINE__ + 1;
  const KeelResult<double> wrapped = KeelError::wrap(fault.error(), {}, "Keel/Outer", "g()");
  EXPECT_EQ(fault.error().lineNumber(), faultLine);
  EXPECT_EQ(fault.error().frameworkError(), "U_X");
  EXPECT_EQ(wrapped.error().lineNumber(), wrapLine);
  EXPECT_EQ(*wrapped.error().error(), fault.error());

  std::ostringstream stream;
  stream << wrapped.error();
  EXPECT_EQ(stream.str(), "Bad\n" + wrapped.error().chainDescription());
}

TEST(KeelResultDeathTest, TakingTheWrongCaseStops) {
  // The chain is printed, innermost message first.
  EXPECT_DEATH((void)outer("x").value(),
               "value\\(\\) of a failed KeelResult\nBad text\n\\{text: x\\} in outer");
  EXPECT_DEATH((void)outer("1").error(), "error\\(\\) of a successful KeelResult");
}

TEST(KeelError, RendersArgumentsAsText) {
  const KeelError error("m",
                        {{"u8", std::uint8_t{200}},
                         {"i8", std::int8_t{-5}},
                         {"string", std::string("abc")},
                         {"list", std::vector<std::string>{"12", "", "56"}},
                         {"double", 0.1},
                         {"negativeZero", -0.0},
                         {"flag", true},
                         {"absent", std::optional<int>()},
                         {"library", Described()}},
                        "f", "g()", 1);
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"u8", "200"},           {"i8", "-5"},
      {"string", "abc"},       {"list", R"(["12", "", "56"])"},
      {"double", "0.1"},       {"negativeZero", "-0"},
      {"flag", "true"},        {"absent", "nil"},
      {"library", "described"}};
  for (const auto& [key, text] : expected) EXPECT_EQ(error.argument(key), text) << key;
  EXPECT_EQ(error.argument("missing"), std::nullopt);
}

using Eligibility = KeelBoundsEligibility;

TEST(KeelDomain, ContainsHonoursEachEligibilityWhateverTheBoundOrder) {
  struct Case {
    Eligibility eligibility;
    bool atMin, inside, atMax;
  };
  const Case cases[] = {{Eligibility::inclusiveMinInclusiveMax, true, true, true},
                        {Eligibility::inclusiveMinExclusiveMax, true, true, false},
                        {Eligibility::exclusiveMinInclusiveMax, false, true, true},
                        {Eligibility::exclusiveMinExclusiveMax, false, true, false}};
  for (const KeelDomain<int>& domain : {KeelDomain<int>(10, 20), KeelDomain<int>(20, 10)}) {
    for (const Case& c : cases) {
      EXPECT_FALSE(domain.contains(9, c.eligibility));
      EXPECT_EQ(domain.contains(10, c.eligibility), c.atMin);
      EXPECT_EQ(domain.contains(15, c.eligibility), c.inside);
      EXPECT_EQ(domain.contains(20, c.eligibility), c.atMax);
      EXPECT_FALSE(domain.contains(21, c.eligibility));
    }
    EXPECT_EQ(domain.clamp(3), 10);
    EXPECT_EQ(domain.clamp(15), 15);
    EXPECT_EQ(domain.clamp(99), 20);
    EXPECT_EQ(domain.trueMin(), 10);
    EXPECT_EQ(domain.trueMax(), 20);
  }
  EXPECT_NE(KeelDomain<int>(10, 20), KeelDomain<int>(20, 10));  // equality is over stored bounds
}

TEST(KeelDoubleDomain, ContainsNoNaN) {
  const KeelDoubleDomain domain(0.0, 60.0);
  for (Eligibility eligibility :
       {Eligibility::inclusiveMinInclusiveMax, Eligibility::inclusiveMinExclusiveMax,
        Eligibility::exclusiveMinInclusiveMax, Eligibility::exclusiveMinExclusiveMax}) {
    EXPECT_FALSE(domain.contains(NAN, eligibility)) << static_cast<int>(eligibility);
  }
  EXPECT_TRUE(domain.contains(std::nextafter(60.0, 0.0), Eligibility::inclusiveMinExclusiveMax));
}

TEST(KeelPrecision, EqualsWithinAnAbsoluteTolerance) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(keelEquals(1.0, 1.0009, KeelPrecision::coarse));
  EXPECT_FALSE(keelEquals(1.0, 1.0011, KeelPrecision::coarse));
  EXPECT_FALSE(keelEquals(0.1 + 0.2, 0.3, KeelPrecision::exact));
  EXPECT_TRUE(keelEquals(0.1 + 0.2, 0.3, KeelPrecision::fine));
  EXPECT_TRUE(keelEquals(infinity, infinity, KeelPrecision::exact));
  EXPECT_FALSE(keelEquals(infinity, 1e308, KeelPrecision::coarse));
  EXPECT_FALSE(keelEquals(NAN, NAN, KeelPrecision::coarse));
  EXPECT_TRUE(keelEquals(1.0, 1.5, KeelPrecision(-0.5)));
}

TEST(KeelMathUtil, RoundsToMultiplesOfAStep) {
  struct Case {
    double subject, step, nearest, down, up;
  };
  const Case cases[] = {{90, 60, 120, 60, 120},
                        {-90, 60, -120, -120, -60},
                        {89, 60, 60, 60, 120},
                        {-29, 60, 0, -60, 0},
                        {1800, 3600, 3600, 0, 3600},
                        {-1800, 3600, -3600, -3600, 0},
                        {86400, 86400, 86400, 86400, 86400},
                        {86399.5, 86400, 86400, 0, 86400}};
  for (const Case& c : cases) {
    EXPECT_EQ(KeelMathUtil::roundTo(c.subject, c.step), c.nearest) << c.subject;
    EXPECT_EQ(KeelMathUtil::floor(c.subject, c.step), c.down) << c.subject;
    EXPECT_EQ(KeelMathUtil::ceil(c.subject, c.step), c.up) << c.subject;
  }
}

TEST(KeelCheckedArithmetic, ConvertsDoublesThatFit) {
  EXPECT_EQ(keel::checkedFromDouble<std::int64_t>(-0x1p63),
            std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(keel::checkedFromDouble<std::uint64_t>(std::nextafter(0x1p64, 0.0)),
            0xFFFFFFFFFFFFF800u);
  EXPECT_EQ(keel::checkedFromDouble<std::uint32_t>(-0.5), 0u);
  EXPECT_EQ(keel::checkedFromDouble<std::uint8_t>(255.9), 255);
  EXPECT_EQ(keel::checkedFromDouble<std::int32_t>(-2147483648.0),
            std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(keel::checkedNarrow<std::int8_t>(-128), -128);
  EXPECT_EQ(keel::checkedAdd<std::int64_t>(std::numeric_limits<std::int64_t>::max() - 1, 1),
            std::numeric_limits<std::int64_t>::max());
}

TEST(KeelCheckedArithmeticDeathTest, StopsOnOverflowAndOutOfRangeConversions) {
  const char* outside = "outside the integer range";
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[] { keel::checkedAdd<std::int32_t>(std::numeric_limits<std::int32_t>::max(), 1); },
       "overflow"},
      {[] { keel::checkedSubtract<std::uint32_t>(0, 1); }, "overflow"},
      {[] { keel::checkedMultiply<std::int64_t>(std::int64_t{1} << 62, 2); }, "overflow"},
      {[] { keel::checkedNegate<std::int64_t>(std::numeric_limits<std::int64_t>::min()); },
       "overflow"},
      {[] { keel::checkedNarrow<std::uint8_t>(256); }, "does not fit"},
      {[] { keel::checkedNarrow<std::uint32_t>(-1); }, "does not fit"},
      {[] { keel::checkedFromDouble<std::uint64_t>(0x1p64); }, outside},
      {[] { keel::checkedFromDouble<std::int64_t>(0x1p63); }, outside},
      {[] { keel::checkedFromDouble<std::uint32_t>(-1.0); }, outside},
      {[] { keel::checkedFromDouble<std::int32_t>(NAN); }, outside},
  };
  for (const auto& [statement, message] : cases) EXPECT_DEATH(statement(), message) << message;
}

TEST(KeelScalarInterpolable, IntegerStepsSaturateAtTheEnds) {
  EXPECT_EQ(keelNextUp<std::uint8_t>(255), 255);
  EXPECT_EQ(keelNextDown<std::uint32_t>(0), 0u);
  EXPECT_EQ(keelNextUp<std::int8_t>(127), 127);
  EXPECT_EQ(keelNextDown<std::int64_t>(std::numeric_limits<std::int64_t>::min()),
            std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(keelNextDown<std::int64_t>(0), -1);
}

}  // namespace
