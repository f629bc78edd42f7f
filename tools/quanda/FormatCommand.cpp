// quanda format: writes a value as the library localizes it, in any locale and in any style or
// known template; without a style or template, in every one.
//
//   quanda format 2024-02-29 --locale de_DE --style full       (a date)
//   quanda format 2024-02-01..2024-02-29 --locale ja_JP        (a range of dates)
//   quanda format 13:05:09 --template standaloneMinuteWithoutUnit
//   quanda format 2024-02-29T13:05:00 --style long,short       (a date-time: date and time styles)
//   quanda format 5400 --duration shortAbsoluteSubDay --locale fr_FR   (a span of seconds)
//
// The value's form says what it is: a number is a span of seconds (natural when whole and not
// negative, discrete when whole, real otherwise), "date..date" a range, a 'T' a date-time, a ':' a
// time of day, a '-' a date; a fraction of a second makes the time or date-time a real one.
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/Formatting/DurationFormatting/QuandaDurationFormatter.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

using Date = QuandaAbstractDate;
using Adapter = QuandaCalendarAdapting;

constexpr std::string_view path = "tools/quanda/FormatCommand";

struct Arguments {
  std::string value;
  std::string locale;
  std::string style;
  std::string formatTemplate;
  std::string duration;
};

// What to write: one labelled text per style or template asked for, each made on demand.
using Texts = std::vector<std::pair<std::string, std::function<KeelResult<std::string>()>>>;

// "short, medium, long, full".
template <QuandaNamedEnumeration Enumeration>
std::string caseNames() {
  std::string names;
  for (const Enumeration value : allCases<Enumeration>) {
    if (!names.empty()) names += ", ";
    names += caseName(value);
  }
  return names;
}

// The texts of every case of the enumeration, or of the one `chosen` names; a name that is none
// of its cases is a misuse.
template <QuandaNamedEnumeration Enumeration, class Format>
void addTexts(Texts& texts, const std::string& chosen, const std::string& option,
              const Format& format) {
  bool found = false;
  for (const Enumeration value : allCases<Enumeration>) {
    if (!chosen.empty() && chosen != caseName(value)) continue;
    texts.emplace_back(std::string(caseName(value)), [format, value] { return format(value); });
    found = true;
  }
  if (!found) {
    throw CLI::ValidationError(option,
                               "expected one of " + caseNames<Enumeration>() + ", not " + chosen);
  }
}

// The options a kind of value does not take are a misuse.
void refuse(const std::string& given, const std::string& option, std::string_view kind) {
  if (!given.empty()) throw CLI::ValidationError(option, "not taken by " + std::string(kind));
}

// Styles when --style (or neither option) is given, templates when --template (or neither) is.
template <class Style, class Template, class FormatStyle, class FormatTemplate>
Texts stylesAndTemplates(const Arguments& arguments, const FormatStyle& formatStyle,
                         const FormatTemplate& formatTemplate) {
  refuse(arguments.duration, "--duration", "this value, only by spans");
  const bool everything = arguments.style.empty() && arguments.formatTemplate.empty();
  Texts texts;
  if (everything || !arguments.style.empty()) {
    addTexts<Style>(texts, arguments.style, "--style", formatStyle);
  }
  if (everything || !arguments.formatTemplate.empty()) {
    addTexts<Template>(texts, arguments.formatTemplate, "--template", formatTemplate);
  }
  return texts;
}

Texts dateTexts(Date date, Adapter& adapter, const std::string& locale,
                const Arguments& arguments) {
  Texts texts = stylesAndTemplates<QuandaDateFormatStyle, QuandaKnownDateFormatTemplate>(
      arguments, [=, &adapter](auto style) { return date.formatWith(style, adapter, locale); },
      [=, &adapter](auto known) { return date.formatWith(known, adapter, locale); });
  if (!arguments.style.empty() || !arguments.formatTemplate.empty()) return texts;
  for (const auto style : allCases<QuandaStandaloneDayNameFormatStyle>) {
    texts.emplace_back("weekday " + std::string(caseName(style)), [=, &adapter] {
      return date.localizedStandloneDayOfWeekName(adapter, locale, style);
    });
  }
  texts.emplace_back("month short",
                     [=, &adapter] { return date.localizedMonthShortName(adapter, locale); });
  return texts;
}

template <class Time>
Texts timeTexts(Time time, Adapter& adapter, const std::string& locale,
                const Arguments& arguments) {
  return stylesAndTemplates<QuandaTimeFormatStyle, QuandaKnownTimeFormatTemplate>(
      arguments, [=, &adapter](auto style) { return time.formatWith(style, adapter, locale); },
      [=, &adapter](auto known) { return time.formatWith(known, adapter, locale); });
}

