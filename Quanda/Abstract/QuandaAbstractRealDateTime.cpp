#include "Quanda/Abstract/QuandaAbstractRealDateTime.h"

#include <cmath>
#include <limits>
#include <ostream>

#include "Quanda/Abstract/QuandaSecondsFormatter.h"

namespace {

constexpr std::string_view path = QuandaAbstractRealDateTime::sourcePath;
constexpr double secondsInDay = Quanda::SecondsIn::Gregorian::Day::count;

// The date of a day count that lies in -1 < days < 2^32, clamped into the valid dates, and the
// time of the remainder, clamped into the day.
// The day count is checked first, so that a NaN or infinite count stops on it.
QuandaAbstractRealDateTime splitting(double days, double secondsSinceDayBegan) {
  const QuandaAbstractDate date =
      QuandaAbstractDate::makeFromDaysSinceDatum(keel::checkedFromDouble<std::uint32_t>(days));
  return QuandaAbstractRealDateTime(
      date, QuandaAbstractRealTimeOfDay::makeFromSecondsSinceDayBegan(secondsSinceDayBegan));
}

}  // namespace

QuandaAbstractRealDateTime QuandaAbstractRealDateTime::makeFromSecondsSinceDatum(
    double secondsSinceDatum) {
  const double days = std::floor(secondsSinceDatum / secondsInDay);
  return splitting(days, secondsSinceDatum - days * secondsInDay);
}

QuandaAbstractNaturalDateTime QuandaAbstractRealDateTime::makeNatural() const {
  return QuandaAbstractNaturalDateTime::makeFromSecondsSinceDatum(
      keel::checkedFromDouble<std::uint64_t>(std::round(secondsSinceDatum())));
}

KeelResult<QuandaAbstractRealDateTime> QuandaAbstractRealDateTime::make(
    std::chrono::local_time<std::chrono::duration<double>> localTime) {
  const double sinceEpoch = localTime.time_since_epoch().count();
  const double daysSinceEpoch = std::floor(sinceEpoch / secondsInDay);
  const double days = daysSinceEpoch + static_cast<double>(quanda_detail::datumDaysBeforeUnixEpoch);
  // Written so that NaN fails too.
  if (!(days >= 0.0 && days <= QuandaAbstractDate::validDaysSinceDatumRange.max())) {
    return KeelError::fault("Local time outside the valid range",
                            {{"secondsSinceUnixEpoch", sinceEpoch}}, path, "make(localTime:)");
  }
  return splitting(days, sinceEpoch - daysSinceEpoch * secondsInDay);
}

std::string QuandaAbstractRealDateTime::serializedToRfc3339String() const {
  // Room for the seconds as well, so that appending them does not reallocate.
  std::string text;
  text.reserve(40);
  text.resize(19);
  char* const end =
      quanda_detail::writeDateTimeUpToMinute(text.data(), date(), hour(), minute(), '-');
  *end = ':';
  text.resize(static_cast<std::size_t>(end + 1 - text.data()));
  QuandaSecondsFormatter::shared().appendFormatted(second(), text);
  return text;
}

QuandaAbstractRealDateTime QuandaAbstractRealDateTime::nextUp() const {
  return makeFromSecondsSinceDatum(
      std::nextafter(secondsSinceDatum(), std::numeric_limits<double>::infinity()));
}

QuandaAbstractRealDateTime QuandaAbstractRealDateTime::nextDown() const {
  const double below =
      std::nextafter(secondsSinceDatum(), -std::numeric_limits<double>::infinity());
  return makeFromSecondsSinceDatum(below < 0.0 ? 0.0 : below);
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRealDateTime dateTime) {
  return stream << dateTime.description();
}

std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractRealDateTime::Components& components) {
  return stream << components.description();
}
