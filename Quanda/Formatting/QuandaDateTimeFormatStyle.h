// QuandaDateTimeFormatStyle: how a formatter writes a date-time, as a date style, a time style or
// both.
//
//   QuandaDateTimeFormatStyle::dateOnly(QuandaDateFormatStyle::full)
//   QuandaDateTimeFormatStyle::timeOnly(QuandaTimeFormatStyle::short_)
//   QuandaDateTimeFormatStyle::dateAndTime(QuandaDateFormatStyle::long_,
//                                          QuandaTimeFormatStyle::short_)
//
// dateStyle() and timeStyle() give the part each case carries and nothing for the part it leaves
// out, which the formatter then writes with the platform's "none" style. Values compare and hash
// by case and payload; the three factories are the only way to make one, so there is no style
// without a part.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "Keel/KeelHash.h"
#include "Quanda/Formatting/QuandaDateFormatStyle.h"
#include "Quanda/Formatting/QuandaTimeFormatStyle.h"

class QuandaDateTimeFormatStyle {
 public:
  static constexpr QuandaDateTimeFormatStyle dateOnly(QuandaDateFormatStyle dateStyle) noexcept {
    return {dateStyle, std::nullopt};
  }
  static constexpr QuandaDateTimeFormatStyle timeOnly(QuandaTimeFormatStyle timeStyle) noexcept {
    return {std::nullopt, timeStyle};
  }
  static constexpr QuandaDateTimeFormatStyle dateAndTime(QuandaDateFormatStyle dateStyle,
                                                         QuandaTimeFormatStyle timeStyle) noexcept {
    return {dateStyle, timeStyle};
  }

  // The date's style: present for dateOnly and dateAndTime.
  constexpr std::optional<QuandaDateFormatStyle> dateStyle() const noexcept { return dateStyle_; }
  // The time's style: present for timeOnly and dateAndTime.
  constexpr std::optional<QuandaTimeFormatStyle> timeStyle() const noexcept { return timeStyle_; }

  // "dateOnly(full)", "timeOnly(short)", "dateAndTime(dateStyle: long, timeStyle: short)".
  std::string description() const {
    if (!timeStyle_) return "dateOnly(" + std::string(caseName(*dateStyle_)) + ")";
    if (!dateStyle_) return "timeOnly(" + std::string(caseName(*timeStyle_)) + ")";
    return "dateAndTime(dateStyle: " + std::string(caseName(*dateStyle_)) +
           ", timeStyle: " + std::string(caseName(*timeStyle_)) + ")";
  }

  friend constexpr bool operator==(const QuandaDateTimeFormatStyle&,
                                   const QuandaDateTimeFormatStyle&) = default;
  friend std::ostream& operator<<(std::ostream& stream, const QuandaDateTimeFormatStyle& style) {
    return stream << style.description();
  }

 private:
  constexpr QuandaDateTimeFormatStyle(std::optional<QuandaDateFormatStyle> dateStyle,
                                      std::optional<QuandaTimeFormatStyle> timeStyle) noexcept
      : dateStyle_(dateStyle), timeStyle_(timeStyle) {}

  std::optional<QuandaDateFormatStyle> dateStyle_;
  std::optional<QuandaTimeFormatStyle> timeStyle_;
};

template <>
struct std::hash<QuandaDateTimeFormatStyle> {
  std::size_t operator()(const QuandaDateTimeFormatStyle& style) const noexcept {
    return keel::hashFields(style.dateStyle(), style.timeStyle());
  }
};
