#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelJson.h"
#include "Quanda/Abstract/QuandaAbstractRelativeDiscreteTimeOfDay.h"
#include "Quanda/Abstract/QuandaTextParsing.h"

namespace {

constexpr std::string_view path = QuandaAbstractNaturalTimeOfDay::sourcePath;

}  // namespace

KeelResult<QuandaAbstractNaturalTimeOfDay> QuandaAbstractNaturalTimeOfDay::makeFromIso8601Numeric(
    std::uint64_t iso8601Numeric) {
  constexpr std::string_view function = "make(iso8601Numeric:)";
  if (iso8601Numeric >= 240000) {
    return KeelError::fault("Invalid numeric ISO 8601 representation of abtract time",
                            {{"iso8601Numeric", iso8601Numeric}}, path, function);
  }
  auto time = make(static_cast<std::uint8_t>(iso8601Numeric / 10000),
                   static_cast<std::uint8_t>(iso8601Numeric % 10000 / 100),
                   static_cast<std::uint8_t>(iso8601Numeric % 100));
  if (!time)
    return KeelError::wrap(time.error(), {{"iso8601Numeric", iso8601Numeric}}, path, function);
  return time;
}

KeelResult<QuandaAbstractNaturalTimeOfDay>
QuandaAbstractNaturalTimeOfDay::makeFromIso8601StringWithoutSeparators(
    std::string_view iso8601String) {
  constexpr std::string_view function = "make(iso8601StringWithoutSeparators:)";
  const std::string_view s = iso8601String;
  // Six ASCII digits are read in place; other text takes the general path below, which gives the
  // same result for them.
  if (s.size() == 6) {
    const int hour = quanda_detail::twoDigits(s, 0);
    const int minute = quanda_detail::twoDigits(s, 2);
    const int second = quanda_detail::twoDigits(s, 4);
    if ((hour | minute | second) >= 0 && hour < 24 && minute < 60 && second < 60) {
      return QuandaAbstractNaturalTimeOfDay(static_cast<std::uint8_t>(hour),
                                            static_cast<std::uint8_t>(minute),
                                            static_cast<std::uint8_t>(second));
    }
  }
  if (quanda_detail::characterCount(s) != 6) {
    return KeelError::fault(
        "Unexpected 6 digits without separators. Use the 'with separators variant' otherwise",
        {{"iso8601String", s}}, path, function);
  }
  // Six characters in six bytes are six ASCII characters: read the tokens in place.
  if (s.size() == 6) {
    return makeFromTokens(s.substr(0, 2), s.substr(2, 2), s.substr(4, 2), s, function,
                          TokenArguments::string, TokenArguments::string);
  }
  const std::vector<std::string> characters = quanda_detail::characters(s);
  return makeFromTokens(characters[0] + characters[1], characters[2] + characters[3],
                        characters[4] + characters[5], s, function, TokenArguments::string,
                        TokenArguments::string);
}

QuandaAbstractNaturalTimeOfDay QuandaAbstractNaturalTimeOfDay::makeFromDouble(
    double secondsSinceDayBegan) {
  return makeFromSecondsSinceDayBegan(
      keel::checkedFromDouble<std::uint32_t>(std::round(secondsSinceDayBegan)));
}

KeelResult<QuandaAbstractNaturalTimeOfDay> QuandaAbstractNaturalTimeOfDay::make(
    std::chrono::seconds sinceDayBegan) {
  const std::int64_t seconds = sinceDayBegan.count();
  if (seconds < 0 || seconds >= Quanda::SecondsIn::Gregorian::Day::count) {
    return KeelError::fault("Duration outside one day", {{"seconds", seconds}}, path,
                            "make(duration:)");
  }
  return makeFromSecondsSinceDayBegan(static_cast<std::uint32_t>(seconds));
}

KeelResult<QuandaAbstractNaturalTimeOfDay> QuandaAbstractNaturalTimeOfDay::make(
    std::chrono::hh_mm_ss<std::chrono::seconds> hhMmSs) {
  auto time = make(hhMmSs.to_duration());
  if (!time) {
    std::string text = hhMmSs.is_negative() ? "-" : "";
    text += std::to_string(hhMmSs.hours().count()) + "h " +
            std::to_string(hhMmSs.minutes().count()) + "min " +
            std::to_string(hhMmSs.seconds().count()) + "s";
    return KeelError::wrap(time.error(), {{"hhMmSs", text}}, path, "make(hhMmSs:)");
  }
  return time;
}

std::string QuandaAbstractNaturalTimeOfDay::serializeToIso8601String() const {
  std::string text(8, ':');
  quanda_detail::writeDigits(text.data(), hour(), 2);
  quanda_detail::writeDigits(text.data() + 3, minute(), 2);
  quanda_detail::writeDigits(text.data() + 6, second(), 2);
  return text;
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractNaturalTimeOfDay time) {
  return stream << time.description();
}

std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractNaturalTimeOfDay::Components& components) {
  return stream << components.description();
}

void nlohmann::adl_serializer<QuandaAbstractNaturalTimeOfDay>::to_json(
    nlohmann::json& json, QuandaAbstractNaturalTimeOfDay time) {
  json = time.serializeToIso8601Numeric();
}

QuandaAbstractNaturalTimeOfDay nlohmann::adl_serializer<QuandaAbstractNaturalTimeOfDay>::from_json(
    const nlohmann::json& json) {
  const auto time = QuandaAbstractNaturalTimeOfDay::makeFromIso8601Numeric(
      keel::decodeJsonInteger<std::uint64_t>(json));
  if (!time) throw KeelDecodingError("Failed to create date from int");
  return time.value();
}

// ---- The relative discrete time of day, which has no source file of its own ------------------

std::ostream& operator<<(std::ostream& stream, QuandaAbstractRelativeDiscreteTimeOfDay relative) {
  return stream << relative.description();
}

void nlohmann::adl_serializer<QuandaAbstractRelativeDiscreteTimeOfDay>::to_json(
    nlohmann::json& json, QuandaAbstractRelativeDiscreteTimeOfDay relative) {
  json = nlohmann::json{{"days", relative.days()}, {"time", relative.time()}};
}

QuandaAbstractRelativeDiscreteTimeOfDay nlohmann::adl_serializer<
    QuandaAbstractRelativeDiscreteTimeOfDay>::from_json(const nlohmann::json& json) {
  const auto days = keel::decodeJsonInteger<std::int32_t>(json.at("days"));
  return {days, json.at("time").get<QuandaAbstractNaturalTimeOfDay>()};
}
