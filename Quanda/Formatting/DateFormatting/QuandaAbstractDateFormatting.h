// QuandaAbstractDateFormatting: whatever writes an abstract date as localized text by a date
// style.
//
// Implemented by QuandaFormattedAbstractDateCache; an app may implement it over anything else.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/Formatting/QuandaDateFormatStyle.h"

class QuandaAbstractDateFormatting {
 public:
  virtual ~QuandaAbstractDateFormatting() = default;

  virtual KeelResult<std::string> format(QuandaAbstractDate date, std::string_view localeIdentifier,
                                         QuandaDateFormatStyle style) = 0;

 protected:
  QuandaAbstractDateFormatting() = default;
  QuandaAbstractDateFormatting(const QuandaAbstractDateFormatting&) = default;
  QuandaAbstractDateFormatting& operator=(const QuandaAbstractDateFormatting&) = default;
};
