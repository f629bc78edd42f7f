#include <iostream>
#include <string>
#include <vector>

#include "tools/quanda/QuandaProgram.h"

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
  return runQuandaProgram(args, std::cout, std::cerr);
}
