// QuandaDurationFormatting: whatever writes a span of time as localized text.
//
// The app depends on this interface rather than on a concrete formatter, so that a
// QuandaDurationFormatter and a QuandaFormattedDurationCache (the same formatter behind a bounded
// cache of finished strings) can stand for each other. Each operation takes a span, a locale
// identifier ("en_US", "de_DE") and a QuandaDurationFormatStyle, and gives the text or the
// library's error.
#pragma once

#include <string>
#include <string_view>

#include "Keel/KeelResult.h"
#include "Quanda/Formatting/QuandaDurationFormatStyle.h"
#include "Quanda/TimeSpans/QuandaDiscreteTimeSpan.h"
#include "Quanda/TimeSpans/QuandaNaturalTimeSpan.h"
#include "Quanda/TimeSpans/QuandaRealTimeSpan.h"

class QuandaDurationFormatting {
 public:
  virtual ~QuandaDurationFormatting() = default;

  virtual KeelResult<std::string> format(QuandaRealTimeSpan real, std::string_view localeIdentifier,
                                         QuandaDurationFormatStyle style) = 0;
  virtual KeelResult<std::string> format(QuandaDiscreteTimeSpan discrete,
                                         std::string_view localeIdentifier,
                                         QuandaDurationFormatStyle style) = 0;
  virtual KeelResult<std::string> format(QuandaNaturalTimeSpan natural,
                                         std::string_view localeIdentifier,
                                         QuandaDurationFormatStyle style) = 0;

 protected:
  QuandaDurationFormatting() = default;
  QuandaDurationFormatting(const QuandaDurationFormatting&) = default;
  QuandaDurationFormatting& operator=(const QuandaDurationFormatting&) = default;
};
