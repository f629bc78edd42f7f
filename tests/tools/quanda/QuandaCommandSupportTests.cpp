#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>

#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

// Numbers are decimal whatever their leading zeros, bounded by their type, and whole.
TEST(QuandaCommandSupportTests, NumbersAreDecimalWholeAndWithinTheirType) {
  EXPECT_EQ(readQuandaNumber<std::uint8_t>("08"), 8);
  EXPECT_EQ(readQuandaNumber<std::int32_t>("010"), 10);
  EXPECT_EQ(readQuandaNumber<std::int8_t>("-128"), -128);
  EXPECT_EQ(readQuandaNumber<std::int64_t>("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(readQuandaNumber<std::uint64_t>("18446744073709551615"), UINT64_MAX);
  EXPECT_EQ(readQuandaNumber<double>("-0.5"), -0.5);
  EXPECT_EQ(readQuandaNumber<double>("1e3"), 1000.0);
  EXPECT_EQ(readQuandaNumber<std::int32_t>("+3"), 3);
  for (const std::string_view text : {"", "-", "1a", " 1", "1 ", "0x10", "--3", "1.5", "128"}) {
    EXPECT_FALSE(readQuandaNumber<std::int8_t>(text)) << text;
  }
  EXPECT_FALSE(readQuandaNumber<std::uint8_t>("-1"));
  EXPECT_EQ(readQuandaNumber<std::uint8_t>("+1"), 1);
  EXPECT_FALSE(readQuandaNumber<std::int32_t>("+-1"));
  EXPECT_FALSE(readQuandaNumber<std::int64_t>("9223372036854775808"));
  EXPECT_FALSE(readQuandaNumber<std::uint64_t>("18446744073709551616"));
  for (const std::string_view text : {"inf", "nan", "1e400", "0x1p3", "1.5.", ""}) {
    EXPECT_FALSE(readQuandaNumber<double>(text)) << text;
  }
  EXPECT_EQ(quandaNumberExpectation<std::int8_t>(), "a whole number from -128 to 127");
  EXPECT_THROW(quandaNumber<std::int32_t>("0.5", "--add-days"), CLI::ValidationError);
}

TEST(QuandaCommandSupportTests, TableAlignsValuesAfterTheLongestLabel) {
  std::ostringstream out;
  printQuandaTable({{"year", 2024}, {"day of week", "thursday"}, {"notes", "one\ntwo"}}, out, "  ");
  EXPECT_EQ(out.str(),
            "  year:        2024\n"
            "  day of week: thursday\n"
            "  notes:       one\n"
            "               two\n");
}

TEST(QuandaCommandSupportTests, ErrorIsOneLineOrTheChainOutermostFirstWithAlignedArguments) {
  const KeelError first =
      KeelError::fault("Day out of range", {{"year", 2023}, {"month", 2}, {"day", 29}},
                       "Quanda/Abstract/QuandaAbstractDate", "make(year:month:day:)",
                       "U_ILLEGAL_ARGUMENT_ERROR", 88);
  const KeelError wrapped =
      KeelError::wrap(first, {{"iso8601String", "2023-02-29"}},
                      "Quanda/Abstract/QuandaAbstractDate", "make(iso8601String:)", 120);
  const KeelError bare = KeelError::wrap(first, {}, "tools/quanda/DateCommand", "date");
  const auto printed = [](const KeelError& error, bool verbose) {
    std::ostringstream err;
    printQuandaError(error, err, verbose);
    return err.str();
  };
  EXPECT_EQ(printed(wrapped, false), "error: Day out of range (iso8601String: 2023-02-29)\n");
  EXPECT_EQ(printed(bare, false), "error: Day out of range (year: 2023, month: 2, day: 29)\n");
  EXPECT_EQ(printed(wrapped, true),
            "error: Day out of range\n"
            "  in make(iso8601String:) at Quanda/Abstract/QuandaAbstractDate:120\n"
            "      iso8601String: 2023-02-29\n"
            "    in make(year:month:day:) at Quanda/Abstract/QuandaAbstractDate:88\n"
            "        \"Day out of range\"\n"
            "        year:           2023\n"
            "        month:          2\n"
            "        day:            29\n"
            "        platform error: U_ILLEGAL_ARGUMENT_ERROR\n");
  // A text that could not be read: the one line names the part and the reason.
  const KeelError unreadable = KeelError::wrap(
      KeelError::fault("Unreadable date mask",
                       {{"syntax", "256th mon"}, {"part", "256th"}, {"reason", "no such ordinal"}},
                       "Quanda/Date Masks/QuandaDateMaskSyntax", "makeDateMask(syntax:)"),
      {{"rule", "256th mon"}}, "tools/quanda/MaskCommand", "mask");
  EXPECT_EQ(printed(unreadable, false),
            "error: Unreadable date mask (rule: 256th mon): \"256th\": no such ordinal\n");
}

}  // namespace
