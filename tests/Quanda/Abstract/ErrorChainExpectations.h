// Helpers shared by the abstract value tests: the check of an error chain against what a caller
// should see, the check of an archive decoder's own failure, and the decimal separator of the
// process's default locale.
#pragma once

#include <gtest/gtest.h>
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelError.h"

// One link: its operation, its argument keys in order ("key=value" checks the value too), and the
// message, which only the innermost link carries. A link of another file names it.
struct ExpectedErrorLink {
  std::string function;
  std::vector<std::string> args;
  std::string message = {};
  std::string_view file = {};
};

// The chain from the outermost link inward; links that name no file are in fileName.
inline void expectErrorChain(const KeelError& error, const std::vector<ExpectedErrorLink>& links,
                             std::string_view fileName) {
  const KeelError* link = &error;
  for (const ExpectedErrorLink& expected : links) {
    ASSERT_NE(link, nullptr) << "the chain is shorter than expected:\n" << error;
    SCOPED_TRACE(expected.function);
    EXPECT_EQ(link->functionName(), expected.function);
    EXPECT_EQ(link->fileName(), expected.file.empty() ? fileName : expected.file);
    EXPECT_EQ(link->message(), expected.message);
    std::vector<std::string> args;
    for (const KeelArgument& argument : link->args()) {
      const std::size_t index = args.size();
      const bool withValue =
          index < expected.args.size() && expected.args[index].find('=') != std::string::npos;
      args.push_back(withValue ? argument.key + "=" + argument.value : argument.key);
    }
    EXPECT_EQ(args, expected.args);
    EXPECT_GT(link->lineNumber(), 0u);
    link = link->error();
  }
  EXPECT_EQ(link, nullptr) << "the chain is longer than expected:\n" << error;
}

// Decoding the JSON text as a T fails with the decoder's own description of corrupt data.
template <class T>
void expectDecodingError(std::string_view jsonText, std::string_view description) {
  try {
    (void)nlohmann::json::parse(jsonText).get<T>();
    ADD_FAILURE() << "decoded " << jsonText;
  } catch (const KeelDecodingError& error) {
    EXPECT_EQ(std::string_view(error.what()), description) << jsonText;
    EXPECT_EQ(error.kind(), KeelDecodingError::Kind::dataCorrupted) << jsonText;
  }
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
