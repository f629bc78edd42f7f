// KeelError: the record of why a fallible operation failed.
//
// An error is made once, at the point of first fault, with a fixed English message, the offending
// inputs as key/value arguments, the source path of the type that failed, the signature text of
// the failing operation and the line. Every caller on the way out wraps it once more with its own
// arguments, path and signature (and no message), so an error reads as the chain of calls from the
// public operation down to the first fault.
//
// An error site is one line that reads like the rule it enforces. A first fault:
//
//   return KeelError::fault("Invalid year", proposed(year, month, day), path, function);
//
// and the wrapping of a callee's failure:
//
//   if (!date) return KeelError::wrap(date.error(), {{"iso8601Numeric", n}}, path, function);
//
// Both take the caller's line from a default argument, and a KeelResult of any type is made from
// the error they return.
//
// KeelError is a small handle to an immutable, shared record: copying it or wrapping it never
// copies the chain, and an error costs nothing until one is actually made.
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace keel {

// Renders an argument value as text: numbers in decimal (8-bit integers as numbers, not
// characters), doubles in their shortest round-trip form, strings as they are, library types
// through their description(), lists and optionals element by element.
template <class T>
std::string describe(const T& value);

std::string describeDouble(double value);

template <class T>
concept HasDescription = requires(const T& value) {
  { value.description() } -> std::convertible_to<std::string>;
};

template <class T>
std::string describeElement(const T& value) {
  if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    std::string text = "\"";
    text += std::string_view(value);
    text += '"';
    return text;
  } else {
    return describe(value);
  }
}

template <class T>
std::string describe(const T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return value ? "true" : "false";
  } else if constexpr (std::is_integral_v<T>) {
    return std::to_string(+value);
  } else if constexpr (std::is_floating_point_v<T>) {
    return describeDouble(static_cast<double>(value));
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    return std::string(std::string_view(value));
  } else if constexpr (HasDescription<T>) {
    return std::string(value.description());
  } else if constexpr (requires {
                         value.has_value();
                         *value;
                       }) {
    return value.has_value() ? describe(*value) : std::string("nil");
  } else if constexpr (requires {
                         value.begin();
                         value.end();
                       }) {
    std::string text = "[";
    bool first = true;
    for (const auto& element : value) {
      if (!first) text += ", ";
      first = false;
      text += describeElement(element);
    }
    text += ']';
    return text;
  } else {
    static_assert(sizeof(T) == 0, "no textual form for this argument type");
  }
}

}  // namespace keel

// One argument of an error: a key naming the input and the input rendered as text.
struct KeelArgument {
  std::string key;
  std::string value;

  KeelArgument(std::string_view key, std::string value) : key(key), value(std::move(value)) {}
  KeelArgument(std::string_view key, const char* value) : key(key), value(value) {}
  template <class T>
  requires(!std::is_convertible_v<const T&, std::string>)
      KeelArgument(std::string_view key, const T& value)
      : key(key), value(keel::describe(value)) {}

  friend bool operator==(const KeelArgument&, const KeelArgument&) = default;
};

using KeelArguments = std::vector<KeelArgument>;

class KeelError {
 public:
  // A first fault. frameworkError carries the platform's own error text where there is one.
  KeelError(std::string_view message, KeelArguments args, std::string_view fileName,
            std::string_view functionName, std::uint32_t lineNumber,
            std::optional<std::string> frameworkError = std::nullopt);
  // A caller's wrapping of the error of a callee that failed.
  KeelError(KeelError inner, KeelArguments args, std::string_view fileName,
            std::string_view functionName, std::uint32_t lineNumber);

  // The same two, with the line of the call.
  static KeelError fault(std::string_view message, KeelArguments args, std::string_view fileName,
                         std::string_view functionName,
                         std::optional<std::string> frameworkError = std::nullopt,
                         std::uint32_t lineNumber = __builtin_LINE()) {
    return KeelError(message, std::move(args), fileName, functionName, lineNumber,
                     std::move(frameworkError));
  }
  static KeelError wrap(KeelError inner, KeelArguments args, std::string_view fileName,
                        std::string_view functionName,
                        std::uint32_t lineNumber = __builtin_LINE()) {
    return KeelError(std::move(inner), std::move(args), fileName, functionName, lineNumber);
  }

  const std::string& message() const noexcept;  // empty for a wrapping error
  const KeelArguments& args() const noexcept;
  const std::string& fileName() const noexcept;
  const std::string& functionName() const noexcept;
  std::uint32_t lineNumber() const noexcept;
  const std::optional<std::string>& frameworkError() const noexcept;
  // The wrapped inner error, or null for a first fault.
  const KeelError* error() const noexcept;

  // The first fault at the bottom of the chain (this error itself when it wraps nothing).
  const KeelError& innermost() const noexcept;
  // The value of the argument with this key on this link of the chain, if any.
  std::optional<std::string_view> argument(std::string_view key) const noexcept;
  // One line for this link: message (if any), arguments, operation, file and line.
  std::string description() const;
  // The whole chain, outermost first, one line per link, indented by depth.
  std::string chainDescription() const;

  friend bool operator==(const KeelError& lhs, const KeelError& rhs) noexcept;

 private:
  struct Record;
  std::shared_ptr<const Record> record_;
};

// The innermost message on the first line (what went wrong), then the whole chain.
std::ostream& operator<<(std::ostream& stream, const KeelError& error);

namespace keel_detail {
// Stops the process for a value() taken from a failure, printing the error's chain first.
[[noreturn]] void failedResultAccess(const KeelError& error) noexcept;
}  // namespace keel_detail
