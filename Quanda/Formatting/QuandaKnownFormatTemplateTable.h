// What the known-template enumerations share: each case stands for one fixed format template,
// with a flag that says whether the template is a skeleton to be localized or a pattern to be
// used as it is.
//
// A localized template is a skeleton ("MMMMyyyy"): the adapter asks the platform for the locale's
// own pattern with those fields, so the fields come in the locale's order with its separators
// ("February 2024", "2024年2月"). A template used as it is is a pattern in its own right ("H": the
// hour 0 to 23, without leading zero, unit or day period). Each enumeration lists its templates
// once, in declaration order, by specialising QuandaKnownFormatTemplates:
//
//   unlocalizedFormatStringTemplate(QuandaKnownDateFormatTemplate::fullMonthAndYear);     //
//   "MMMMyyyy" shouldLocalizeFormatStringTemplate(QuandaKnownDateFormatTemplate::fullMonthAndYear);
//   // true
#pragma once

#include <cstddef>
#include <string_view>

#include "Quanda/Formatting/QuandaFormatEnumeration.h"

struct QuandaKnownFormatTemplate {
  std::string_view unlocalizedFormatStringTemplate;
  bool shouldLocalizeFormatStringTemplate;
};

template <class Enumeration>
struct QuandaKnownFormatTemplates;

template <class Enumeration>
concept QuandaKnownFormatTemplateEnumeration = QuandaNamedEnumeration<Enumeration> && requires {
  QuandaKnownFormatTemplates<Enumeration>::templates;
};

// The template as the platform's formatter takes it (a skeleton or a pattern).
template <QuandaKnownFormatTemplateEnumeration Enumeration>
constexpr std::string_view unlocalizedFormatStringTemplate(Enumeration value) noexcept {
  return QuandaKnownFormatTemplates<Enumeration>::templates[static_cast<std::size_t>(value)]
      .unlocalizedFormatStringTemplate;
}

// True when the template is a skeleton that the adapter localizes for the chosen locale; false
// when it is set as the formatter's pattern verbatim.
template <QuandaKnownFormatTemplateEnumeration Enumeration>
constexpr bool shouldLocalizeFormatStringTemplate(Enumeration value) noexcept {
  return QuandaKnownFormatTemplates<Enumeration>::templates[static_cast<std::size_t>(value)]
      .shouldLocalizeFormatStringTemplate;
}
