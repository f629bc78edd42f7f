// The program's locale: the environment's without its codeset, or --locale, for localized text,
// while the machine forms the library writes in ICU's default locale keep their decimal point.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaProgramRun.h"

namespace {

// Sets (or, for nothing, unsets) an environment variable for one scope, then puts it back.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, std::optional<std::string> value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    set(value);
  }
  ~ScopedVariable() { set(old_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void set(const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name_, value->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }
  const char* name_;
  std::optional<std::string> old_;
};

TEST(QuandaDevice, TheEnvironmentsLocaleDropsItsCodesetAndFallsBackToPosix) {
  const struct {
    std::optional<std::string> all, lang;
    std::string expected;
  } cases[] = {
      {std::nullopt, "de_DE.UTF-8", "de_DE"},
      {"fr_FR.UTF-8@euro", "de_DE", "fr_FR"},
      {"", "ja_JP", "ja_JP"},
      {std::nullopt, "C.UTF-8", "en_US_POSIX"},
      {"POSIX", "de_DE", "en_US_POSIX"},
      {std::nullopt, std::nullopt, "en_US_POSIX"},
  };
  for (const auto& [all, lang, expected] : cases) {
    const ScopedVariable lcAll("LC_ALL", all);
    const ScopedVariable langVariable("LANG", lang);
    EXPECT_EQ(quandaEnvironmentLocale(), expected)
        << all.value_or("-") << " " << lang.value_or("-");
    EXPECT_EQ(quandaLocale("en_GB"), "en_GB");
  }
}

TEST(QuandaDevice, TextFollowsTheUsersLocaleWhileMachineFormsStayMachineReadable) {
  const ScopedVariable lcAll("LC_ALL", std::nullopt);
  const ScopedVariable lang("LANG", "de_DE.UTF-8");
  EXPECT_EQ(runQuandaProgramCapturing({"format", "2024-02-29", "--style", "long"}).out,
            "29. Februar 2024\n");
  EXPECT_EQ(
      runQuandaProgramCapturing({"format", "2024-02-29", "--style", "long", "--locale", "fr_FR"})
          .out,
      "29 février 2024\n");
  const QuandaProgramRun real = runQuandaProgramCapturing({"datetime", "2024-03-05T07:08:09.25"});
  EXPECT_NE(real.out.find("2024-03-05T07:08:09.250000\n"), std::string::npos) << real.out;
}

// QUANDA_NOW pins the present for every command that reads it, in either form, in the zone asked
// for; text of neither form is a misuse, and an instant no zone can read is refused.
TEST(QuandaDevice, APinnedClockIsThePresentOfEveryCommand) {
  const ScopedVariable lcAll("LC_ALL", std::nullopt);
  const ScopedVariable lang("LANG", "C");
  const ScopedVariable zone("TZ", "UTC");
  for (const char* pinned : {"2024-07-14T10:00:00Z", "1720951200"}) {
    SCOPED_TRACE(pinned);
    const ScopedVariable now("QUANDA_NOW", pinned);
    const struct {
      std::vector<std::string> args;
      std::string expected;
    } cases[] = {
        {{"date", "today", "--zone", "Pacific/Kiritimati"}, "date:                  2024-07-15\n"},
        {{"date", "tomorrow"}, "date:                  2024-07-15\n"},
        {{"date", "yesterday", "--zone", "America/Adak"}, "date:                  2024-07-13\n"},
        {{"time", "now", "--zone", "America/Adak"}, "ISO 8601:                01:00:00\n"},
        {{"datetime", "now"}, "RFC 3339:                 2024-07-14T10:00:00\n"},
        {{"mask", "days 14,15", "--count", "2"}, "2024-07-14  Sunday\n2024-07-15  Monday\n"},
        {{"now", "--zone", "Asia/Kolkata"}, "RFC 3339:           2024-07-14T15:30:00\n"},
        {{"cal"}, ">14<"},
    };
    for (const auto& [args, expected] : cases) {
      SCOPED_TRACE(::testing::PrintToString(args));
      const QuandaProgramRun run = runQuandaProgramCapturing(args);
      EXPECT_EQ(run.status, 0) << run.err;
      EXPECT_NE(run.out.find(expected), std::string::npos) << run.out;
    }
  }
  const ScopedVariable farAway("QUANDA_NOW", "1e300");
  EXPECT_EQ(runQuandaProgramCapturing({"now"}).status, 1);
  const ScopedVariable garbled("QUANDA_NOW", "2024-07-14T10:00:00");
  const QuandaProgramRun misuse = runQuandaProgramCapturing({"cal"});
  EXPECT_EQ(misuse.status, 2);
  EXPECT_NE(misuse.err.find("QUANDA_NOW"), std::string::npos);
}

}  // namespace
