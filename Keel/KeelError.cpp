#include "Keel/KeelError.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ostream>

namespace keel {

std::string describeDouble(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

}  // namespace keel

struct KeelError::Record {
  std::string message;
  KeelArguments args;
  std::string fileName;
  std::string functionName;
  std::uint32_t lineNumber;
  std::optional<std::string> frameworkError;
  std::optional<KeelError> inner;
};

KeelError::KeelError(std::string_view message, KeelArguments args, std::string_view fileName,
                     std::string_view functionName, std::uint32_t lineNumber,
                     std::optional<std::string> frameworkError)
    : record_(std::make_shared<const Record>(Record{
          std::string(message), std::move(args), std::string(fileName), std::string(functionName),
          lineNumber, std::move(frameworkError), std::nullopt})) {}

KeelError::KeelError(KeelError inner, KeelArguments args, std::string_view fileName,
                     std::string_view functionName, std::uint32_t lineNumber)
    : record_(std::make_shared<const Record>(
          Record{std::string(), std::move(args), std::string(fileName), std::string(functionName),
                 lineNumber, std::nullopt, std::optional<KeelError>(std::move(inner))})) {}

const std::string& KeelError::message() const noexcept { return record_->message; }
const KeelArguments& KeelError::args() const noexcept { return record_->args; }
const std::string& KeelError::fileName() const noexcept { return record_->fileName; }
const std::string& KeelError::functionName() const noexcept { return record_->functionName; }
std::uint32_t KeelError::lineNumber() const noexcept { return record_->lineNumber; }
const std::optional<std::string>& KeelError::frameworkError() const noexcept {
  return record_->frameworkError;
}
const KeelError* KeelError::error() const noexcept {
  return record_->inner ? &*record_->inner : nullptr;
}

const KeelError& KeelError::innermost() const noexcept {
  const KeelError* current = this;
  while (const KeelError* inner = current->error()) current = inner;
  return *current;
}

std::optional<std::string_view> KeelError::argument(std::string_view key) const noexcept {
  for (const auto& argument : record_->args) {
    if (argument.key == key) return std::string_view(argument.value);
  }
  return std::nullopt;
}

std::string KeelError::description() const {
  std::string text;
  if (!record_->message.empty()) {
    text += '"';
    text += record_->message;
    text += "\" ";
  }
  if (!record_->args.empty()) {
    text += '{';
    bool first = true;
    for (const auto& argument : record_->args) {
      if (!first) text += ", ";
      first = false;
      text += argument.key;
      text += ": ";
      text += argument.value;
    }
    text += "} ";
  }
  text += "in ";
  text += record_->functionName;
  text += " (";
  text += record_->fileName;
  text += ':';
  text += std::to_string(record_->lineNumber);
  text += ')';
  if (record_->frameworkError) {
    text += " [";
    text += *record_->frameworkError;
    text += ']';
  }
  return text;
}

std::string KeelError::chainDescription() const {
  std::string text;
  std::string indent;
  for (const KeelError* link = this; link != nullptr; link = link->error()) {
    if (!text.empty()) text += '\n';
    text += indent;
    text += link->description();
    indent += "  ";
  }
  return text;
}

bool operator==(const KeelError& lhs, const KeelError& rhs) noexcept {
  if (lhs.record_ == rhs.record_) return true;
  const auto& a = *lhs.record_;
  const auto& b = *rhs.record_;
  return a.message == b.message && a.args == b.args && a.fileName == b.fileName &&
         a.functionName == b.functionName && a.lineNumber == b.lineNumber &&
         a.frameworkError == b.frameworkError && a.inner == b.inner;
}

std::ostream& operator<<(std::ostream& stream, const KeelError& error) {
  return stream << error.innermost().message() << '\n' << error.chainDescription();
}

namespace keel_detail {

void failedResultAccess(const KeelError& error) noexcept {
  std::fprintf(stderr, "Precondition failed: value() of a failed KeelResult\n%s\n%s\n",
               error.innermost().message().c_str(), error.chainDescription().c_str());
  std::fflush(stderr);
  std::abort();
}

}  // namespace keel_detail
