#include "tools/quanda/QuandaCommandSupport.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace {

void printLink(const KeelError& link, std::ostream& err, const std::string& indent) {
  err << indent << "in " << link.functionName() << " at " << link.fileName() << ':'
      << link.lineNumber() << '\n';
  // Details sit deeper than the next link of the chain, so each link reads as one block.
  const std::string detailIndent = indent + "    ";
  if (!link.message().empty()) err << detailIndent << '"' << link.message() << "\"\n";
  KeelArguments rows = link.args();
  if (link.frameworkError()) rows.emplace_back("platform error", *link.frameworkError());
  printQuandaTable(rows, err, detailIndent);
}

}  // namespace

void printQuandaTable(const KeelArguments& rows, std::ostream& out, std::string_view indent) {
  std::size_t labelWidth = 0;
  for (const KeelArgument& row : rows) labelWidth = std::max(labelWidth, row.key.size());
  const std::string continuation(indent.size() + labelWidth + 2, ' ');
  for (const KeelArgument& row : rows) {
    out << indent << row.key << ':' << std::string(labelWidth - row.key.size() + 1, ' ');
    for (const char c : row.value) {
      out << c;
      if (c == '\n') out << continuation;
    }
    out << '\n';
  }
}

void printQuandaError(const KeelError& error, std::ostream& err, bool verbose) {
  const KeelError& first = error.innermost();
  err << "error: " << (first.message().empty() ? "the operation failed" : first.message());
  if (!verbose) {
    const KeelArguments& input = error.args().empty() ? first.args() : error.args();
    for (std::size_t index = 0; index < input.size(); ++index) {
      err << (index == 0 ? " (" : ", ") << input[index].key << ": " << input[index].value;
    }
    err << (input.empty() ? "" : ")");
    // A text the library could not read names the part it stopped at and why.
    const auto explained = [&](std::string_view key) -> const std::string* {
      for (const KeelArgument& argument : first.args()) {
        if (argument.key == key) return &argument.value;
      }
      return nullptr;
    };
    const std::string* part = explained("part");
    const std::string* reason = explained("reason");
    if (part != nullptr && !part->empty()) err << ": \"" << *part << '"';
    if (reason != nullptr) err << ": " << *reason;
    err << '\n';
    return;
  }
  err << '\n';
  std::string indent = "  ";
  for (const KeelError* link = &error; link != nullptr; link = link->error()) {
    printLink(*link, err, indent);
    indent += "  ";
  }
}
