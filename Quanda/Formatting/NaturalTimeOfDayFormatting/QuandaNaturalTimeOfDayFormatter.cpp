#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaNaturalTimeOfDayFormatter.h"

#include <cstdint>
#include <utility>

#include "Keel/KeelPrecondition.h"

namespace {

constexpr std::string_view path = QuandaNaturalTimeOfDayFormatter::sourcePath;

// The adapter's text, or its failure wrapped with the time, the locale and the style or template.
template <class Choice>
KeelResult<std::string> labelled(KeelResult<std::string> text,
                                 QuandaAbstractNaturalTimeOfDay timeOfDay,
                                 std::string_view localeIdentifier, std::string_view choiceKey,
                                 Choice choice, std::string_view function,
                                 std::uint32_t lineNumber = __builtin_LINE()) {
  if (!text) {
    text = KeelError::wrap(text.error(),
                           {{"timeOfDay", timeOfDay},
                            {"localeIdentifier", localeIdentifier},
                            {choiceKey, caseName(choice)}},
                           path, function, lineNumber);
  }
  return text;
}

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
  return labelled(calendarAdapter_->format(timeOfDay.components(), localeIdentifier, style),
                  timeOfDay, localeIdentifier, "style", style,
                  "format(timeOfDay:localeIdentifier:style:)");
}

KeelResult<std::string> QuandaNaturalTimeOfDayFormatter::format(
    QuandaAbstractNaturalTimeOfDay timeOfDay, std::string_view localeIdentifier,
    QuandaKnownTimeFormatTemplate template_) {
  return labelled(calendarAdapter_->format(timeOfDay.components(), template_, localeIdentifier),
                  timeOfDay, localeIdentifier, "template", template_,
                  "format(timeOfDay:localeIdentifier:template:)");
}
