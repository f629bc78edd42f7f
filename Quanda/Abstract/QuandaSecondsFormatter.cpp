#include "Quanda/Abstract/QuandaSecondsFormatter.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

#include <cmath>

#include "Quanda/QuandaConstants.h"

struct QuandaSecondsFormatter::Implementation {
  // Two integer digits exactly, six fraction digits, rounding toward zero so that 59.9999999
  // never becomes "60.000000".
  explicit Implementation(const icu::Locale& locale)
      : formatter(icu::number::NumberFormatter::withLocale(locale)
                      .integerWidth(icu::number::IntegerWidth::zeroFillTo(2).truncateAt(2))
                      .precision(icu::number::Precision::fixedFraction(6))
                      .roundingMode(UNUM_ROUND_DOWN)) {}

  icu::number::LocalizedNumberFormatter formatter;
};

QuandaSecondsFormatter::QuandaSecondsFormatter(std::string_view localeIdentifier)
    : implementation_(std::make_shared<const Implementation>(
          icu::Locale(std::string(localeIdentifier).c_str()))) {}

QuandaSecondsFormatter::QuandaSecondsFormatter(DefaultLocale)
    : implementation_(std::make_shared<const Implementation>(icu::Locale::getDefault())) {}

const QuandaSecondsFormatter& QuandaSecondsFormatter::shared() {
  static const QuandaSecondsFormatter formatter{DefaultLocale{}};
  return formatter;
}

void QuandaSecondsFormatter::appendFormatted(double seconds, std::string& text) const {
  if (std::isnan(seconds)) return;
  // Clamping keeps the value inside the two integer digits, where the fixed width can only cut
  // the fraction; adding 0.0 turns -0 into +0, which would otherwise print a minus sign.
  const double value =
      Quanda::SecondsIn::Gregorian::Minute::validSecondsWithSubSecondsDomainInc.clamp(seconds) +
      0.0;
  UErrorCode status = U_ZERO_ERROR;
  const icu::number::FormattedNumber formatted =
      implementation_->formatter.formatDouble(value, status);
  if (U_FAILURE(status)) return;
  const icu::UnicodeString unicode = formatted.toTempString(status);
  if (U_FAILURE(status)) return;
  unicode.toUTF8String(text);
}

std::string QuandaSecondsFormatter::format(double seconds) const {
  std::string text;
  appendFormatted(seconds, text);
  return text;
}
