#include "Quanda/DateMasks/QuandaCalendarExport.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"
#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"

namespace {

constexpr std::string_view path = "Quanda/DateMasks/QuandaCalendarExport";
constexpr std::string_view function =
    "makeVCalendar(occurrences:recurrence:through:event:calendarAdapter:)";

// yyyymmddThhmmss, a DATE-TIME in local (floating or TZID) form.
std::string dateTimeValue(QuandaAbstractNaturalDateTime dateTime) {
  char text[32];  // room for any uint8 field, so that no write is cut
  std::snprintf(text, sizeof text, "%04u%02u%02uT%02u%02u%02u", unsigned{dateTime.date().year()},
                unsigned{dateTime.date().month()}, unsigned{dateTime.date().day()},
                unsigned{dateTime.time().hour()}, unsigned{dateTime.time().minute()},
                unsigned{dateTime.time().second()});
  return text;
}

// +hhmm, or +hhmmss when the offset has seconds; never "-0000".
std::string offsetValue(std::int32_t secondsFromGMT) {
  const std::int32_t magnitude = secondsFromGMT < 0 ? -secondsFromGMT : secondsFromGMT;
  char text[32];
  std::snprintf(text, sizeof text, "%c%02d%02d", secondsFromGMT < 0 ? '-' : '+', magnitude / 3600,
                magnitude / 60 % 60);
  std::string value = text;
  if (magnitude % 60 != 0) {
    std::snprintf(text, sizeof text, "%02d", magnitude % 60);
    value += text;
  }
  return value;
}

// A TEXT value: backslash, semicolon, comma and line breaks escaped.
std::string textValue(std::string_view text) {
  std::string value;
  for (const char character : text) {
    if (character == '\\' || character == ';' || character == ',') value += '\\';
    if (character == '\n') {
      value += "\\n";
    } else if (character != '\r') {
      value += character;
    }
  }
  return value;
}

// The wall time a zone shows `secondsFromGMT` away from an instant; instants outside the years
// 1...9999 there are clamped to them (a reader only needs the onset's place in order).
QuandaAbstractNaturalDateTime wallTime(KeelDate instant, std::int32_t secondsFromGMT) {
  const auto seconds =
      static_cast<std::int64_t>(instant.time_since_epoch().count()) + secondsFromGMT;
  const auto read = QuandaAbstractNaturalDateTime::make(
      std::chrono::local_seconds(std::chrono::seconds(seconds)));
  if (read) return read.value();
  return seconds < 0 ? QuandaAbstractNaturalDateTime::minInc
                     : QuandaAbstractNaturalDateTime::maxInc;
}

class Writer {
 public:
  void line(std::string_view text) { out_ += foldVCalendarLine(text); }
  void line(std::string_view name, std::string_view value) {
    std::string text(name);
    text += ':';
    text += value;
    line(text);
  }
  std::string take() { return std::move(out_); }

