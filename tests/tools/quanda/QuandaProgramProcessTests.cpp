// The program run as a process, the way a person meets it: under several locales and zones with
// the clock pinned (QUANDA_NOW), and in a terminal (tmux), where today is in reverse video.
// Localized names are checked against ICU's own standalone names and patterns.
#include <gtest/gtest.h>
#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

#ifdef QUANDA_PROGRAM_PATH

constexpr const char* pinnedNow = "2024-07-14T10:00:00Z";

struct ProcessRun {
  int status;
  std::string out;
};

std::string shellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

// Runs the program in a clean environment: only the given variables, standard error discarded.
ProcessRun runProgram(const std::vector<std::string>& environment,
                      const std::vector<std::string>& args) {
  std::string command = "env -i";
  for (const std::string& variable : environment) command += ' ' + shellQuoted(variable);
  command += ' ' + shellQuoted(QUANDA_PROGRAM_PATH);
  for (const std::string& arg : args) command += ' ' + shellQuoted(arg);
  command += " 2>/dev/null";
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return {-1, ""};
  std::string out;
  std::array<char, 4096> buffer{};
  for (std::size_t read; (read = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    out.append(buffer.data(), read);
  }
  const int status = ::pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) result.push_back(line);
  return result;
}

std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> result;
  std::istringstream stream(line);
  for (std::string word; stream >> word;) result.push_back(word);
  return result;
}

std::string utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

// ICU's standalone weekday names of one width, in the locale's week order.
std::vector<std::string> icuColumnNames(const char* locale,
                                        icu::DateFormatSymbols::DtWidthType width) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DateFormatSymbols symbols{icu::Locale(locale), status};
  const std::unique_ptr<icu::Calendar> calendar(
      icu::Calendar::createInstance(icu::Locale(locale), status));
  int32_t count = 0;
  const icu::UnicodeString* names =
      symbols.getWeekdays(count, icu::DateFormatSymbols::STANDALONE, width);
  std::vector<std::string> result;
  const int first = calendar->getFirstDayOfWeek(status);
  for (int index = 0; index < 7; ++index)
    result.push_back(utf8(names[(first - 1 + index) % 7 + 1]));
  EXPECT_TRUE(U_SUCCESS(status)) << locale;
  return result;
}

// ICU's own month and year for July 2024, from the locale's best pattern for "MMMMyyyy".
std::string icuMonthTitle(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::DateTimePatternGenerator> generator(
      icu::DateTimePatternGenerator::createInstance(icu::Locale(locale), status));
  const icu::UnicodeString pattern = generator->getBestPattern("MMMMyyyy", status);
  icu::SimpleDateFormat format(pattern, icu::Locale(locale), status);
  format.adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
  icu::UnicodeString title;
  format.format(1720915200000.0, title);  // 2024-07-14T00:00:00Z
  EXPECT_TRUE(U_SUCCESS(status)) << locale;
  return utf8(title);
}

// Whole outputs under the C locale, with the pinned instant already the 15th in Kiritimati
// (UTC+14) and still the 14th in Adak (UTC-9 in summer): the zone decides today.
TEST(QuandaProgramProcess, TodayFollowsTheZoneInWholeOutputs) {
  const struct {
    const char* zone;
    std::string cal, now, today;
  } cases[] = {
      {"Pacific/Kiritimati",
       "         July 2024\n"
       "  S   M   T   W   T   F   S\n"
       "      1   2   3   4   5   6\n"
       "  7   8   9  10  11  12  13\n"
       " 14 >15< 16  17  18  19  20\n"
       " 21  22  23  24  25  26  27\n"
       " 28  29  30  31\n",
       "now:                Monday, July 15, 2024 at 12:00:00\u202fAM\n"
       "RFC 3339:           2024-07-15T00:00:00\n"
       "zone:               Pacific/Kiritimati +14:00 +14\n"
       "seconds since 1970: 1720951200\n",
       "date:                  2024-07-15\n"},
      {"America/Adak",
       "         July 2024\n"
       "  S   M   T   W   T   F   S\n"
       "      1   2   3   4   5   6\n"
       "  7   8   9  10  11  12  13\n"
       ">14< 15  16  17  18  19  20\n"
       " 21  22  23  24  25  26  27\n"
       " 28  29  30  31\n",
       "now:                Sunday, July 14, 2024 at 1:00:00\u202fAM\n"
       "RFC 3339:           2024-07-14T01:00:00\n"
       "zone:               America/Adak -09:00 HDT\n"
       "seconds since 1970: 1720951200\n",
       "date:                  2024-07-14\n"},
  };
  for (const auto& [zone, cal, now, today] : cases) {
    SCOPED_TRACE(zone);
    const std::vector<std::string> environment{"LANG=C", std::string("TZ=") + zone,
                                               std::string("QUANDA_NOW=") + pinnedNow};
    EXPECT_EQ(runProgram(environment, {"cal"}).out, cal);
    EXPECT_EQ(runProgram(environment, {"now"}).out, now);
    const ProcessRun date = runProgram(environment, {"date", "today"});
    EXPECT_EQ(date.status, 0);
    EXPECT_EQ(date.out.substr(0, today.size()), today);
  }
}

