// quanda mask --at: each line's wall clock, UTC instant and offset agree with Hinnant's tz, --ics
// is a file libical reads, and refusals and misuse end with 1 and 2 on one line.
#include <date/tz.h>
#include <gtest/gtest.h>
#include <libical/ical.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaProgramRun.h"

namespace {

struct Line {
  std::chrono::local_seconds local;
  std::string weekday;
  std::chrono::sys_seconds utc;
  std::string offset;
};

std::vector<Line> linesOf(const std::string& out) {
  std::vector<Line> lines;
  std::istringstream stream(out);
  std::string local, weekday, utc, offset;
  while (stream >> local >> weekday >> utc >> offset) {
    const auto wall = QuandaAbstractNaturalDateTime::makeFromRfc3339String(local).value();
    utc.pop_back();  // the Z
    const auto instant = QuandaAbstractNaturalDateTime::makeFromRfc3339String(utc).value();
    lines.push_back({wall.localSeconds(), weekday,
                     std::chrono::sys_seconds(instant.localSeconds().time_since_epoch()), offset});
  }
  return lines;
}

TEST(QuandaMaskOccurrences, LinesAgreeWithHinnantsTz) {
  const date::time_zone& berlin = *date::locate_zone("Europe/Berlin");
  const QuandaProgramRun forward =
      runQuandaProgramCapturing({"mask", "last fri", "--at", "09:30", "--zone", "Europe/Berlin",
                                 "--after", "2024-01-01", "--count", "6"});
  ASSERT_EQ(forward.status, 0) << forward.err;
  const std::vector<Line> lines = linesOf(forward.out);
  ASSERT_EQ(lines.size(), 6U) << forward.out;
  for (const Line& line : lines) {
    const date::sys_info info = berlin.get_info(line.utc);
    EXPECT_EQ(line.local.time_since_epoch(), (line.utc + info.offset).time_since_epoch());
    EXPECT_EQ(line.offset, info.offset == std::chrono::hours(2) ? "+02:00" : "+01:00");
    const date::sys_days day{std::chrono::floor<date::days>(line.local.time_since_epoch())};
    EXPECT_EQ(date::weekday(day), date::Friday);
    EXPECT_NE(date::year_month_day(day + date::days(7)).month(), date::year_month_day(day).month());
    EXPECT_EQ(line.weekday, "Friday");
  }
  // The last Friday of March 2024 is in CET, that of April in CEST.
  EXPECT_EQ(lines[2].offset, "+01:00");
  EXPECT_EQ(lines[3].offset, "+02:00");
}

TEST(QuandaMaskOccurrences, IcsIsAFileLibicalReadsAndErrorsEndAsElsewhere) {
  const QuandaProgramRun ics =
      runQuandaProgramCapturing({"mask", "2nd sun", "--at", "02:30", "--zone", "America/New_York",
                                 "--after", "2024-01-01", "--count", "4", "--ics"});
  ASSERT_EQ(ics.status, 0) << ics.err;
  icalcomponent* calendar = icalparser_parse_string(ics.out.c_str());
  ASSERT_NE(calendar, nullptr);
  EXPECT_EQ(icalcomponent_count_errors(calendar), 0) << ics.out;
  icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT);
  ASSERT_NE(event, nullptr);
  EXPECT_STREQ(icaltime_as_ical_string(icalcomponent_get_dtstart(event)), "20240114T023000");
  EXPECT_STREQ(icalcomponent_get_summary(event), "2nd sun");
  EXPECT_NE(icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY), nullptr);
  EXPECT_NE(icalcomponent_get_first_component(calendar, ICAL_VTIMEZONE_COMPONENT), nullptr);
  icalcomponent_free(calendar);

  const struct {
    std::vector<std::string> args;
    int status;
    std::string expected;
  } cases[] = {
      {{"mask", "day 1", "--at", "09:30", "--zone", "Mars/Olympus"},
       quandaExitFailure,
       "Failed to create timezone"},
      {{"mask", "day 1", "--at", "25:00"}, quandaExitFailure, "Invalid hour"},
      {{"mask", "day 1", "--at", "09:30", "--after", "2024-02-30"}, quandaExitFailure, "--after"},
      {{"mask", "day 1", "--zone", "UTC"}, quandaExitUsage, "--zone"},
      {{"mask", "day 1", "--ics"}, quandaExitUsage, "--ics"},
      {{"mask", "day 1", "--at", "09:30", "--from", "2024-01-01", "--to", "2024-02-01"},
       quandaExitUsage,
       "--at"},
  };
  for (const auto& [args, status, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const QuandaProgramRun result = runQuandaProgramCapturing(args);
    EXPECT_EQ(result.status, status) << result.out << result.err;
    EXPECT_NE(result.err.find(expected), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
  }
}

}  // namespace
