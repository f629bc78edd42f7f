#include "Quanda/Formatting/DurationFormatting/QuandaDurationFormatter.h"

#include <cstdint>
#include <utility>

#include "Keel/KeelPrecondition.h"

namespace {

constexpr std::string_view path = QuandaDurationFormatter::sourcePath;

// A span operation's text: the core's, or the core's failure wrapped with the span under its
// label, then the style and the locale identifier.
template <class Span>
KeelResult<std::string> labelled(KeelResult<std::string> text, std::string_view label, Span span,
                                 std::string_view localeIdentifier, QuandaDurationFormatStyle style,
                                 std::string_view function,
                                 std::uint32_t lineNumber = __builtin_LINE()) {
  if (!text) {
    return KeelError::wrap(
        text.error(),
        {{label, span}, {"style", caseName(style)}, {"localeIdentifier", localeIdentifier}}, path,
        function, lineNumber);
  }
  return text;
}

}  // namespace

QuandaDurationFormatter::QuandaDurationFormatter(
    std::shared_ptr<QuandaCalendarAdapting> calendarAdapter)
    : calendarAdapter_(std::move(calendarAdapter)) {
  KEEL_PRECONDITION(calendarAdapter_ != nullptr, "a duration formatter needs a calendar adapter");
}

KeelResult<std::string> QuandaDurationFormatter::formatDuration(double duration,
                                                                std::string_view localeIdentifier,
                                                                QuandaDurationFormatStyle style) {
  KeelResult<QuandaFormattedDuration> formatted =
      calendarAdapter_->format(duration, localeIdentifier, style);
  if (!formatted) {
    return KeelError::wrap(formatted.error(),
                           {{"duration", duration},
                            {"localeIdentifier", localeIdentifier},
                            {"style", caseName(style)}},
                           path, "format(duration:localeIdentifier:style:)");
  }
  auto& [text, languageCode] = formatted.value();
  std::string result = std::move(text);
  if (languageCode == "en" && result.ends_with('.')) result.pop_back();
  return result;
}

KeelResult<std::string> QuandaDurationFormatter::format(QuandaRealTimeSpan real,
                                                        std::string_view localeIdentifier,
                                                        QuandaDurationFormatStyle style) {
  return labelled(formatDuration(real.seconds(), localeIdentifier, style), "real", real,
                  localeIdentifier, style, "format(real:localeIdentifier:style:)");
}

KeelResult<std::string> QuandaDurationFormatter::format(QuandaDiscreteTimeSpan discrete,
                                                        std::string_view localeIdentifier,
                                                        QuandaDurationFormatStyle style) {
  return labelled(formatDuration(static_cast<double>(discrete.seconds()), localeIdentifier, style),
                  "discrete", discrete, localeIdentifier, style,
                  "format(discrete:localeIdentifier:style:)");
}

KeelResult<std::string> QuandaDurationFormatter::format(QuandaNaturalTimeSpan natural,
                                                        std::string_view localeIdentifier,
                                                        QuandaDurationFormatStyle style) {
  return labelled(formatDuration(static_cast<double>(natural.seconds()), localeIdentifier, style),
                  "natural", natural, localeIdentifier, style,
                  "format(natural:localeIdentifier:style:)");
}
