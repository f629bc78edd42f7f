#include "Quanda/Abstract/QuandaAbstractDate.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelJson.h"
#include "Quanda/Abstract/QuandaTextParsing.h"

namespace {

constexpr std::string_view path = QuandaAbstractDate::sourcePath;

KeelArguments proposed(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return {{"proposedYear", year}, {"proposedMonth", month}, {"proposedDay", day}};
}

// Shared by the two string factories once the three tokens are split off: converts each token
// and validates the date, every failure carrying the string under "iso8601String".
KeelResult<QuandaAbstractDate> makeFromTokens(std::string_view yearToken,
                                              std::string_view monthToken,
                                              std::string_view dayToken,
                                              std::string_view iso8601String,
                                              std::string_view functionName) {
  const auto year = quanda_detail::parseUnsignedDecimal<std::uint16_t>(yearToken);
  if (!year) {
    return KeelError::fault("Couldn't convert first token to year",
                            {{"iso8601String", iso8601String}}, path, functionName);
  }
  const auto month = quanda_detail::parseUnsignedDecimal<std::uint8_t>(monthToken);
  if (!month) {
    return KeelError::fault("Couldn't convert second token to month",
                            {{"iso8601String", iso8601String}}, path, functionName);
  }
  const auto day = quanda_detail::parseUnsignedDecimal<std::uint8_t>(dayToken);
  if (!day) {
    return KeelError::fault("Couldn't convert third token to day",
                            {{"iso8601String", iso8601String}}, path, functionName);
  }
  auto date = QuandaAbstractDate::make(*year, *month, *day);
  if (!date)
    return KeelError::wrap(date.error(), {{"iso8601String", iso8601String}}, path, functionName);
  return date;
}

}  // namespace

