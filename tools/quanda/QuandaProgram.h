// QuandaProgram: the quanda program's own behaviour, apart from main() so that tests can run it.
//
//   quanda                      shows every command at work (its demonstrations)
//   quanda help | --help | -h   lists the commands with their usage and summary
//   quanda help <command>       shows one command's usage, summary and examples
//   quanda <command> args...    runs the command; its exit status is the program's
//
// An unknown command prints the listing to err and ends with quandaExitUsage.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// Runs the program on its arguments (without the program's own name) and returns its exit
// status.
int runQuandaProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
