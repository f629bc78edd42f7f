// QuandaDurationFormatter: writes spans of time as localized text through a calendar adapter.
//
// Each span becomes its seconds as a double (a natural or discrete span its whole count, a real
// one as it is), which the adapter writes in the style and locale given. The formatter adds one
// touch of its own: English abbreviated units end in a period that does not belong at the end of
// a duration, so when the adapter reports the language "en" and the text ends in ".", that one
// final character is dropped ("1 hr, 1 min." becomes "1 hr, 1 min"). Any other language, or none,
// keeps the text as it is.
//
//   QuandaDurationFormatter formatter(adapter);
//   formatter.format(QuandaNaturalTimeSpan(5400), "en_US", QuandaDurationFormatStyle::shortDelta);
//
// The formatter holds its adapter (shared) and nothing else: copies are the same formatter, and
// it is as thread-safe as its adapter, which is to say one thread at a time. A failure is the
// adapter's, wrapped twice: by the span's operation, "format(natural:localeIdentifier:style:)"
// and its siblings, around the one every span goes through,
// "format(duration:localeIdentifier:style:)".
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Formatting/DurationFormatting/QuandaDurationFormatting.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

class QuandaDurationFormatter final : public QuandaDurationFormatting {
 public:
  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Duration Formatting/QuandaDurationFormatter";

  // A null adapter is a programming error.
  explicit QuandaDurationFormatter(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter);

  QuandaCalendarAdapting& calendarAdapter() const noexcept { return *calendarAdapter_; }

  KeelResult<std::string> format(QuandaRealTimeSpan real, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;
  KeelResult<std::string> format(QuandaDiscreteTimeSpan discrete, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;
  KeelResult<std::string> format(QuandaNaturalTimeSpan natural, std::string_view localeIdentifier,
                                 QuandaDurationFormatStyle style) override;

 private:
  // "format(duration:localeIdentifier:style:)": the adapter's text, with the English final period
  // dropped.
  KeelResult<std::string> formatDuration(double duration, std::string_view localeIdentifier,
                                         QuandaDurationFormatStyle style);

  std::shared_ptr<QuandaCalendarAdapting> calendarAdapter_;
};
