// The commands: each form they read, the exit status of each kind of input (0 read, 1 a value of
// the right form the library refuses, 2 a misuse), and the inputs whose arithmetic the library
// would stop on, which the commands must refuse with an error instead.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaProgramRun.h"

namespace {

TEST(QuandaCommands, ReadEveryFormRefuseWhatTheLibraryWouldStopOnAndReportMisuse) {
  constexpr int ok = 0;
  constexpr int refused = quandaExitFailure;
  constexpr int misuse = quandaExitUsage;
  const struct {
    std::vector<std::string> args;
    int status;
    std::string expected = "";  // a line the output (or the error) must hold
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
      // Steps apply in command-line order, a repeated one each time.
      {{"datetime", "2024-01-31T00:00:00", "--add-months", "1", "--add-days", "1", "--add-months",
        "1"},
       ok,
       "\n--add-days 1:\n  RFC 3339:                 2024-03-01T00:00:00\n"},
      {{"span", "-1", "--add-days", "1"}, ok, "  description:        86399s\n"},
      {{"span", "90", "--round", "minute"}, ok, "  description:    120s\n"},
      {{"span", "--add-days", "010", "0"}, ok, "  seconds:        864000\n"},
      {{"cal", "2024-08"}, ok, "    August 2024\n"},
      {{"cal", "2024-02", "--first-day", "Sun", "--mask", "day 29", "--locale", "en_US"},
       ok,
       "  S   M   T   W   T   F   S\n"},
      {{"cal", "2024-02", "--locale", "de_DE"}, ok, "Mo Di Mi Do Fr Sa So\n"},
      {{"date", "50709"}, ok, "date:                  0005-07-09\n"},
      {{"date", "2024-02-29", "--first-day", "sundays"}, ok, "sunday week:"},
      {{"mask", "day 29", "--before", "2024-03-01", "--count", "1"}, ok, "2024-02-29  Thursday\n"},
      // Recurrence rules as RFC 5545 text, out and in (the start from --after, weeks from WKST).
      {{"mask", "last fri", "--rrule", "--after", "2024-01-01"},
       ok,
       "DTSTART;VALUE=DATE:20240126\r\nRRULE:FREQ=MONTHLY;WKST=MO;BYDAY=-1FR\r\n"},
      {{"mask", "rrule:FREQ=YEARLY;BYMONTH=3;BYDAY=2SU", "--after", "2024-01-01", "--count", "2"},
       ok,
       "2024-03-10  Sunday\n2025-03-09  Sunday\n"},
      {{"mask", "DTSTART;VALUE=DATE:20240103\nRRULE:FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=WE,SA",
        "--after", "2024-01-10", "--count", "2"},
       ok,
       "2024-01-17  Wednesday\n2024-01-20  Saturday\n"},
      {{"mask", "week 2", "--rrule", "--after", "2024-01-01"}, refused, "no part of a recurrence"},
      {{"mask", "FREQ=DAILY;BYHOUR=9", "--after", "2024-01-01"}, refused, "\"BYHOUR\""},
      {{"format", "2024-02-29", "--locale", "de_DE", "--style", "full"},
       ok,
       "Donnerstag, 29. Februar 2024\n"},
      {{"format", "2024-02-29", "--locale", "en_US"}, ok, "weekday veryShort:    T\n"},
      {{"format", "2024-02-01..2024-02-29", "--locale", "en_US", "--style", "medium"},
       ok,
       "Feb 1\u2009\u2013\u200929, 2024\n"},
      {{"format", "13:05:09", "--locale", "de_DE", "--template",
        "standaloneHourRespecting12or24Hour"},
       ok,
       "13 Uhr\n"},
      {{"format", "2024-02-29T13:05:00.5", "--locale", "en_GB", "--style", "none,medium"},
       ok,
       "13:05:00\n"},
      {{"format", "5400", "--duration", "shortAbsoluteSubDay", "--locale", "fr_FR"},
       ok,
       "1h 30min\n"},
      {{"format", "-90", "--locale", "en_US"}, ok, "positional:           -0:01:30\n"},
      {{"format", "61", "--duration", "shortDelta", "--locale", "en_AU"}, ok, "1min. 1s\n"},
      {{"convert", "2024-03-10T02:30:00", "--from", "America/New_York", "--to", "Europe/Berlin"},
       ok,
       "seconds since 1970: 1710055800\nto:                 2024-03-10T08:30:00 Europe/Berlin\n"},
      {{"convert", "2024-11-03T01:30:00", "--from", "America/New_York"}, ok, "05:30:00 UTC\n"},
      {{"convert", "1709211909.5", "--to", "Asia/Kolkata"}, ok, "2024-02-29T18:35:09 Asia"},
      {{"convert", "2024-02-29T13:05:09", "--from", "utc", "--to", "seconds"}, ok, "1709211909\n"},
      {{"zones", "berlin", "--at", "2024-07-01T12:00:00"},
       ok,
       "Europe/Berlin  +02:00  CEST  daylight saving\n"},
      {{"zones", "CHATHAM", "--at", "1705276800"}, ok, "Pacific/Chatham  +13:45"},
      {{"zones", "no such zone"}, ok, "No zone"},
      {{"format", "2023-02-29"}, refused, "(value: 2023-02-29, locale: "},
      {{"format", "2024-02-29..2024-02-30"}, refused},
      {{"convert", "2024-02-29T13:05:09", "--from", "europe/berlin"},
       refused,
       "Failed to create timezone"},
      {{"convert", "2024-02-29T13:05:09", "--from", "utc", "--to", "/etc/localtime"}, refused},
      {{"convert", "1e15", "--to", "utc"}, refused, "Foundation date outside the years 1...9999"},
      {{"convert", "-1e300", "--to", "Asia/Tokyo"}, refused},
      {{"convert", "0001-01-01T00:00:00", "--from", "utc", "--to", "America/New_York"}, refused},
      {{"convert", "2024-02-30T00:00:00", "--from", "utc"}, refused},
      {{"zones", "--at", "2024-02-30T00:00:00"}, refused},
      {{"cal", "2024-13"}, refused, "error: Invalid month (month: 2024-13)\n"},
      {{"date", "2023-02-29"}, refused, "(date: 2023-02-29)\n"},
      {{"mask", "day 0 and", "--after", "2024-01-01"},
       refused,
       "(rule: day 0 and): a rule expected\n"},
      {{"mask", "day 1", "--after", "2024-02-30"}, refused, "(--after: 2024-02-30)\n"},
      {{"datetime", "9999-12-31T23:00:00", "--add-hours", "1"}, refused},
      {{"datetime", "9999-12-31T23:59:30", "--round", "minute"}, refused, "--round"},
      {{"datetime", "9999-12-31T23:59:30", "--floor", "minute"}, ok, "9999-12-31T23:59:00\n"},
      {{"datetime", "2024-01-01T00:00:00", "--add-years", "40000"}, refused},
      {{"span", "1e308", "--add-days", "1e308"}, refused},
      {{"span", "1e308", "--add-seconds", "1e308"}, refused},
      {{"span", "1e300", "--natural"}, refused},
      {{"cal", "0"}, refused, "Invalid year"},
      {{"now", "--zone", "Mars/Olympus_Mons"}, refused, "Failed to create timezone"},
      {{"date", "today", "--zone", "europe/berlin"}, refused},
      {{"datetime", "0001-01-01T00:00:00", "--add-seconds", "-1"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--add-seconds", "9223372036854775807"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--add-minutes", "-9223372036854775808"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--add-months", "2147483647"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--add-years", "8000"}, refused},
      {{"datetime", "9999-12-31T08:00:00", "--next", "08:00:00"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--next", "25:00:00"}, refused},
      {{"datetime", "9999-12-31T23:59:59.5", "--add-seconds", "0.5"}, refused},
      {{"datetime", "2024-01-01T00:00:00", "--real", "--add-seconds", "1e300"}, refused},
      {{"time", "12:00:00", "--add-seconds", "9223372036854775807"}, refused},
      {{"time", "12:00:00.5", "--add-seconds", "1e300"}, refused},
      {{"span", "18446744073709551615", "--add-seconds", "1"}, refused},
      {{"span", "-9223372036854775808", "--add-seconds", "-1"}, refused},
      {{"span", "9223372036854775808", "--add-seconds", "-1"}, refused},
      {{"span", "5", "--add-seconds", "-6"}, refused},
      {{"span", "1e300", "--discrete"}, refused},
      {{"cal", "2024x"}, misuse},
      {{"cal", "2024-08-01"}, misuse},
      {{"cal", "2024-+8"}, misuse},
      {{"cal", "2024", "08"}, misuse},
      {{"now", "extra"}, misuse},
      {{"time", "12:00:00", "--zone", "UTC"}, misuse, "only taken with now"},
      {{"cal", "2024-02", "--first-day", "someday"}, misuse, "--first-day"},
      {{"date", "2024x"}, misuse},
      {{"date", "2024-02-29", "--frist-day", "sun"}, misuse, "did you mean --first-day?"},
      {{"mask", "day 1", "--after", "2024-01-01", "--before", "2024-02-01"}, misuse},
      {{"mask", "day 1", "--from", "2024-01-01"}, misuse},
      {{"mask", "day 1", "--count", "-1"}, misuse},
      {{"datetime"}, misuse},
      {{"datetime", "2024-01-01T00:00:00", "--round", "week"}, misuse},
      {{"datetime", "2024-01-01T00:00:00", "--add-seconds", "0.5"}, misuse, "--add-seconds"},
      {{"datetime", "2024-01-01T00:00:00", "--add-days", "0x10"}, misuse},
      {{"time", "12:00:00", "--add-hours", "2147483648"}, misuse},
      {{"span", "1", "2"}, misuse},
      {{"span", "x"}, misuse},
      {{"span", "1", "--natural", "--real"}, misuse},
      {{"format", "2024-02-29", "--style", "fulll"}, misuse, "short, medium, long, full"},
      {{"format", "2024-02-29", "--duration", "positional"}, misuse},
      {{"format", "5400", "--style", "full"}, misuse, "--duration"},
      {{"format", "2024-02-01..2024-02-29", "--template", "fullMonthAndYear"}, misuse},
      {{"format", "2024-02-29T13:05:00", "--style", "none"}, misuse},
      {{"format", "2024-02-01..", "--style", "full"}, misuse},
      {{"format", "someday"}, misuse},
      {{"convert", "1709211909", "--from", "utc"}, misuse, "no zone"},
      {{"convert", "yesterday"}, misuse},
      {{"zones", "a", "b"}, misuse},
  };
  for (const auto& [args, status, expected] : cases) {
    SCOPED_TRACE(::testing::PrintToString(args));
    const QuandaProgramRun result = runQuandaProgramCapturing(args);
    EXPECT_EQ(result.status, status) << result.out << result.err;
    const std::string& shown = status == ok ? result.out : result.err;
    EXPECT_NE(shown.find(expected), std::string::npos) << shown;
    if (status != ok) {
      EXPECT_TRUE(shown.starts_with("error: ")) << shown;
    }
    if (status == misuse) {
      EXPECT_EQ(result.out, "");
    }
  }
}

}  // namespace
