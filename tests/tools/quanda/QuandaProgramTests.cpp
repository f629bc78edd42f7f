// The program's own behaviour, whatever its commands: dispatch, help at every level, the exit
// statuses and one-line errors, and every command's demonstrations and help held to their promises.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaProgramRun.h"

namespace {

constexpr std::string_view testPath = "tests/tools/quanda/QuandaProgramTests";

// Echoes its words; refuses "bad" the way a command passes on what the library rejects.
QuandaRun declareEcho(CLI::App& command) {
  auto words = std::make_shared<std::vector<std::string>>();
  command.add_option("words", *words, "Words to echo")->required();
  return [words](std::ostream& out) -> QuandaOutcome {
    for (const std::string& word : *words) {
      if (word == "bad") {
        const KeelError inner = KeelError::fault("Refused", {{"inner", word}}, testPath, "inner");
        return KeelError::wrap(inner, {{"word", word}}, testPath, "echo");
      }
      out << '[' << word << ']';
    }
    out << '\n';
    return quandaDone;
  };
}

// Registered out of order, to show that the listing sorts by name.
const bool echoRegistered = registerQuandaCommand({
    .name = "zz-echo",
    .summary = "Echoes its arguments.",
    .detail = "",
    .declare = declareEcho,
    .demonstrations = {{.args = {"two words", "it's"}}, {.args = {"bad"}, .refused = true}},
});
const bool quietRegistered = registerQuandaCommand({
    .name = "aa-quiet",
    .summary = "Says nothing.",
    .detail = "",
    .declare = [](CLI::App&) -> QuandaRun {
      return [](std::ostream& out) -> QuandaOutcome {
        out << "quiet\n";
        return quandaDone;
      };
    },
    .demonstrations = {},
});

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(QuandaProgramTests, DispatchesArgumentsAndListsCommandsSortedByName) {
  const QuandaProgramRun dispatched = runQuandaProgramCapturing({"zz-echo", "a", "-3"});
  EXPECT_EQ(dispatched.status, 0);
  EXPECT_EQ(dispatched.out, "[a][-3]\n");
  EXPECT_EQ(dispatched.err, "");
  const QuandaProgramRun listing = runQuandaProgramCapturing({"help"});
  EXPECT_EQ(listing.status, 0);
  const auto quiet = listing.out.find("\n  aa-quiet ");
  const auto echo = listing.out.find("\n  zz-echo ");
  ASSERT_NE(quiet, std::string::npos) << listing.out;
  ASSERT_NE(echo, std::string::npos) << listing.out;
  EXPECT_LT(quiet, echo);
  for (const char* help : {"--help", "-h"})
    EXPECT_EQ(runQuandaProgramCapturing({help}).out, listing.out);
}

// Every command, whoever wrote it: -h, --help and `help <command>` show the same help, which
// opens with the summary the listing shows, keeps within 100 columns, and shows each
// demonstration, a refused one marked as such.
TEST(QuandaProgramTests, EveryCommandHasOneHelpWithinOneHundredColumns) {
  const std::string listing = runQuandaProgramCapturing({"help"}).out;
  std::istringstream listingLines(listing);
  for (std::string line; std::getline(listingLines, line);) EXPECT_LE(line.size(), 100u) << line;
  std::vector<std::string> names{"help"};
  for (const QuandaCommand& command : quandaCommands()) names.emplace_back(command.name);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    const QuandaProgramRun help = runQuandaProgramCapturing({"help", name});
    EXPECT_EQ(help.status, 0) << help.err;
    EXPECT_NE(help.out.find("Usage: quanda " + name), std::string::npos) << help.out;
    for (const auto& args : std::vector<std::vector<std::string>>{{name, "-h"}, {name, "--help"}}) {
      const QuandaProgramRun again = runQuandaProgramCapturing(args);
      EXPECT_EQ(again.status, 0);
      EXPECT_EQ(again.out, help.out);
    }
    std::istringstream lines(help.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
    const QuandaCommand* command = findQuandaCommand(name);
    if (command == nullptr) continue;
    EXPECT_EQ(help.out.substr(0, command->summary.size()), command->summary);
    EXPECT_NE(listing.find(std::string(command->summary)), std::string::npos);
    std::size_t examples = 0;
    std::size_t marked = 0;
    std::istringstream helpLines(help.out);
    for (std::string line; std::getline(helpLines, line);) {
      if (line != "  quanda " + name && !line.starts_with("  quanda " + name + ' ')) continue;
      ++examples;
      marked += line.ends_with("   (refused on purpose)") ? 1 : 0;
    }
    EXPECT_EQ(examples, command->demonstrations.size());
    EXPECT_EQ(marked, std::count_if(command->demonstrations.begin(), command->demonstrations.end(),
                                    [](const QuandaDemonstration& each) { return each.refused; }));
  }
}

TEST(QuandaProgramTests, MisuseIsOneLineWithExitStatusTwoAndNamesTheNearestCommandOrOption) {
  const struct {
    std::vector<std::string> args;
    std::string expected;
  } cases[] = {
      {{"zz-ecoh", "x"},
       "error: unknown command 'zz-ecoh' (did you mean zz-echo?); see quanda help"},
      {{"help", "aa-quite"}, "error: unknown command 'aa-quite' (did you mean aa-quiet?)"},
      {{"qqqqqqq"}, "error: unknown command 'qqqqqqq'; see quanda help"},
      {{"zz-echo", "a", "--verbsoe"}, "unknown option --verbsoe (did you mean --verbose?)"},
      {{"zz-echo"}, "words is required; see quanda zz-echo --help"},
      {{"aa-quiet", "extra"}, "extra"},
      {{"help", "zz-echo", "extra"}, "extra"},
      {{"-v"}, "A command is required"},
  };
  for (const auto& [args, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const QuandaProgramRun result = runQuandaProgramCapturing(args);
    EXPECT_EQ(result.status, quandaExitUsage);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(expected), std::string::npos) << result.err;
    EXPECT_EQ(lineCount(result.err), 1u) << result.err;
  }
}

TEST(QuandaProgramTests, RefusalIsOneLineAndVerboseShowsTheWholeChain) {
  const QuandaProgramRun brief = runQuandaProgramCapturing({"zz-echo", "bad"});
  EXPECT_EQ(brief.status, quandaExitFailure);
  EXPECT_EQ(brief.out, "");
  EXPECT_EQ(brief.err, "error: Refused (word: bad)\n");
  for (const auto& args : std::vector<std::vector<std::string>>{{"-v", "zz-echo", "bad"},
                                                                {"zz-echo", "bad", "--verbose"}}) {
    const QuandaProgramRun verbose = runQuandaProgramCapturing(args);
    EXPECT_EQ(verbose.status, quandaExitFailure);
    EXPECT_EQ(verbose.err.substr(0, verbose.err.find("QuandaProgramTests:")),
              "error: Refused\n  in echo at tests/tools/quanda/");
    EXPECT_NE(verbose.err.find("      word: bad\n    in inner at tests/"), std::string::npos)
        << verbose.err;
    EXPECT_NE(verbose.err.find("        \"Refused\"\n        inner: bad\n"), std::string::npos);
  }
}

TEST(QuandaProgramTests, VersionShowsTheProgramAndItsVersion) {
  const QuandaProgramRun version = runQuandaProgramCapturing({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(version.out.starts_with("quanda ")) << version.out;
  EXPECT_EQ(lineCount(version.out), 1u);
}

TEST(QuandaProgramTests, DemonstrationShowsEachCommandLineAndItsOutcome) {
  const QuandaProgramRun result = runQuandaProgramCapturing({});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("\n$ quanda zz-echo 'two words' 'it'\\''s'\n[two words][it's]\n"),
            std::string::npos)
      << result.out;
  EXPECT_NE(
      result.out.find("\n$ quanda zz-echo bad\nerror: Refused (word: bad)\n[exit status 1]\n"),
      std::string::npos);
  EXPECT_EQ(result.out.find("aa-quiet"), std::string::npos);
}

// Every command of the program, whoever wrote it: each demonstration ends as it says it does,
// with output, or with the library's refusal on one line.
TEST(QuandaProgramTests, EveryDemonstrationOfEveryCommandEndsAsItSays) {
  for (const QuandaCommand& command : quandaCommands()) {
    for (const QuandaDemonstration& demonstration : command.demonstrations) {
      std::vector<std::string> args{std::string(command.name)};
      args.insert(args.end(), demonstration.args.begin(), demonstration.args.end());
      SCOPED_TRACE(::testing::PrintToString(args));
      const QuandaProgramRun result = runQuandaProgramCapturing(args);
      EXPECT_EQ(result.status, demonstration.refused ? quandaExitFailure : 0) << result.err;
      if (demonstration.refused) {
        EXPECT_TRUE(result.err.starts_with("error: ")) << result.err;
        EXPECT_EQ(lineCount(result.err), 1u) << result.err;
      } else {
        EXPECT_NE(result.out, "");
      }
    }
  }
}

TEST(QuandaProgramDeathTest, TwoCommandsOfOneNameAreAProgrammingError) {
  EXPECT_DEATH(registerQuandaCommand({.name = "zz-echo",
                                      .summary = "again",
                                      .detail = "",
                                      .declare = declareEcho,
                                      .demonstrations = {}}),
               "two quanda commands of one name");
}

}  // namespace