std::string QuandaAbstractDate::Components::description() const {
  return "Components(year: " + std::to_string(year) + ", month: " + std::to_string(month) +
         ", day: " + std::to_string(day) + ")";
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::make(std::uint16_t year, std::uint8_t month,
                                                        std::uint8_t day) {
  constexpr std::string_view function = "make(year:month:day:)";
  if (!validYearRange.contains(year)) {
    return KeelError::fault("Invalid year", proposed(year, month, day), path, function);
  }
  if (!validMonthRange.contains(month)) {
    return KeelError::fault("Invalid month", proposed(year, month, day), path, function);
  }
  if (day < 1 || day > Quanda::DaysIn::Gregorian::oneBasedMonth(month, year)) {
    return KeelError::fault("Invalid day for month in year", proposed(year, month, day), path,
                            function);
  }
  return QuandaAbstractDate(year, month, day);
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::make(const Components& components) {
  auto date = make(components.year, components.month, components.day);
  if (!date) {
    return KeelError::wrap(date.error(), {{"proposedComponents", components}}, path,
                           "make(components:)");
  }
  return date;
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::makeFromIso8601Numeric(
    std::uint64_t iso8601Numeric) {
  constexpr std::string_view function = "make(iso8601Numeric:)";
  if (iso8601Numeric < minIso8601Numeric || iso8601Numeric > maxIso8601Numeric) {
    return KeelError::fault("Invalid numeric ISO 8601 representation of abtract date",
                            {{"iso8601Numeric", iso8601Numeric}}, path, function);
  }
  auto date = make(static_cast<std::uint16_t>(iso8601Numeric / 10000),
                   static_cast<std::uint8_t>(iso8601Numeric % 10000 / 100),
                   static_cast<std::uint8_t>(iso8601Numeric % 100));
  if (!date)
    return KeelError::wrap(date.error(), {{"iso8601Numeric", iso8601Numeric}}, path, function);
  return date;
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::makeFromIso8601String(
    std::string_view iso8601String) {
  constexpr std::string_view function = "make(iso8601String:)";
  // The canonical form "YYYY-MM-DD" is read in place; every other text takes the general path,
  // which gives the same result for this form.
  const std::string_view s = iso8601String;
  if (s.size() == 10 && s[4] == '-' && s[7] == '-') {
    const int high = quanda_detail::twoDigits(s, 0);
    const int low = quanda_detail::twoDigits(s, 2);
    const int month = quanda_detail::twoDigits(s, 5);
    const int day = quanda_detail::twoDigits(s, 8);
    if ((high | low | month | day) >= 0) {
      const auto year = static_cast<std::uint16_t>(high * 100 + low);
      if (isValid(year, static_cast<std::uint8_t>(month), static_cast<std::uint8_t>(day))) {
        return QuandaAbstractDate(year, static_cast<std::uint8_t>(month),
                                  static_cast<std::uint8_t>(day));
      }
    }
  }
  const std::size_t first = s.find('-');
  const std::size_t second = first == std::string_view::npos ? first : s.find('-', first + 1);
  if (first == std::string_view::npos || second == std::string_view::npos ||
      s.find('-', second + 1) != std::string_view::npos) {
    return KeelError::fault("Unexpected number of tokens", {{"iso8601String", s}}, path, function);
  }
  return makeFromTokens(s.substr(0, first), s.substr(first + 1, second - first - 1),
                        s.substr(second + 1), s, function);
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(
    std::string_view iso8601String) {
  constexpr std::string_view function = "make(iso8601StringWithoutSeparators:)";
  const std::string_view s = iso8601String;
  if (s.size() == 8) {
    const int high = quanda_detail::twoDigits(s, 0);
    const int low = quanda_detail::twoDigits(s, 2);
    const int month = quanda_detail::twoDigits(s, 4);
    const int day = quanda_detail::twoDigits(s, 6);
    if ((high | low | month | day) >= 0) {
      const auto year = static_cast<std::uint16_t>(high * 100 + low);
      if (isValid(year, static_cast<std::uint8_t>(month), static_cast<std::uint8_t>(day))) {
        return QuandaAbstractDate(year, static_cast<std::uint8_t>(month),
                                  static_cast<std::uint8_t>(day));
      }
    }
  }
  if (quanda_detail::characterCount(s) != 8) {
    return KeelError::fault(
        "Expected 8 digits for 8601 date without separators. Use 'with separators' variant "
        "otherwise",
        {{"iso8601String", s}}, path, function);
  }
  // Eight characters in eight bytes are eight ASCII characters: read the tokens in place.
  if (s.size() == 8)
    return makeFromTokens(s.substr(0, 4), s.substr(4, 2), s.substr(6, 2), s, function);
  const std::vector<std::string> characters = quanda_detail::characters(s);
  const std::string year = characters[0] + characters[1] + characters[2] + characters[3];
  const std::string month = characters[4] + characters[5];
  const std::string day = characters[6] + characters[7];
  return makeFromTokens(year, month, day, s, function);
}

QuandaAbstractDate QuandaAbstractDate::makeFromDouble(double daysSinceDatum) {
  const double rounded = std::round(daysSinceDatum);
  return makeFromDaysSinceDatum(keel::checkedFromDouble<std::uint32_t>(rounded));
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::make(std::chrono::year_month_day yearMonthDay) {
  const int year = static_cast<int>(yearMonthDay.year());
  const unsigned month = static_cast<unsigned>(yearMonthDay.month());
  const unsigned day = static_cast<unsigned>(yearMonthDay.day());
  // Fields beyond the value's widths are reported with the width's maximum, which the checks
  // below reject just the same.
  const auto narrowYear = static_cast<std::uint16_t>(year < 0 ? 0 : (year > 65535 ? 65535 : year));
  const auto narrowMonth = static_cast<std::uint8_t>(month > 255 ? 255 : month);
  const auto narrowDay = static_cast<std::uint8_t>(day > 255 ? 255 : day);
  auto date = make(narrowYear, narrowMonth, narrowDay);
  if (!date) {
    return KeelError::wrap(date.error(),
                           {{"yearMonthDay", std::to_string(year) + "-" + std::to_string(month) +
                                                 "-" + std::to_string(day)}},
                           path, "make(yearMonthDay:)");
  }
  return date;
}

KeelResult<QuandaAbstractDate> QuandaAbstractDate::make(std::chrono::sys_days sysDays) {
  const std::int64_t days =
      std::int64_t{sysDays.time_since_epoch().count()} + quanda_detail::datumDaysBeforeUnixEpoch;
  if (days < 0 || days > std::int64_t{validDaysSinceDatumRange.max()}) {
    return KeelError::fault(
        "Day count outside the valid range",
        {{"daysSinceUnixEpoch", std::int64_t{sysDays.time_since_epoch().count()}}}, path,
        "make(sysDays:)");
  }
  return makeFromDaysSinceDatum(static_cast<std::uint32_t>(days));
}

std::string QuandaAbstractDate::serializeToIso8601String() const {
  if (year_ > 9999) {
    // Years past 9999 (reachable only through month and year arithmetic) print all five digits.
    std::string text(11, '-');
    quanda_detail::writeDigits(text.data(), year_, 5);
    quanda_detail::writeDigits(text.data() + 6, month_, 2);
    quanda_detail::writeDigits(text.data() + 9, day_, 2);
    return text;
  }
  // Digit pairs by multiplication (x / 100 is x * 5243 >> 19 below 43699, x / 10 is x * 103 >> 10
  // below 100), written into a local buffer that becomes the string in one copy.
  char text[10];
  const auto writePair = [](char* out, unsigned pair) {
    const unsigned tens = (pair * 103) >> 10;
    out[0] = static_cast<char>('0' + tens);
    out[1] = static_cast<char>('0' + pair - 10 * tens);
  };
  const unsigned century = (unsigned{year_} * 5243) >> 19;
  writePair(text, century);
  writePair(text + 2, year_ - 100 * century);
  text[4] = '-';
  writePair(text + 5, month_);
  text[7] = '-';
  writePair(text + 8, day_);
  return std::string(text, sizeof text);
}

KeelResult<std::uint8_t> QuandaAbstractDate::calendarWeeksIn(
    std::uint16_t year, std::uint8_t month, QuandaDayOfGregorianWeek preferredFirstDayOfWeek) {
  const auto first = make(year, month, 1);
  if (!first) {
    return KeelError::wrap(first.error(),
                           {{"year", year},
                            {"month", month},
                            {"preferredFirstDayOfWeek", caseName(preferredFirstDayOfWeek)}},
                           path, "calendarWeeksIn(year:month:preferredFirstDayOfWeek:)");
  }
  const QuandaAbstractDate date = first.value();
  const unsigned cells =
      date.daysInMonth() + date.weekNumberAndDay(preferredFirstDayOfWeek).zeroBasedDayOfWeek;
  return static_cast<std::uint8_t>((cells + 6) / 7);
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractDate date) {
  return stream << date.description();
}

std::ostream& operator<<(std::ostream& stream, const QuandaAbstractDate::Components& components) {
  return stream << components.description();
}

void nlohmann::adl_serializer<QuandaAbstractDate>::to_json(nlohmann::json& json,
                                                           QuandaAbstractDate date) {
  json = date.serializeToIso8601Numeric();
}

QuandaAbstractDate nlohmann::adl_serializer<QuandaAbstractDate>::from_json(
    const nlohmann::json& json) {
  const auto date =
      QuandaAbstractDate::makeFromIso8601Numeric(keel::decodeJsonInteger<std::uint64_t>(json));
  if (!date) throw KeelDecodingError("Failed to create date from int");
  return date.value();
}
