// QuandaNaturalTimeOfDayFormatting: whatever writes a whole-second time of day as localized text,
// by a time style or a known template.
//
// Implemented by QuandaNaturalTimeOfDayFormatter and by QuandaFormattedNaturalTimeOfDayCache (the
// same formatter behind a bounded cache of finished strings), so that either can stand where the
// app expects this interface.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay.h"
#include "Quanda/Formatting/QuandaKnownTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaTimeFormatStyle.h"

class QuandaNaturalTimeOfDayFormatting {
 public:
  virtual ~QuandaNaturalTimeOfDayFormatting() = default;

  virtual KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                         std::string_view localeIdentifier,
                                         QuandaTimeFormatStyle style) = 0;
  virtual KeelResult<std::string> format(QuandaAbstractNaturalTimeOfDay timeOfDay,
                                         std::string_view localeIdentifier,
                                         QuandaKnownTimeFormatTemplate template_) = 0;

 protected:
  QuandaNaturalTimeOfDayFormatting() = default;
  QuandaNaturalTimeOfDayFormatting(const QuandaNaturalTimeOfDayFormatting&) = default;
  QuandaNaturalTimeOfDayFormatting& operator=(const QuandaNaturalTimeOfDayFormatting&) = default;
};
