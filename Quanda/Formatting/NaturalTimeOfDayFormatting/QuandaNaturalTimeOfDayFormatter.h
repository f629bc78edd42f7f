// QuandaNaturalTimeOfDayFormatter: writes whole-second times of day as localized text through a
// calendar adapter, by a time style or a known template.
//
//   QuandaNaturalTimeOfDayFormatter formatter(adapter);
//   formatter.format(time, "en_US", QuandaTimeFormatStyle::short_);   // "1:05 PM"
//
// The adapter writes the time on a fixed date in UTC, so the text never depends on the device's
// zone. The formatter holds its adapter (shared) and nothing else: copies are the same formatter,
// and it is used from one thread at a time, as its adapter is. A failure is the adapter's,
// wrapped with the operation's arguments and signature text.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Formatting/NaturalTimeOfDayFormatting/QuandaNaturalTimeOfDayFormatting.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

class QuandaNaturalTimeOfDayFormatter final : public QuandaNaturalTimeOfDayFormatting {
 public:
  static constexpr std::string_view sourcePath =
      "Quanda/Formatting/Natural Time Of Day Formatting/QuandaNaturalTimeOfDayFormatter";

  // A null adapter is a programming error.
  explicit QuandaNaturalTimeOfDayFormatter(std::shared_ptr<QuandaCalendarAdapting> calendarAdapter);

  QuandaCalendarAdapting& calendarAdapter() const noexcept { return *calendarAdapter_; }

  // "format(timeOfDay:localeIdentifier:style:)": the adapter's text for the time in the style.
  KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                 std::string_view localeIdentifier,
                                 QuandaTimeFormatStyle style) override;
  // "format(timeOfDay:localeIdentifier:template:)": the same by a known template.
  KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                 std::string_view localeIdentifier,
                                 QuandaKnownTimeFormatTemplate template_) override;

 private:
  std::shared_ptr<QuandaCalendarAdapting> calendarAdapter_;
};
