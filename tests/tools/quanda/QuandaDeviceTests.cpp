// The program's locale: the environment's without its codeset, or --locale, for localized text,
// while the machine forms the library writes in ICU's default locale keep their decimal point.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

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

}  // namespace