// A date-time style as typed: "long" for the date and the time in that style, "long,short" for
// each its own, "full,none" for the date alone and "none,short" for the time alone.
std::optional<QuandaDateTimeFormatStyle> readDateTimeStyle(const std::string& text) {
  const std::size_t comma = text.find(',');
  const std::string dateText = text.substr(0, comma);
  const std::string timeText = comma == std::string::npos ? dateText : text.substr(comma + 1);
  std::optional<QuandaDateFormatStyle> date;
  std::optional<QuandaTimeFormatStyle> time;
  for (const auto style : allCases<QuandaDateFormatStyle>) {
    if (dateText == caseName(style)) date = style;
  }
  for (const auto style : allCases<QuandaTimeFormatStyle>) {
    if (timeText == caseName(style)) time = style;
  }
  if (date && time) return QuandaDateTimeFormatStyle::dateAndTime(*date, *time);
  if (date && timeText == "none" && comma != std::string::npos) {
    return QuandaDateTimeFormatStyle::dateOnly(*date);
  }
  if (time && dateText == "none") return QuandaDateTimeFormatStyle::timeOnly(*time);
  return std::nullopt;
}

template <class DateTime>
Texts dateTimeTexts(DateTime dateTime, Adapter& adapter, const std::string& locale,
                    const Arguments& arguments) {
  refuse(arguments.duration, "--duration", "this value, only by spans");
  const auto write = [=, &adapter](QuandaDateTimeFormatStyle style) {
    return dateTime.formatWith(style, adapter, locale);
  };
  Texts texts;
  if (!arguments.style.empty()) {
    const std::optional<QuandaDateTimeFormatStyle> style = readDateTimeStyle(arguments.style);
    if (!style) {
      throw CLI::ValidationError("--style", "expected a style for the date and the time (" +
                                                caseNames<QuandaDateFormatStyle>() +
                                                "), or two joined by a comma, either of them "
                                                "possibly none, not " +
                                                arguments.style);
    }
    texts.emplace_back(arguments.style, [=] { return write(*style); });
    return texts;
  }
  const auto formatTemplate = [=, &adapter](auto known) {
    return dateTime.formatWith(known, adapter, locale);
  };
  if (arguments.formatTemplate.empty()) {
    for (const std::string typed : {"short", "medium", "long", "full", "full,none", "none,short"}) {
      texts.emplace_back(typed, [=] { return write(*readDateTimeStyle(typed)); });
    }
  }
  addTexts<QuandaKnownDateTimeFormatTemplate>(texts, arguments.formatTemplate, "--template",
                                              formatTemplate);
  return texts;
}

Texts rangeTexts(Date from, Date to, Adapter& adapter, const std::string& locale,
                 const Arguments& arguments) {
  refuse(arguments.formatTemplate, "--template", "a range of dates");
  refuse(arguments.duration, "--duration", "a range of dates");
  Texts texts;
  addTexts<QuandaDateRangeFormatStyle>(
      texts, arguments.style, "--style",
      [=, &adapter](auto style) { return from.formatRange(to, style, adapter, locale); });
  return texts;
}

template <class Span>
Texts spanTexts(Span span, const std::shared_ptr<Adapter>& adapter, const std::string& locale,
                const Arguments& arguments) {
  refuse(arguments.style, "--style", "a span (its styles are --duration)");
  refuse(arguments.formatTemplate, "--template", "a span");
  Texts texts;
  addTexts<QuandaDurationFormatStyle>(
      texts, arguments.duration, "--duration", [=](QuandaDurationFormatStyle style) {
        return QuandaDurationFormatter(adapter).format(span, locale, style);
      });
  return texts;
}

// A range "from..to" of two dates; a text without exactly two is a misuse.
KeelResult<std::pair<Date, Date>> readRange(const std::string& text) {
  const std::size_t dots = text.find("..");
  const std::string fromText = text.substr(0, dots);
  const std::string toText = text.substr(dots + 2);
  if (fromText.empty() || toText.empty() || toText.find("..") != std::string::npos) {
    throw CLI::ValidationError("value", "expected a range date..date, not " + text);
  }
  const KeelResult<Date> from = Date::makeFromIso8601String(fromText);
  if (!from) return from.error();
  const KeelResult<Date> to = Date::makeFromIso8601String(toText);
  if (!to) return to.error();
  return std::pair(from.value(), to.value());
}

