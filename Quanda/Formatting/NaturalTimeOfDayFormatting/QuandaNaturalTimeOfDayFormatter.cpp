#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaNaturalTimeOfDayFormatter.h"

#include <utility>

#include "Keel/KeelPrecondition.h"

namespace {
constexpr std::string_view path = QuandaNaturalTimeOfDayFormatter::sourcePath;
}  // namespace

QuandaNaturalTimeOfDayFormatter::QuandaNaturalTimeOfDayFormatter(
    std::shared_ptr<QuandaCalendarAdapting> calendarAdapter)
    : calendarAdapter_(std::move(calendarAdapter)) {
  KEEL_PRECONDITION(calendarAdapter_ != nullptr,
                    "a time-of-day formatter needs a calendar adapter");
}

KeelResult<std::string> QuandaNaturalTimeOfDayFormatter::format(
    QuandaAbstractNaturalTimeOfDay timeOfDay, std::string_view localeIdentifier,
    QuandaTimeFormatStyle style) {
  KeelResult<std::string> text =
      calendarAdapter_->format(timeOfDay.components(), localeIdentifier, style);
  if (!text) {
    return KeelError::wrap(text.error(),
                           {{"timeOfDay", timeOfDay},
                            {"localeIdentifier", localeIdentifier},
                            {"style", caseName(style)}},
                           path, "format(timeOfDay:localeIdentifier:style:)");
  }
  return text;
}

KeelResult<std::string> QuandaNaturalTimeOfDayFormatter::format(
    QuandaAbstractNaturalTimeOfDay timeOfDay, std::string_view localeIdentifier,
    QuandaKnownTimeFormatTemplate template_) {
  KeelResult<std::string> text =
      calendarAdapter_->format(timeOfDay.components(), template_, localeIdentifier);
  if (!text) {
    return KeelError::wrap(text.error(),
                           {{"timeOfDay", timeOfDay},
                            {"localeIdentifier", localeIdentifier},
                            {"template", caseName(template_)}},
                           path, "format(timeOfDay:localeIdentifier:template:)");
  }
  return text;
}
