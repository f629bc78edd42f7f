// QuandaProgram: the quanda program's own behaviour, apart from main() so that tests can run it.
//
//   quanda                          shows every command at work (its demonstrations)
//   quanda help | -h | --help       lists the commands, one line each
//   quanda help <command>           one command's help: usage, arguments, options, examples
//   quanda <command> -h | --help    the same
//   quanda --version                the program's version
//   quanda [-v] <command> args...   runs the command; -v (anywhere) shows a refusal's whole chain
//
// Exit statuses: 0 success, 1 the library refused a value of the right form, 2 a misuse of the
// program (an unknown command or option, a missing or extra argument, text not of the expected
// form). A refusal or a misuse is one line on err; an unknown command or option names the
// nearest known one.
//
// A run first pins ICU's default locale to en_US_POSIX (tools/quanda/QuandaDevice.h), so that the
// machine forms the library writes in it stay machine-readable; localized text follows --locale
// or the environment's locale instead.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// Runs the program on its arguments (without the program's own name) and returns its exit
// status.
int runQuandaProgram(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
