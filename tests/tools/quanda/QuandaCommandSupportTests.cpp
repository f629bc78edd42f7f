#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>

#include "tools/quanda/QuandaCommandSupport.h"

namespace {

constexpr QuandaOptionSpec acceptedOptions[] = {{"add-days"}, {"round"}, {"utc", false}};

KeelResult<QuandaArguments> parse(const std::vector<std::string>& args) {
  return parseQuandaArguments(args, acceptedOptions);
}

TEST(QuandaCommandSupportTests, ArgumentsKeepOptionsInCommandLineOrder) {
  const auto parsed = parse({"2024-01-31", "--add-days", "-3", "--utc", "--round=minute", "-5",
                             "--add-days", "2", "--", "--round"});
  ASSERT_TRUE(parsed) << parsed.error();
  EXPECT_EQ(parsed.value().positionals, (std::vector<std::string>{"2024-01-31", "-5", "--round"}));
  EXPECT_EQ(parsed.value().options,
            (std::vector<QuandaOption>{
                {"add-days", "-3"}, {"utc", ""}, {"round", "minute"}, {"add-days", "2"}}));
  EXPECT_EQ(*parsed.value().lastValue("add-days"), "2");
  EXPECT_TRUE(parsed.value().has("utc"));
  EXPECT_EQ(parsed.value().lastValue("missing"), nullptr);
}

TEST(QuandaCommandSupportTests, ArgumentsRefuseWhatTheCommandDoesNotAccept) {
  const struct {
    std::vector<std::string> args;
    std::string message;
    std::string option;
  } cases[] = {
      {{"--add-day", "3"}, "Unknown option", "--add-day"},
      {{"x", "--round"}, "Missing value for option", "--round"},
      {{"--utc=yes"}, "Option takes no value", "--utc=yes"},
  };
  for (const auto& each : cases) {
    const auto parsed = parse(each.args);
    ASSERT_FALSE(parsed) << each.option;
    EXPECT_EQ(parsed.error().message(), each.message);
    EXPECT_EQ(parsed.error().argument("option"), each.option);
  }
}

TEST(QuandaCommandSupportTests, IntegersReadAcrossTheWholeRangeOfTheirType) {
  EXPECT_EQ(parseQuandaInteger<std::int8_t>("-128", "n").value(), -128);
  EXPECT_EQ(parseQuandaInteger<std::int8_t>("+127", "n").value(), 127);
  EXPECT_EQ(parseQuandaInteger<std::uint8_t>("255", "n").value(), 255);
  EXPECT_EQ(parseQuandaInteger<std::uint8_t>("-0", "n").value(), 0);
  EXPECT_EQ(parseQuandaInteger<std::int64_t>("-9223372036854775808", "n").value(), INT64_MIN);
  EXPECT_EQ(parseQuandaInteger<std::uint64_t>("18446744073709551615", "n").value(), UINT64_MAX);
  EXPECT_EQ(parseQuandaInteger<std::int32_t>("007", "n").value(), 7);
}

TEST(QuandaCommandSupportTests, IntegersOutsideTheirTypeOrMalformedAreRefusedByName) {
  const auto outOfRange = [](auto parsed, std::string_view minimum, std::string_view maximum) {
    ASSERT_FALSE(parsed);
    EXPECT_EQ(parsed.error().message(), "Integer out of range");
    EXPECT_EQ(parsed.error().argument("argument"), "--add-days");
    EXPECT_EQ(parsed.error().argument("minimum"), minimum);
    EXPECT_EQ(parsed.error().argument("maximum"), maximum);
  };
  outOfRange(parseQuandaInteger<std::int8_t>("-129", "--add-days"), "-128", "127");
  outOfRange(parseQuandaInteger<std::uint8_t>("-1", "--add-days"), "0", "255");
  outOfRange(parseQuandaInteger<std::int64_t>("9223372036854775808", "--add-days"),
             "-9223372036854775808", "9223372036854775807");
  outOfRange(parseQuandaInteger<std::uint64_t>("18446744073709551616", "--add-days"), "0",
             "18446744073709551615");

  for (const std::string_view text : {"", "-", "+", "1a", " 1", "1.5", "0x10", "--3"}) {
    const auto parsed = parseQuandaInteger<std::int32_t>(text, "year");
    ASSERT_FALSE(parsed) << text;
    EXPECT_EQ(parsed.error().message(), "Not an integer");
    EXPECT_EQ(parsed.error().argument("text"), text);
  }
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

}  // namespace
