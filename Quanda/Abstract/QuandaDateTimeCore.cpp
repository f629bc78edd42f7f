// The out-of-line members of the date-time core, instantiated here for the two kinds.
#include "Quanda/Abstract/QuandaDateTimeCore.h"

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"
#include "Quanda/Abstract/QuandaTextParsing.h"

namespace quanda_detail {

char* writeDateTimeUpToMinute(char* out, QuandaAbstractDate date, std::uint8_t hour,
                              std::uint8_t minute, char dateSeparator) noexcept {
  const int yearWidth = date.year() > 9999 ? 5 : 4;
  writeDigits(out, date.year(), yearWidth);
  out += yearWidth;
  *out++ = dateSeparator;
  writeDigits(out, date.month(), 2);
  out[2] = dateSeparator;
  writeDigits(out + 3, date.day(), 2);
  out[5] = 'T';
  writeDigits(out + 6, hour, 2);
  out[8] = ':';
  writeDigits(out + 9, minute, 2);
  return out + 11;
}

std::string formatWholeSecondDateTime(QuandaAbstractDate date, QuandaAbstractNaturalTimeOfDay time,
                                      char dateSeparator) {
  std::string text(date.year() > 9999 ? 20 : 19, ':');
  char* const end =
      writeDateTimeUpToMinute(text.data(), date, time.hour(), time.minute(), dateSeparator);
  writeDigits(end + 1, time.second(), 2);
  return text;
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCore<DateTime, Traits>::make(std::uint16_t year, std::uint8_t month,
                                                          std::uint8_t day, std::uint8_t hour,
                                                          std::uint8_t minute, Second second) {
  constexpr std::string_view function = "make(year:month:day:hour:minute:second:)";
  const auto proposed = [&] {
    return KeelArguments{{"proposedYear", year},     {"proposedMonth", month},
                         {"proposedDay", day},       {"proposedHour", hour},
                         {"proposedMinute", minute}, {"proposedSecond", second}};
  };
  const KeelResult<QuandaAbstractDate> date = QuandaAbstractDate::make(year, month, day);
  if (!date) return KeelError::wrap(date.error(), proposed(), Traits::sourcePath, function);
  const KeelResult<Time> time = Time::make(hour, minute, second);
  if (!time) return KeelError::wrap(time.error(), proposed(), Traits::sourcePath, function);
  return DateTime(date.value(), time.value());
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCore<DateTime, Traits>::make(const Components& components) {
  KeelResult<DateTime> dateTime = make(components.year, components.month, components.day,
                                       components.hour, components.minute, components.second);
  if (!dateTime) {
    return KeelError::wrap(dateTime.error(), {{"proposedComponents", components}},
                           Traits::sourcePath, "make(components:)");
  }
  return dateTime;
}

template <class DateTime, class Traits>
KeelResult<DateTime> DateTimeCore<DateTime, Traits>::makeFromRfc3339Tokens(
    std::string_view rfc3339String) {
  constexpr std::string_view function = "make(rfc3339String:)";
  const std::string_view s = rfc3339String;
  const std::size_t separator = s.find('T');
  if (separator == std::string_view::npos || s.find('T', separator + 1) != std::string_view::npos) {
    return KeelError::fault("Unexpected number of T tokens", {{"rfc3339String", s}},
                            Traits::sourcePath, function);
  }
  const KeelResult<QuandaAbstractDate> date =
      QuandaAbstractDate::makeFromIso8601String(s.substr(0, separator));
  if (!date) {
    return KeelError::wrap(date.error(), {{"rfc3339String", s}}, Traits::sourcePath, function);
  }
  const KeelResult<Time> time = Time::makeFromIso8601String(s.substr(separator + 1));
  if (!time) {
    return KeelError::wrap(time.error(), {{"rfc3339String", s}}, Traits::sourcePath, function);
  }
  return DateTime(date.value(), time.value());
}

template class DateTimeCore<QuandaAbstractNaturalDateTime, NaturalDateTimeTraits>;
template class DateTimeCore<QuandaAbstractRealDateTime, RealDateTimeTraits>;

}  // namespace quanda_detail
