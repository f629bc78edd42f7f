// The time, datetime and span commands: each form they read, and the inputs whose arithmetic the
// library would stop on, which the commands must refuse with an error instead.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaProgram.h"

namespace {

struct CommandRun {
  int status;
  std::string out;
  std::string err;
};

CommandRun run(const std::vector<std::string>& args) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = runQuandaProgram(args, out, err);
  return {status, out.str(), err.str()};
}

TEST(QuandaTimeCommands, ReadEveryFormTheFactoriesRead) {
  const struct {
    std::vector<std::string> args;
    std::string expected;  // a line the output must hold
  } cases[] = {
      {{"time", "7:5:9"}, "ISO 8601:                07:05:09\n"},
      {{"time", "070509"}, "ISO 8601:                07:05:09\n"},
      {{"time", "70509"}, "ISO 8601:                07:05:09\n"},
      {{"time", "22:00:00", "--add-hours", "3"}, "relative: 01:00:00, +1 day\n"},
      {{"datetime", "20240229235959"}, "RFC 3339:                 2024-02-29T23:59:59\n"},
      {{"datetime", "2024-02-29T23:59:59", "--add-seconds", "1"},
       "  description:              2024:03:01T00:00:00\n"},
      {{"datetime", "2024-01-01T08:00:00", "--next", "08:00:00"}, "2024-01-02T08:00:00"},
      {{"span", "-1", "--add-days", "1"}, "  description:        86399s\n"},
      {{"span", "90", "--round", "minute"}, "  description:    120s\n"},
  };
  for (const auto& [args, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const CommandRun result = run(args);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find(expected), std::string::npos) << result.out;
  }
}

// Each of these would stop the process if it reached the library unchecked.
TEST(QuandaTimeCommands, RefuseWhatTheLibraryWouldStopOn) {
  const std::vector<std::vector<std::string>> refusals = {
      {"datetime", "9999-12-31T23:00:00", "--add-hours", "1"},
      {"datetime", "0001-01-01T00:00:00", "--add-seconds", "-1"},
      {"datetime", "2024-01-01T00:00:00", "--add-seconds", "9223372036854775807"},
      {"datetime", "2024-01-01T00:00:00", "--add-minutes", "-9223372036854775808"},
      {"datetime", "2024-01-01T00:00:00", "--add-months", "2147483647"},
      {"datetime", "2024-01-01T00:00:00", "--add-years", "8000"},
      {"datetime", "9999-12-31T08:00:00", "--next", "08:00:00"},
      {"datetime", "9999-12-31T23:59:59.5", "--add-seconds", "0.5"},
      {"datetime", "2024-01-01T00:00:00", "--real", "--add-seconds", "1e300"},
      {"time", "12:00:00", "--add-seconds", "9223372036854775807"},
      {"time", "12:00:00.5", "--add-seconds", "1e300"},
      {"span", "18446744073709551615", "--add-seconds", "1"},
      {"span", "-9223372036854775808", "--add-seconds", "-1"},
      {"span", "9223372036854775808", "--add-seconds", "-1"},
      {"span", "5", "--add-seconds", "-6"},
  };
  for (const auto& args : refusals) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const CommandRun result = run(args);
    EXPECT_EQ(result.status, quandaExitFailure) << result.out;
    EXPECT_NE(result.err.find("error: "), std::string::npos);
  }
}

TEST(QuandaTimeCommands, ArgumentsTheyCannotReadAreUsageErrors) {
  const std::vector<std::vector<std::string>> misuses = {
      {"datetime"},
      {"datetime", "2024-01-01T00:00:00", "--round", "week"},
      {"datetime", "2024-01-01T00:00:00", "--add-seconds", "0.5"},
      {"time", "12:00:00", "--add-hours", "2147483648"},
      {"span", "1", "2"},
      {"span", "x"},
  };
  for (const auto& args : misuses) {
    SCOPED_TRACE(::testing::PrintToString(args));
    EXPECT_EQ(run(args).status, quandaExitUsage);
  }
}

}  // namespace