 private:
  std::string out_;
};

void writeTimezone(Writer& writer, std::string_view zone,
                   const std::vector<QuandaTimezoneDatabase::Transition>& transitions,
                   const QuandaTimezoneDatabase::Offset& only) {
  writer.line("BEGIN", "VTIMEZONE");
  writer.line("TZID", zone);
  const auto component = [&](const QuandaTimezoneDatabase::Offset& before,
                             const QuandaTimezoneDatabase::Offset& after,
                             QuandaAbstractNaturalDateTime onset) {
    const std::string_view kind = after.isDaylightSavingTime ? "DAYLIGHT" : "STANDARD";
    writer.line("BEGIN", kind);
    writer.line("DTSTART", dateTimeValue(onset));
    writer.line("TZOFFSETFROM", offsetValue(before.secondsFromGMT));
    writer.line("TZOFFSETTO", offsetValue(after.secondsFromGMT));
    if (!after.abbreviation.empty()) writer.line("TZNAME", textValue(after.abbreviation));
    writer.line("END", kind);
  };
  if (transitions.empty()) {
    component(only, only, QuandaAbstractNaturalDateTime::make(1970, 1, 1, 0, 0, 0).value());
  }
  for (const auto& transition : transitions) {
    component(transition.before, transition.after,
              wallTime(transition.instant, transition.before.secondsFromGMT));
  }
  writer.line("END", "VTIMEZONE");
}

// "RDATE;TZID=Europe/Berlin:20240101T093000,20240202T093000", or nothing without dates.
void writeDates(Writer& writer, std::string_view name, std::string_view zone,
                const std::vector<QuandaAbstractDate>& dates, QuandaAbstractNaturalTimeOfDay time) {
  if (dates.empty()) return;
  std::string text = std::string(name) + ";TZID=" + std::string(zone) + ":";
  for (std::size_t index = 0; index < dates.size(); ++index) {
    if (index != 0) text += ',';
    text += dateTimeValue(QuandaAbstractNaturalDateTime(dates[index], time));
  }
  writer.line(text);
}

// The rule with a date UNTIL made the UTC instant of that date's occurrence, as RFC 5545 asks
// beside a DTSTART with TZID; an UNTIL already a date-time stays.
KeelResult<std::string> ruleValue(std::string_view rule, const QuandaOccurrences& occurrences,
                                  QuandaCalendarAdapting& calendarAdapter) {
  constexpr std::string_view until = "UNTIL=";
  std::string value(rule);
  const std::size_t start = value.find(until);
  if (start == std::string::npos) return value;
  const std::size_t digits = start + until.size();
  const std::size_t end = value.find(';', digits);
  const std::string_view date = std::string_view(value).substr(digits, end - digits);
  if (date.size() != 8) return value;
  const auto day = QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(date);
  if (!day) return day.error();
  const auto last = occurrences.occurrence(day.value(), calendarAdapter);
  if (!last) return last.error();
  const auto utc = QuandaAbstractNaturalDateTime::makeUsingUtcTimezone(
      last.value().logicTimeInterval, calendarAdapter);
  if (!utc) return utc.error();
  return value.replace(digits, date.size(), dateTimeValue(utc.value()) + "Z");
}

KeelResult<std::string> write(const QuandaOccurrences& occurrences,
                              const QuandaRecurrenceRule& recurrence, QuandaAbstractDate through,
                              const QuandaCalendarEvent& event,
                              QuandaCalendarAdapting& calendarAdapter) {
  const std::string zone = occurrences.resolvedTimezoneIdentifier(calendarAdapter);
  // The span the VTIMEZONE covers: every date the event names, through `through`.
  QuandaAbstractDate first = std::min(recurrence.start, through);
  QuandaAbstractDate last = std::max(recurrence.start, through);
  for (const QuandaAbstractDate date : recurrence.additions) {
    first = std::min(first, date);
    last = std::max(last, date);
  }
  const auto from = occurrences.occurrence(first, calendarAdapter);
  if (!from) return from.error();
  const auto to = occurrences.occurrence(last, calendarAdapter);
  if (!to) return to.error();
  const KeelDate fromInstant = calendarAdapter.makeFoundationDate(from.value().logicTimeInterval);
  const auto transitions = QuandaTimezoneDatabase::transitions(
      zone, fromInstant, calendarAdapter.makeFoundationDate(to.value().logicTimeInterval));
  if (!transitions) return transitions.error();
  const auto only = QuandaTimezoneDatabase::offset(zone, fromInstant);
  if (!only) return only.error();
  const auto rule = ruleValue(recurrence.rule, occurrences, calendarAdapter);
  if (!rule) return rule.error();
  const auto stamp =
      QuandaAbstractNaturalDateTime::makeUsingUtcTimezone(event.stamp, calendarAdapter);
  if (!stamp) return stamp.error();

  Writer writer;
  writer.line("BEGIN", "VCALENDAR");
  writer.line("VERSION", "2.0");
  writer.line("PRODID", "-//Quanda//Quanda date masks//EN");
  writer.line("CALSCALE", "GREGORIAN");
  writeTimezone(writer, zone, transitions.value(), only.value());
  writer.line("BEGIN", "VEVENT");
  writer.line("UID", textValue(event.uid));
  writer.line("DTSTAMP", dateTimeValue(stamp.value()) + "Z");
  writer.line(
      "DTSTART;TZID=" + zone + ":" +
      dateTimeValue(QuandaAbstractNaturalDateTime(recurrence.start, occurrences.timeOfDay())));
  if (!rule.value().empty()) writer.line("RRULE", rule.value());
  writeDates(writer, "RDATE", zone, recurrence.additions, occurrences.timeOfDay());
  writeDates(writer, "EXDATE", zone, recurrence.exclusions, occurrences.timeOfDay());
  if (!event.summary.empty()) writer.line("SUMMARY", textValue(event.summary));
  writer.line("END", "VEVENT");
  writer.line("END", "VCALENDAR");
  return writer.take();
}

}  // namespace

KeelResult<std::string> makeVCalendar(const QuandaOccurrences& occurrences,
                                      const QuandaRecurrenceRule& recurrence,
                                      QuandaAbstractDate through, const QuandaCalendarEvent& event,
                                      QuandaCalendarAdapting& calendarAdapter) {
  auto text = write(occurrences, recurrence, through, event, calendarAdapter);
  if (!text) {
    return KeelError::wrap(text.error(),
                           {{"occurrences", occurrences.description()},
                            {"start", recurrence.start},
                            {"rule", recurrence.rule},
                            {"through", through},
                            {"uid", event.uid}},
                           path, function);
  }
  return text;
}