// The texts of the value, read by its form.
KeelResult<Texts> texts(const Arguments& arguments, const std::shared_ptr<Adapter>& adapter,
                        const std::string& locale) {
  const std::string& text = arguments.value;
  const bool fraction = text.find_first_of(".,") != std::string::npos;
  if (const auto natural = readQuandaNumber<std::uint64_t>(text)) {
    return spanTexts(QuandaNaturalTimeSpan(*natural), adapter, locale, arguments);
  }
  if (const auto discrete = readQuandaNumber<std::int64_t>(text)) {
    return spanTexts(QuandaDiscreteTimeSpan(*discrete), adapter, locale, arguments);
  }
  if (const auto real = readQuandaNumber<double>(text)) {
    return spanTexts(QuandaRealTimeSpan(*real), adapter, locale, arguments);
  }
  if (text.find("..") != std::string::npos) {
    const auto range = readRange(text);
    if (!range) return range.error();
    return rangeTexts(range.value().first, range.value().second, *adapter, locale, arguments);
  }
  const auto read = [&](const auto& made, const auto& textsOf) -> KeelResult<Texts> {
    if (!made) return made.error();
    return textsOf(made.value(), *adapter, locale, arguments);
  };
  if (text.find('T') != std::string::npos) {
    if (fraction) {
      return read(QuandaAbstractRealDateTime::makeFromRfc3339String(text),
                  dateTimeTexts<QuandaAbstractRealDateTime>);
    }
    return read(QuandaAbstractNaturalDateTime::makeFromRfc3339String(text),
                dateTimeTexts<QuandaAbstractNaturalDateTime>);
  }
  if (text.find(':') != std::string::npos) {
    if (fraction) {
      return read(QuandaAbstractRealTimeOfDay::makeFromIso8601String(text),
                  timeTexts<QuandaAbstractRealTimeOfDay>);
    }
    return read(QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(text),
                timeTexts<QuandaAbstractNaturalTimeOfDay>);
  }
  if (text.find('-') != std::string::npos) {
    return read(Date::makeFromIso8601String(text), dateTexts);
  }
  throw CLI::ValidationError("value",
                             "expected a date, a range date..date, a time, a date-time or a "
                             "number of seconds, not " +
                                 text);
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string locale = quandaLocale(arguments.locale);
  const std::shared_ptr<Adapter> adapter = makeQuandaAdapter(locale);
  const KeelArguments input{{"value", arguments.value}, {"locale", locale}};
  const KeelResult<Texts> chosen = texts(arguments, adapter, locale);
  if (!chosen) return KeelError::wrap(chosen.error(), input, path, "format");
  KeelArguments rows;
  for (const auto& [label, write] : chosen.value()) {
    const KeelResult<std::string> text = write();
    if (!text) return KeelError::wrap(text.error(), input, path, "format");
    rows.emplace_back(label, text.value());
  }
  if (rows.size() == 1) {
    out << rows.front().value << '\n';
  } else {
    printQuandaTable(rows, out);
  }
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command
      .add_option("value", arguments->value,
                  "A date, date..date, a time, a date-time or a number of seconds")
      ->type_name("")
      ->required();
  addQuandaLocaleOption(command, arguments->locale);
  command.add_option("--style", arguments->style, "A style (every one when neither is given)")
      ->type_name("NAME");
  command.add_option("--template", arguments->formatTemplate, "A known template")
      ->type_name("NAME");
  command.add_option("--duration", arguments->duration, "A span's duration style")
      ->type_name("NAME");
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "format",
    .summary = "Writes a value in a locale, in a style or template, or in every one.",
    .detail =
        "A number is a span of seconds, date..date a range, a 'T' a date-time, a ':' a time, a\n"
        "'-' a date. Styles: short, medium, long, full; a date-time takes one for both parts or\n"
        "two joined by a comma (long,short), either possibly none. Templates and duration styles\n"
        "are named as the library names them (fullMonthAndYear, shortAbsoluteSubDay...). Dates\n"
        "and times are written in UTC, so the zone never changes the text.\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"2024-02-29", "--locale", "de_DE", "--style", "full"}},
            {.args = {"2024-02-29", "--locale", "fr_FR"}},
            {.args = {"2024-02-01..2024-02-29", "--locale", "ja_JP"}},
            {.args = {"13:05:09", "--locale", "en_US"}},
            {.args = {"2024-02-29T13:05:00", "--locale", "en_GB", "--style", "long,short"}},
            {.args = {"5400", "--duration", "shortAbsoluteSubDay", "--locale", "fr_FR"}},
            {.args = {"3725", "--locale", "en_US"}},
            {.args = {"2023-02-29", "--locale", "en_US"}, .refused = true},
        },
});

}  // namespace
