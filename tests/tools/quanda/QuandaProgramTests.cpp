#include <gtest/gtest.h>

#include <sstream>

#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaProgram.h"

namespace {

constexpr std::string_view testPath = "tests/tools/quanda/QuandaProgramTests";

// Echoes its arguments; refuses "bad" the way a command refuses what the library rejects.
int runEcho(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  for (const std::string& argument : args) {
    if (argument == "bad") {
      printQuandaError(KeelError("Refused", {{"argument", argument}}, testPath, "echo", 1), err);
      return quandaExitFailure;
    }
    out << '[' << argument << ']';
  }
  out << '\n';
  return 0;
}

// Registered out of order, to show that the listing sorts by name.
const bool echoRegistered = registerQuandaCommand({
    .name = "zz-echo",
    .usage = "zz-echo <words...>",
    .summary = "Echoes its arguments.",
    .run = runEcho,
    .demonstrations = {{"two words", "it's"}, {"zz-echo", "bad"}},
});
const bool quietRegistered = registerQuandaCommand({
    .name = "aa-quiet",
    .usage = "aa-quiet",
    .summary = "Says nothing.",
    .run =
        [](const std::vector<std::string>&, std::ostream& out, std::ostream&) {
          out << "quiet\n";
          return 0;
        },
    .demonstrations = {},
});

struct ProgramRun {
  int status;
  std::string out;
  std::string err;
};

ProgramRun runProgram(const std::vector<std::string>& args) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = runQuandaProgram(args, out, err);
  return {status, out.str(), err.str()};
}

TEST(QuandaProgramTests, DispatchesArgumentsAndListsCommandsSortedByName) {
  const ProgramRun dispatched = runProgram({"zz-echo", "a", "--b"});
  EXPECT_EQ(dispatched.status, 0);
  EXPECT_EQ(dispatched.out, "[a][--b]\n");
  EXPECT_EQ(dispatched.err, "");
  for (const char* help : {"help", "--help", "-h"}) {
    const ProgramRun result = runProgram({help});
    EXPECT_EQ(result.status, 0);
    const auto quiet = result.out.find("  aa-quiet\n      Says nothing.\n");
    const auto echo = result.out.find("  zz-echo <words...>\n      Echoes its arguments.\n");
    ASSERT_NE(quiet, std::string::npos) << result.out;
    EXPECT_LT(quiet, echo);
    EXPECT_NE(echo, std::string::npos) << result.out;
  }
  // Help for one command shows its examples as typed.
  const ProgramRun help = runProgram({"help", "zz-echo"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out,
            "usage: quanda zz-echo <words...>\nEchoes its arguments.\n\nExamples:\n"
            "  quanda zz-echo 'two words' 'it'\\''s'\n  quanda zz-echo bad\n");
}

TEST(QuandaProgramTests, UnknownCommandsAndHelpTopicsAreUsageErrors) {
  for (const std::vector<std::string>& args : {std::vector<std::string>{"no-such-command"},
                                               {"help", "no-such-command"},
                                               {"help", "zz-echo", "extra"}}) {
    const ProgramRun result = runProgram(args);
    EXPECT_EQ(result.status, quandaExitUsage);
    EXPECT_EQ(result.out, "");
    const std::string& named = args.size() == 1 ? args[0] : args[1];
    EXPECT_NE(result.err.find("'" + named), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("usage: quanda <command>"), std::string::npos);
  }
}

TEST(QuandaProgramTests, DemonstrationShowsEachCommandLineAndItsOutcome) {
  const ProgramRun result = runProgram({});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("\n$ quanda zz-echo 'two words' 'it'\\''s'\n[two words][it's]\n"),
            std::string::npos)
      << result.out;
  EXPECT_NE(result.out.find("\n$ quanda zz-echo bad\nerror: Refused\n"), std::string::npos);
  EXPECT_NE(result.out.find("[exit status 1]\n"), std::string::npos);
  EXPECT_EQ(result.out.find("aa-quiet"), std::string::npos);
}

// Every command of the program, whoever wrote it: its demonstrations must read as the command's
// usage says, and each outcome must be shown (a result, or the library's reasons for refusing).
TEST(QuandaProgramTests, EveryDemonstrationOfEveryCommandIsWellFormed) {
  for (const QuandaCommand& command : quandaCommands()) {
    for (const auto& demonstration : command.demonstrations) {
      std::vector<std::string> args{std::string(command.name)};
      const bool named = !demonstration.empty() && demonstration.front() == command.name;
      args.insert(args.end(), demonstration.begin() + (named ? 1 : 0), demonstration.end());
      const ProgramRun result = runProgram(args);
      SCOPED_TRACE(::testing::PrintToString(args));
      if (result.status == 0) {
        EXPECT_NE(result.out, "");
      } else {
        EXPECT_EQ(result.status, quandaExitFailure) << result.err;
        EXPECT_NE(result.err.find("error: "), std::string::npos) << result.err;
      }
    }
  }
}

TEST(QuandaProgramTests, ErrorChainReadsOutermostFirstWithAlignedArguments) {
  const KeelError first("Day out of range", {{"year", 2023}, {"month", 2}, {"day", 29}},
                        "Quanda/Abstract/QuandaAbstractDate", "make(year:month:day:)", 88,
                        "U_ILLEGAL_ARGUMENT_ERROR");
  const KeelError wrapped(first, {{"iso8601String", "2023-02-29"}},
                          "Quanda/Abstract/QuandaAbstractDate", "make(iso8601String:)", 120);
  std::ostringstream err;
  printQuandaError(wrapped, err);
  EXPECT_EQ(err.str(),
            "error: Day out of range\n"
            "  in make(iso8601String:) at Quanda/Abstract/QuandaAbstractDate:120\n"
            "      iso8601String: 2023-02-29\n"
            "    in make(year:month:day:) at Quanda/Abstract/QuandaAbstractDate:88\n"
            "        \"Day out of range\"\n"
            "        year:           2023\n"
            "        month:          2\n"
            "        day:            29\n"
            "        platform error: U_ILLEGAL_ARGUMENT_ERROR\n");
}

TEST(QuandaProgramDeathTest, TwoCommandsOfOneNameAreAProgrammingError) {
  EXPECT_DEATH(registerQuandaCommand({.name = "zz-echo",
                                      .usage = "zz-echo",
                                      .summary = "again",
                                      .run = runEcho,
                                      .demonstrations = {}}),
               "two quanda commands of one name");
}

}  // namespace
