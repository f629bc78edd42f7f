// The program run as a test sees it: its exit status and what it wrote to each stream.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tools/quanda/QuandaProgram.h"

struct QuandaProgramRun {
  int status;
  std::string out;
  std::string err;
};

inline QuandaProgramRun runQuandaProgramCapturing(const std::vector<std::string>& args) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = runQuandaProgram(args, out, err);
  return {status, out.str(), err.str()};
}
