#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelJson.h"

namespace {

constexpr std::string_view path = QuandaAbstractNaturalDateTime::sourcePath;

}  // namespace

KeelResult<QuandaAbstractNaturalDateTime> QuandaAbstractNaturalDateTime::makeFromRfc3339Numeric(
    std::uint64_t rfc3339Numeric) {
  constexpr std::string_view function = "make(rfc3339Numeric:)";
  const KeelResult<QuandaAbstractDate> date =
      QuandaAbstractDate::makeFromIso8601Numeric(rfc3339Numeric / 1000000);
  if (!date)
    return KeelError::wrap(date.error(), {{"rfc3339Numeric", rfc3339Numeric}}, path, function);
  const KeelResult<QuandaAbstractNaturalTimeOfDay> time =
      QuandaAbstractNaturalTimeOfDay::makeFromIso8601Numeric(rfc3339Numeric % 1000000);
  if (!time)
    return KeelError::wrap(time.error(), {{"rfc3339Numeric", rfc3339Numeric}}, path, function);
  return QuandaAbstractNaturalDateTime(date.value(), time.value());
}

QuandaAbstractNaturalDateTime QuandaAbstractNaturalDateTime::makeFromDouble(
    double secondsSinceDatum) {
  return makeFromSecondsSinceDatum(
      keel::checkedFromDouble<std::uint64_t>(std::round(secondsSinceDatum)));
}

KeelResult<QuandaAbstractNaturalDateTime> QuandaAbstractNaturalDateTime::make(
    std::chrono::local_seconds localSeconds) {
  const std::int64_t sinceEpoch = localSeconds.time_since_epoch().count();
  // Compared before adding, so that no count can overflow.
  if (sinceEpoch < -quanda_detail::datumSecondsBeforeUnixEpoch ||
      sinceEpoch >
          std::int64_t{maxSecondsSinceDatum} - quanda_detail::datumSecondsBeforeUnixEpoch) {
    return KeelError::fault("Local time outside the valid range",
                            {{"secondsSinceUnixEpoch", sinceEpoch}}, path, "make(localSeconds:)");
  }
  return makeFromSecondsSinceDatum(
      static_cast<std::uint64_t>(sinceEpoch + quanda_detail::datumSecondsBeforeUnixEpoch));
}

std::ostream& operator<<(std::ostream& stream, QuandaAbstractNaturalDateTime dateTime) {
  return stream << dateTime.description();
}

std::ostream& operator<<(std::ostream& stream,
                         const QuandaAbstractNaturalDateTime::Components& components) {
  return stream << components.description();
}

void nlohmann::adl_serializer<QuandaAbstractNaturalDateTime>::to_json(
    nlohmann::json& json, QuandaAbstractNaturalDateTime dateTime) {
  json = nlohmann::json::object();
  json["serializedRfc3339Numeric"] = dateTime.serializedToRfc3339Numeric();
}

QuandaAbstractNaturalDateTime nlohmann::adl_serializer<QuandaAbstractNaturalDateTime>::from_json(
    const nlohmann::json& json) {
  const auto dateTime = QuandaAbstractNaturalDateTime::makeFromRfc3339Numeric(
      keel::decodeJsonInteger<std::uint64_t>(json.at("serializedRfc3339Numeric")));
  if (!dateTime) throw KeelDecodingError("Failed to create dateTime from numeric");
  return dateTime.value();
}
