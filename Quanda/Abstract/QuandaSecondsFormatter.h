// QuandaSecondsFormatter: the seconds of a real time of day as fixed-width text.
//
// The real time of day writes its seconds as exactly two integer digits and six fraction digits,
// cut rather than rounded (5.5 is "05.500000", 30.1234567 is "30.123456"), in the digits and
// decimal separator of a locale: a German locale writes "05,500000". Building a formatter costs
// far more than using one, so the library keeps one shared instance for the process's default
// locale, built on first use; other instances exist for callers (and tests) that need a given
// locale. Formatting is const and safe from any number of threads.
#pragma once

#include <memory>
#include <string>
#include <string_view>

class QuandaSecondsFormatter {
 public:
  // A formatter for a locale identifier such as "de_DE" or "ar_EG@numbers=latn". Any identifier
  // is accepted; one without data formats as the fallback locale does.
  explicit QuandaSecondsFormatter(std::string_view localeIdentifier);

  // The formatter of the process's default locale as it was when first asked for.
  static const QuandaSecondsFormatter& shared();

  // Appends the seconds to text. Values outside 0 <= seconds < 60 are first clamped into it (the
  // fixed width would otherwise drop digits), and -0 is written as 0. Appends nothing for NaN or
  // if the platform's formatting fails.
  void appendFormatted(double seconds, std::string& text) const;
  std::string format(double seconds) const;

 private:
  struct DefaultLocale {};
  explicit QuandaSecondsFormatter(DefaultLocale);

  struct Implementation;
  std::shared_ptr<const Implementation> implementation_;
};
