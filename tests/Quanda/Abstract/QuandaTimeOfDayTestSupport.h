// Helpers shared by the time-of-day tests.
#pragma once

#include <gtest/gtest.h>
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>

#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelError.h"

namespace quanda_test {

// What a failure is expected to carry on one link of its chain.
struct ExpectedLink {
  std::string_view message;   // empty for a wrapping link
  std::string_view function;  // the operation's signature text
  std::vector<std::string_view> keys;
};

inline void expectLink(const KeelError& error, const ExpectedLink& expected,
                       std::string_view fileName) {
  EXPECT_EQ(error.message(), expected.message);
  EXPECT_EQ(error.functionName(), expected.function);
  EXPECT_EQ(error.fileName(), fileName);
  std::vector<std::string_view> keys;
  for (const KeelArgument& argument : error.args()) keys.push_back(argument.key);
  EXPECT_EQ(keys, expected.keys);
}

// The chain from the outermost link inward.
inline void expectChain(const KeelError& error, const std::vector<ExpectedLink>& links,
                        std::string_view fileName) {
  const KeelError* link = &error;
  for (const ExpectedLink& expected : links) {
    ASSERT_NE(link, nullptr) << "chain shorter than expected";
    expectLink(*link, expected, fileName);
    link = link->error();
  }
  EXPECT_EQ(link, nullptr) << "chain longer than expected";
}

// A text written with "." as the decimal separator, as the process's default locale writes it.
inline std::string withDefaultDecimalSeparator(std::string text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols symbols(icu::Locale::getDefault(), status);
  std::string separator;
  symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol)
      .toUTF8String(separator);
  if (const auto point = text.find('.'); point != std::string::npos && U_SUCCESS(status)) {
    text.replace(point, 1, separator);
  }
  return text;
}

}  // namespace quanda_test
