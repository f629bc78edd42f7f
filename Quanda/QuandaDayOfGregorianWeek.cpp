#include "Quanda/QuandaDayOfGregorianWeek.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"

KeelResult<std::string> localizedStandaloneName(
    QuandaDayOfGregorianWeek dayOfWeek, QuandaCalendarAdapting& calendarAdapter,
    std::optional<std::string_view> localeIdentifierOverride,
    QuandaStandaloneDayNameFormatStyle style) {
  return quanda_binding::passedOn(
      calendarAdapter.format(dayOfWeek, localeIdentifierOverride, style),
      [&] {
        return KeelArguments{{"dayOfWeek", caseName(dayOfWeek)},
                             {"localeIdentifierOverride", localeIdentifierOverride},
                             {"style", caseName(style)}};
      },
      "Quanda/QuandaDayOfGregorianWeek",
      "localizedStandaloneName(calendarAdapter:localeIdentifierOverride:style:)");
}

std::ostream& operator<<(std::ostream& stream, QuandaDayOfGregorianWeek day) {
  return stream << caseName(day);
}

void nlohmann::adl_serializer<QuandaDayOfGregorianWeek>::to_json(nlohmann::json& json,
                                                                 QuandaDayOfGregorianWeek day) {
  json = std::string(caseName(day));
}

QuandaDayOfGregorianWeek nlohmann::adl_serializer<QuandaDayOfGregorianWeek>::from_json(
    const nlohmann::json& json) {
  const auto& text = json.get_ref<const nlohmann::json::string_t&>();
  if (const auto day = makeDayOfGregorianWeek(std::string_view(text))) return *day;
  throw KeelDecodingError("Unexpected value '" + text + "'");
}
