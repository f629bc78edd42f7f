// Helpers shared by the date-time tests.
#pragma once

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "Keel/KeelError.h"

namespace quanda_test {

inline constexpr std::string_view naturalDateTimePath =
    "Quanda/Abstract/QuandaAbstractNaturalDateTime";
inline constexpr std::string_view realDateTimePath = "Quanda/Abstract/QuandaAbstractRealDateTime";
inline constexpr std::string_view datePath = "Quanda/Abstract/QuandaAbstractDate";
inline constexpr std::string_view naturalTimePath =
    "Quanda/Abstract/QuandaAbstractNaturalTimeOfDay";
inline constexpr std::string_view realTimePath = "Quanda/Abstract/QuandaAbstractRealTimeOfDay";

// One link of an error chain, as a date-time's failure crosses several types.
struct ChainLink {
  std::string_view file;
  std::string_view function;
  std::string_view message;  // empty for a wrapping link
  std::vector<std::string_view> keys;
};

// The chain from the outermost link inward, link by link.
inline void expectErrorChain(const KeelError& error, const std::vector<ChainLink>& links) {
  const KeelError* link = &error;
  for (const ChainLink& expected : links) {
    ASSERT_NE(link, nullptr) << "chain shorter than expected";
    EXPECT_EQ(link->fileName(), expected.file);
    EXPECT_EQ(link->functionName(), expected.function);
    EXPECT_EQ(link->message(), expected.message);
    std::vector<std::string_view> keys;
    for (const KeelArgument& argument : link->args()) keys.push_back(argument.key);
    EXPECT_EQ(keys, expected.keys);
    link = link->error();
  }
  EXPECT_EQ(link, nullptr) << "chain longer than expected";
}

}  // namespace quanda_test
