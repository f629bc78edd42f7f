// QuandaNaturalDateTimeFormatting: whatever writes a whole-second date-time as localized text, by
// a date-time style or a known template. Note that the locale identifier comes last here.
//
// Implemented by QuandaFormattedNaturalDateTimeCache; an app may implement it over anything else.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/Formatting/QuandaDateTimeFormatStyle.h"
#include "Quanda/Formatting/QuandaKnownDateTimeFormatTemplate.h"

class QuandaNaturalDateTimeFormatting {
 public:
  virtual ~QuandaNaturalDateTimeFormatting() = default;

  virtual KeelResult<std::string> format(QuandaAbstractNaturalDateTime naturalDateTime,
                                         QuandaDateTimeFormatStyle dateTimeStyle,
                                         std::string_view localeIdentifier) = 0;
  virtual KeelResult<std::string> format(QuandaAbstractNaturalDateTime naturalDateTime,
                                         QuandaKnownDateTimeFormatTemplate formatStringTemplate,
                                         std::string_view localeIdentifier) = 0;

 protected:
  QuandaNaturalDateTimeFormatting() = default;
  QuandaNaturalDateTimeFormatting(const QuandaNaturalDateTimeFormatting&) = default;
  QuandaNaturalDateTimeFormatting& operator=(const QuandaNaturalDateTimeFormatting&) = default;
};