// Localized text follows LANG (names as ICU gives them), while the machine forms stay the same
// under every locale and read back with the program's own parser.
TEST(QuandaProgramProcess, NamesFollowTheLocaleAndMachineFormsStayReadable) {
  const std::string inC =
      runProgram({"LANG=C", "TZ=America/Adak", std::string("QUANDA_NOW=") + pinnedNow}, {"now"})
          .out;
  for (const char* lang : {"C", "de_DE.UTF-8", "ja_JP.UTF-8", "ar_EG.UTF-8"}) {
    SCOPED_TRACE(lang);
    const std::string locale =
        lang == std::string("C") ? "en_US_POSIX" : std::string(lang).substr(0, 5);
    const std::vector<std::string> environment{std::string("LANG=") + lang, "TZ=America/Adak",
                                               std::string("QUANDA_NOW=") + pinnedNow};
    const std::vector<std::string> cal = lines(runProgram(environment, {"cal", "2024-07"}).out);
    ASSERT_GE(cal.size(), 6u);
    EXPECT_EQ(cal[0].substr(cal[0].find_first_not_of(' ')), icuMonthTitle(locale.c_str()));
    const std::vector<std::string> columns = words(cal[1]);
    EXPECT_TRUE(columns == icuColumnNames(locale.c_str(), icu::DateFormatSymbols::ABBREVIATED) ||
                columns == icuColumnNames(locale.c_str(), icu::DateFormatSymbols::SHORT) ||
                columns == icuColumnNames(locale.c_str(), icu::DateFormatSymbols::NARROW))
        << cal[1];

    const std::vector<std::string> now = lines(runProgram(environment, {"now"}).out);
    ASSERT_EQ(now.size(), 4u);
    EXPECT_EQ(now[1], lines(inC)[1]);
    const std::string rfc3339 = words(now[1]).back();
    const ProcessRun readBack = runProgram(environment, {"datetime", rfc3339});
    EXPECT_EQ(readBack.status, 0);
    EXPECT_NE(readBack.out.find(rfc3339), std::string::npos);
    const ProcessRun real = runProgram(environment, {"datetime", "2024-03-05T07:08:09.25"});
    EXPECT_NE(real.out.find("2024-03-05T07:08:09.250000\n"), std::string::npos) << real.out;
  }
}

// In a terminal, today is in reverse video (SGR 7) unless NO_COLOR is set.
TEST(QuandaProgramProcess, TodayIsInReverseVideoInATerminal) {
  if (std::system("command -v tmux >/dev/null 2>&1") != 0) GTEST_SKIP() << "tmux is missing";
  const std::string socket = "quanda-test-" + std::to_string(::getpid());
  const auto capture = [&](const std::string& colour) {
    const std::string tmux = "tmux -L " + socket + " -f /dev/null ";
    const std::string program = "env " + colour +
                                " LANG=C TZ=America/Adak QUANDA_NOW=" + std::string(pinnedNow) +
                                ' ' + QUANDA_PROGRAM_PATH + " cal; sleep 30";
    EXPECT_EQ(std::system((tmux + "new-session -d -x 100 -y 20 " + shellQuoted(program)).c_str()),
              0);
    std::string screen;
    // The pane fills as soon as the program has run; read it until the last week is there.
    for (int attempt = 0; attempt < 100 && screen.find("31") == std::string::npos; ++attempt) {
      ::usleep(50000);
      FILE* pipe = ::popen((tmux + "capture-pane -e -p").c_str(), "r");
      std::array<char, 4096> buffer{};
      screen.clear();
      for (std::size_t read; (read = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        screen.append(buffer.data(), read);
      }
      ::pclose(pipe);
    }
    std::system((tmux + "kill-server").c_str());
    return screen;
  };
  const std::string coloured = capture("-u NO_COLOR");
  EXPECT_NE(coloured.find("\x1b[7m14"), std::string::npos) << coloured;
  const std::string plain = capture("NO_COLOR=1");
  EXPECT_EQ(plain.find("\x1b[7m"), std::string::npos) << plain;
  EXPECT_NE(plain.find(">14<"), std::string::npos) << plain;
}

#endif

}  // namespace
