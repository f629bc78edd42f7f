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

// Each form read (status 0, and a line the output must hold), each input whose arithmetic would
// stop the process if it reached the library unchecked (an error), and each argument the command
// cannot read (a usage error).
TEST(QuandaTimeCommands, ReadEveryFormRefuseWhatTheLibraryWouldStopOnAndReportMisuse) {
  constexpr int ok = 0;
  constexpr int failure = quandaExitFailure;
  constexpr int usage = quandaExitUsage;
  const struct {
    std::vector<std::string> args;
    int status;
    std::string expected = "";  // ok: a line the output must hold
  } cases[] = {
      {{"time", "7:5:9"}, ok, "ISO 8601:                07:05:09\n"},
      {{"time", "070509"}, ok, "ISO 8601:                07:05:09\n"},
      {{"time", "70509"}, ok, "ISO 8601:                07:05:09\n"},
      {{"time", "22:00:00", "--add-hours", "3"}, ok, "relative: 01:00:00, +1 day\n"},
      {{"datetime", "20240229235959"}, ok, "RFC 3339:                 2024-02-29T23:59:59\n"},
      {{"datetime", "2024-02-29T23:59:59", "--add-seconds", "1"},
       ok,
       "  description:              2024:03:01T00:00:00\n"},
      {{"datetime", "2024-01-01T08:00:00", "--next", "08:00:00"}, ok, "2024-01-02T08:00:00"},
      {{"span", "-1", "--add-days", "1"}, ok, "  description:        86399s\n"},
      {{"span", "90", "--round", "minute"}, ok, "  description:    120s\n"},
      {{"datetime", "9999-12-31T23:00:00", "--add-hours", "1"}, failure},
      {{"datetime", "0001-01-01T00:00:00", "--add-seconds", "-1"}, failure},
      {{"datetime", "2024-01-01T00:00:00", "--add-seconds", "9223372036854775807"}, failure},
      {{"datetime", "2024-01-01T00:00:00", "--add-minutes", "-9223372036854775808"}, failure},
      {{"datetime", "2024-01-01T00:00:00", "--add-months", "2147483647"}, failure},
      {{"datetime", "2024-01-01T00:00:00", "--add-years", "8000"}, failure},
      {{"datetime", "9999-12-31T08:00:00", "--next", "08:00:00"}, failure},
      {{"datetime", "9999-12-31T23:59:59.5", "--add-seconds", "0.5"}, failure},
      {{"datetime", "2024-01-01T00:00:00", "--real", "--add-seconds", "1e300"}, failure},
      {{"time", "12:00:00", "--add-seconds", "9223372036854775807"}, failure},
      {{"time", "12:00:00.5", "--add-seconds", "1e300"}, failure},
      {{"span", "18446744073709551615", "--add-seconds", "1"}, failure},
      {{"span", "-9223372036854775808", "--add-seconds", "-1"}, failure},
      {{"span", "9223372036854775808", "--add-seconds", "-1"}, failure},
      {{"span", "5", "--add-seconds", "-6"}, failure},
      {{"datetime"}, usage},
      {{"datetime", "2024-01-01T00:00:00", "--round", "week"}, usage},
      {{"datetime", "2024-01-01T00:00:00", "--add-seconds", "0.5"}, usage},
      {{"time", "12:00:00", "--add-hours", "2147483648"}, usage},
      {{"span", "1", "2"}, usage},
      {{"span", "x"}, usage},
  };
  for (const auto& [args, status, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const CommandRun result = run(args);
    EXPECT_EQ(result.status, status) << result.out << result.err;
    const std::string& shown = status == ok ? result.out : result.err;
    if (status != usage) {
      EXPECT_NE(shown.find(status == ok ? expected : "error: "), std::string::npos) << shown;
    }
  }
}

}  // namespace
