#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"

#include <cmath>
#include <limits>
#include <ostream>

#include "Quanda/Abstract/QuandaAbstractRelativeRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaSecondsFormatter.h"
#include "Quanda/Abstract/QuandaTextParsing.h"

namespace {

constexpr std::string_view path = QuandaAbstractRealTimeOfDay::sourcePath;

// floor(value / divisor) for 0 <= value, corrected where the rounded quotient reached the next
// whole number although the value lies just below a multiple of the divisor. The product of a
// small whole number and the divisor is exact, so the test is exact, and so is the remainder the
// caller takes: the split never loses or invents a fraction.
double exactFloorQuotient(double value, double divisor) {
  double quotient = std::floor(value / divisor);
  if (quotient * divisor > value) quotient -= 1.0;
  return quotient;
}

}  // namespace

QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::makeFromSecondsSinceDayBegan(
    double secondsSinceDayBegan) {
  // Adding 0.0 turns -0 into +0.
  const double seconds =
      Quanda::SecondsIn::Gregorian::Day::validSecondsWithSubSecondsDomainInc.clamp(
          secondsSinceDayBegan) +
      0.0;
  constexpr double secondsInHour = Quanda::SecondsIn::Gregorian::Hour::count;
  constexpr double secondsInMinute = Quanda::SecondsIn::Gregorian::Minute::count;
  const double hour = exactFloorQuotient(seconds, secondsInHour);
  KEEL_PRECONDITION(hour > -1.0 && hour < 256.0, "hour of a real time of day is not finite");
  const double withinHour = seconds - hour * secondsInHour;
  const double minute = exactFloorQuotient(withinHour, secondsInMinute);
  KEEL_PRECONDITION(minute > -1.0 && minute < 256.0, "minute of a real time of day is not finite");
  return QuandaAbstractRealTimeOfDay(static_cast<std::uint8_t>(hour),
                                     static_cast<std::uint8_t>(minute),
                                     withinHour - minute * secondsInMinute);
}

KeelResult<QuandaAbstractRealTimeOfDay> QuandaAbstractRealTimeOfDay::make(
    std::chrono::duration<double> sinceDayBegan) {
  const double seconds = sinceDayBegan.count();
  if (!(seconds >= 0.0 && seconds < Quanda::SecondsIn::Gregorian::Day::count)) {
    return KeelError::fault("Duration outside one day", {{"seconds", seconds}}, path,
                            "make(duration:)");
  }
  return makeFromSecondsSinceDayBegan(seconds);
}

std::string QuandaAbstractRealTimeOfDay::serializeToIso8601String() const {
  std::string text(6, ':');
  quanda_detail::writeDigits(text.data(), hour(), 2);
  quanda_detail::writeDigits(text.data() + 3, minute(), 2);
  QuandaSecondsFormatter::shared().appendFormatted(second(), text);
  return text;
}

QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::nextUp() const {
  return makeFromSecondsSinceDayBegan(
      std::nextafter(secondsSinceDayBegan(), std::numeric_limits<double>::infinity()));
}

QuandaAbstractRealTimeOfDay QuandaAbstractRealTimeOfDay::nextDown() const {
  return makeFromSecondsSinceDayBegan(
      std::nextafter(secondsSinceDayBegan(), -std::numeric_limits<double>::infinity()));
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRealTimeOfDay time) {
  return stream << time.description();
}

std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractRealTimeOfDay::Components& components) {
  return stream << components.description();
}

// ---- The relative real time of day, which has no source file of its own ----------------------

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRelativeRealTimeOfDay relative) {
  return stream << relative.description();
}
