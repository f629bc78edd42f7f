// The VCALENDAR writer, read back by libical's parser: the file has no errors, every line keeps
// to 75 octets and CRLF, and the zone, the start, the rule, the added and excluded dates and the
// (folded, escaped) title read back as written. libical's own time zone arithmetic over the
// written VTIMEZONE then places every wall time of the span at the occurrences' instants.
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#include <gtest/gtest.h>
#include <libical/ical.h>

#include <memory>
#include <string>
#include <vector>

#include "Quanda/DateMasks/QuandaCalendarExport.h"
#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {

struct ComponentDeleter {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, ComponentDeleter>;

std::string tzidParameter(icalproperty* property) {
  icalparameter* parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
  return parameter == nullptr ? "" : icalparameter_get_tzid(parameter);
}

TEST(QuandaCalendarExport, LibicalReadsTheFileBackAndPlacesEveryWallTimeAtTheOccurrences) {
  const auto date = [](int year, int month, int day) {
    return QuandaAbstractDate::make(static_cast<std::uint16_t>(year),
                                    static_cast<std::uint8_t>(month),
                                    static_cast<std::uint8_t>(day))
        .value();
  };
  const QuandaRecurrenceRule recurrence{
      .start = date(2024, 1, 1),
      .rule = "FREQ=DAILY",
      .additions = {date(2025, 1, 5)},
      .exclusions = {date(2024, 12, 25), date(2024, 12, 26)},
  };
  // Escaped characters, and euro signs (three octets each) where the lines fold.
  std::string summary = "Stand-up; Zeitzonen, Sommerzeit \\ und Größe:\n";
  for (int index = 0; index < 60; ++index) summary += "\u20AC";
  TestAdapter test;
  for (const char* zone :
       {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Asia/Kolkata", "UTC"}) {
    SCOPED_TRACE(zone);
    const QuandaOccurrences daily(makeDateMaskFromSyntax("every day").value(),
                                  QuandaAbstractNaturalTimeOfDay::make(2, 30, 0).value(), zone);
    const auto text = makeVCalendar(daily, recurrence, date(2024, 12, 31),
                                    {.uid = "occurrences-1@quanda.test",
                                     .stamp = QuandaLogicTimeInterval(1700000000.0),
                                     .summary = summary},
                                    test.adapter);
    ASSERT_TRUE(text) << text.error();
    const std::string& file = text.value();

    // Physical lines: CRLF only, 75 octets at most, no continuation inside a UTF-8 sequence.
    for (std::size_t start = 0, end = 0; start < file.size(); start = end + 2) {
      end = file.find("\r\n", start);
      ASSERT_NE(end, std::string::npos);
      const std::string line = file.substr(start, end - start);
      EXPECT_LE(line.size(), 75U) << line;
      EXPECT_EQ(line.find('\n'), std::string::npos);
      if (line[0] == ' ') {
        EXPECT_NE(static_cast<unsigned char>(line[1]) & 0xC0U, 0x80U) << line;
      }
    }

    const Component calendar(icalparser_parse_string(file.c_str()));
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(icalcomponent_count_errors(calendar.get()), 0) << file;
    EXPECT_EQ(icalcomponent_isa(calendar.get()), ICAL_VCALENDAR_COMPONENT);
    icalcomponent* timezone =
        icalcomponent_get_first_component(calendar.get(), ICAL_VTIMEZONE_COMPONENT);
    icalcomponent* event = icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
    ASSERT_NE(timezone, nullptr);
    ASSERT_NE(event, nullptr);
    EXPECT_STREQ(
        icalproperty_get_tzid(icalcomponent_get_first_property(timezone, ICAL_TZID_PROPERTY)),
        zone);

    icalproperty* start = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(tzidParameter(start), zone);
    EXPECT_STREQ(icaltime_as_ical_string(icalproperty_get_dtstart(start)), "20240101T023000");
    icalrecurrencetype rule =
        icalproperty_get_rrule(icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY));
    EXPECT_STREQ(icalrecurrencetype_as_string(&rule), "FREQ=DAILY");
    EXPECT_EQ(icalcomponent_count_properties(event, ICAL_EXDATE_PROPERTY), 2);
    EXPECT_EQ(icalcomponent_count_properties(event, ICAL_RDATE_PROPERTY), 1);
    EXPECT_EQ(tzidParameter(icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY)), zone);
    EXPECT_EQ(icalcomponent_get_summary(event), summary);
    EXPECT_STREQ(icalcomponent_get_uid(event), "occurrences-1@quanda.test");

    // libical's arithmetic over the written VTIMEZONE, for every wall time of the span but those
    // the zone skips (the adapter's policy) or repeats: there RFC 5545 means the first instant, as
    // the adapter does, but libical 3 takes the second.
    absl::TimeZone abseil;
    ASSERT_TRUE(absl::LoadTimeZone(zone, &abseil));
    icaltimezone* written = icaltimezone_new();
    icaltimezone_set_component(written, icalcomponent_new_clone(timezone));
    const auto year = daily.next(366, date(2023, 12, 31), test.adapter).value();
    int compared = 0;
    for (const QuandaOccurrence& occurrence : year) {
      const QuandaAbstractDate day = occurrence.date;
      if (abseil.At(absl::CivilSecond(day.year(), day.month(), day.day(), 2, 30, 0)).kind !=
          absl::TimeZone::TimeInfo::UNIQUE) {
        continue;
      }
      icaltimetype wall = icaltime_null_time();
      wall.year = occurrence.date.year();
      wall.month = occurrence.date.month();
      wall.day = occurrence.date.day();
      wall.hour = 2;
      wall.minute = 30;
      const auto instant = static_cast<double>(icaltime_as_timet_with_zone(wall, written));
      EXPECT_EQ(instant, occurrence.logicTimeInterval.unixEpoch()) << occurrence.description();
      ++compared;
    }
    EXPECT_GE(compared, 364);
    icaltimezone_free(written, 1);
  }
}

