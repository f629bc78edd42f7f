// QuandaCommandSupport: how the quanda program shows results and errors, so that every command
// lays out its output the same way.
//
//   printQuandaTable({{"date", date}, {"day of week", date.dayOfWeek()}}, out);
//   printQuandaError(error, err, verbose);
#pragma once

#include <iosfwd>
#include <string_view>

#include "Keel/KeelError.h"

// Prints one "label: value" line per row, values aligned in one column after the longest label,
// each line starting with indent. A value spanning several lines keeps that column. The rows
// are KeelArguments, so any value the library can describe can be given as it is.
void printQuandaTable(const KeelArguments& rows, std::ostream& out, std::string_view indent = "");

// Prints an error for a person. By default one line: the first fault's message and the input as
// the outermost link names it (the command's own reading of what was typed), or the first fault's
// own arguments when the outermost link names none:
//
//   error: Invalid day for month in year (date: 2023-02-29)
//
// Verbose, the headline is followed by each link of the chain, outermost first and indented one
// step deeper than the link that wrapped it, with its operation, source path and line, its
// message, its arguments (key: value, aligned) and the platform's own error text where there is
// one.
void printQuandaError(const KeelError& error, std::ostream& err, bool verbose = false);
