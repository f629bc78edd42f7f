// QuandaAbstractDateRangeFormatting: whatever writes a range of abstract dates (from its min to
// its max, as given) as localized text by a date range style.
//
// Implemented by QuandaFormattedAbstractDateRangeCache; an app may implement it over anything
// else.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelDomain.h"
#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Formatting/QuandaDateRangeFormatStyle.h"

class QuandaAbstractDateRangeFormatting {
 public:
  virtual ~QuandaAbstractDateRangeFormatting() = default;

  virtual KeelResult<std::string> format(KeelDomain<QuandaAbstractDate> dateRange,
                                         std::string_view localeIdentifier,
                                         QuandaDateRangeFormatStyle style) = 0;

 protected:
  QuandaAbstractDateRangeFormatting() = default;
  QuandaAbstractDateRangeFormatting(const QuandaAbstractDateRangeFormatting&) = default;
  QuandaAbstractDateRangeFormatting& operator=(const QuandaAbstractDateRangeFormatting&) = default;
};