TEST(QuandaCalendarExport, ADateUntilBecomesItsOccurrenceAndErrorsNameTheWriter) {
  EXPECT_EQ(foldVCalendarLine("VERSION:2.0"), "VERSION:2.0\r\n");

  // A date UNTIL becomes the UTC instant of that date's occurrence, which libical reads back.
  TestAdapter test;
  const QuandaOccurrences berlin(makeDateMaskFromSyntax("every day").value(),
                                 QuandaAbstractNaturalTimeOfDay::make(9, 30, 0).value(),
                                 "Europe/Berlin");
  const auto first = QuandaAbstractDate::make(2024, 7, 1).value();
  const auto bounded = makeVCalendar(
      berlin,
      {.start = first, .rule = "FREQ=DAILY;UNTIL=20240710", .additions = {}, .exclusions = {}},
      first, {.uid = "u"}, test.adapter);
  ASSERT_TRUE(bounded) << bounded.error();
  const Component parsed(icalparser_parse_string(bounded.value().c_str()));
  ASSERT_NE(parsed, nullptr);
  const icalrecurrencetype until = icalproperty_get_rrule(icalcomponent_get_first_property(
      icalcomponent_get_first_component(parsed.get(), ICAL_VEVENT_COMPONENT), ICAL_RRULE_PROPERTY));
  EXPECT_TRUE(icaltime_is_utc(until.until));
  EXPECT_EQ(static_cast<double>(icaltime_as_timet(until.until)),
            berlin.occurrence(QuandaAbstractDate::make(2024, 7, 10).value(), test.adapter)
                .value()
                .logicTimeInterval.unixEpoch());

  const QuandaOccurrences nowhere(makeDateMaskFromSyntax("every day").value(),
                                  QuandaAbstractNaturalTimeOfDay::zero, "Nowhere/City");
  const auto start = QuandaAbstractDate::make(2024, 1, 1).value();
  const auto failed = makeVCalendar(
      nowhere, {.start = start, .rule = "FREQ=DAILY", .additions = {}, .exclusions = {}}, start,
      {.uid = "x", .stamp = QuandaLogicTimeInterval::zero}, test.adapter);
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error().functionName(),
            "makeVCalendar(occurrences:recurrence:through:event:calendarAdapter:)");
  EXPECT_EQ(failed.error().innermost().message(), "Failed to create timezone");
}

TEST(QuandaCalendarExport, ExportedRulesReadBackAsTheirOwnRuleAndStart) {
  TestAdapter test;
  const auto start = QuandaAbstractDate::make(2024, 1, 1).value();
  for (const char* text : {"last fri", "mon,wed,fri", "2nd sun", "every 2 weeks from 2024-01-03",
                           "day 15 except 2024-03-01..2024-03-31"}) {
    SCOPED_TRACE(text);
    const auto mask = makeDateMaskFromSyntax(text).value();
    const auto rule =
        QuandaRecurrenceRule::exporting(*mask, start, QuandaDayOfGregorianWeek::monday);
    ASSERT_TRUE(rule) << rule.error();
    const QuandaOccurrences occurrences(
        mask, QuandaAbstractNaturalTimeOfDay::make(9, 30, 0).value(), "America/New_York");
    const auto file = makeVCalendar(occurrences, rule.value(), start.addingDays(365), {.uid = text},
                                    test.adapter);
    ASSERT_TRUE(file) << file.error();
    const Component calendar(icalparser_parse_string(file.value().c_str()));
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(icalcomponent_count_errors(calendar.get()), 0) << file.value();
    icalcomponent* event = icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
    icalrecurrencetype expected = icalrecurrencetype_from_string(rule.value().rule.c_str());
    icalrecurrencetype read =
        icalproperty_get_rrule(icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY));
    EXPECT_EQ(std::string(icalrecurrencetype_as_string(&read)),
              icalrecurrencetype_as_string(&expected));
    const icaltimetype dtstart = icalcomponent_get_dtstart(event);
    EXPECT_EQ(QuandaAbstractDate::make(static_cast<std::uint16_t>(dtstart.year),
                                       static_cast<std::uint8_t>(dtstart.month),
                                       static_cast<std::uint8_t>(dtstart.day))
                  .value(),
              rule.value().start);
    EXPECT_EQ(icalcomponent_count_properties(event, ICAL_EXDATE_PROPERTY),
              static_cast<int>(rule.value().exclusions.size()));
  }
}

}  // namespace
