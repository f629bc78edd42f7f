// Compares a KeelError chain, outermost link first, with what a caller should see: each link's
// operation and arguments, and the message, which only the innermost link carries.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Keel/KeelError.h"

struct ExpectedErrorLink {
  std::string functionName;
  std::vector<std::pair<std::string, std::string>> args;
  std::string message = {};  // empty for a wrapping link
};

inline void expectErrorChain(const KeelError& error, const std::vector<ExpectedErrorLink>& links,
                             std::string_view fileName) {
  const KeelError* link = &error;
  for (std::size_t index = 0; index < links.size(); ++index) {
    SCOPED_TRACE("link " + std::to_string(index) + ": " + links[index].functionName);
    ASSERT_NE(link, nullptr) << "the chain is shorter than expected:\n" << error;
    EXPECT_EQ(link->functionName(), links[index].functionName);
    EXPECT_EQ(link->fileName(), fileName);
    EXPECT_EQ(link->message(), links[index].message);
    std::vector<std::pair<std::string, std::string>> args;
    for (const KeelArgument& argument : link->args())
      args.emplace_back(argument.key, argument.value);
    EXPECT_EQ(args, links[index].args);
    EXPECT_GT(link->lineNumber(), 0u);
    link = link->error();
  }
  EXPECT_EQ(link, nullptr) << "the chain is longer than expected:\n" << error;
}
