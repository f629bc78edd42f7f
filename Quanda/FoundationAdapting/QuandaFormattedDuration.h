// QuandaFormattedDuration: the text of a duration and the language it was written in.
//
// The language code is the one of the locale that produced the text ("en" for "en_US"), absent
// when that locale has none (the root locale). Callers use it for language-specific touches that
// do not belong in the adapter, such as trimming the final period of an English abbreviation.
#pragma once

#include <optional>
#include <ostream>
#include <string>

struct QuandaFormattedDuration {
  std::string formattedDuration;
  std::optional<std::string> languageCode;

  friend bool operator==(const QuandaFormattedDuration&, const QuandaFormattedDuration&) = default;
  // "1h 2m (en)", or the text alone when there is no language code.
  std::string description() const {
    return languageCode ? formattedDuration + " (" + *languageCode + ")" : formattedDuration;
  }
  friend std::ostream& operator<<(std::ostream& stream, const QuandaFormattedDuration& duration) {
    return stream << duration.description();
  }
};
