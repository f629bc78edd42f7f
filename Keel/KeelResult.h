// KeelResult<T>: the outcome of every fallible operation, either a T or the KeelError that says
// why there is none. There is no third state and no partially valid result.
//
// clang-format off
//   KeelResult<QuandaAbstractDate> date = QuandaAbstractDate::make(2024, 2, 29);
//   if (!date) return KeelError::wrap(date.error(), {{"day", text}}, path, "plan(day:)");
//   use(date.value());
// clang-format on
//
// A success holds the value inline and allocates nothing. A failure is made from a KeelError (see
// KeelError::fault and KeelError::wrap, or the two constructors that mirror them). Taking the
// value of a failure (which prints its error chain) or the error of a success is a programming
// error and stops the process.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "Keel/KeelError.h"
#include "Keel/KeelPrecondition.h"

template <class T>
class [[nodiscard]] KeelResult {
  static_assert(!std::is_same_v<std::remove_cv_t<T>, KeelError>);

 public:
  // A success.
  KeelResult(T value) : storage_(std::in_place_index<0>, std::move(value)) {}

  // A first fault.
  KeelResult(std::string_view message, KeelArguments args, std::string_view fileName,
             std::string_view functionName, std::uint32_t lineNumber,
             std::optional<std::string> frameworkError = std::nullopt)
      : storage_(std::in_place_index<1>, message, std::move(args), fileName, functionName,
                 lineNumber, std::move(frameworkError)) {}

  // The wrapping of a callee's error.
  KeelResult(KeelError inner, KeelArguments args, std::string_view fileName,
             std::string_view functionName, std::uint32_t lineNumber)
      : storage_(std::in_place_index<1>, std::move(inner), std::move(args), fileName, functionName,
                 lineNumber) {}

  // A failure with this error: a new fault or wrapping (KeelError::fault, KeelError::wrap), or an
  // error passed on unchanged.
  KeelResult(KeelError error) : storage_(std::in_place_index<1>, std::move(error)) {}

  bool hasValue() const noexcept { return storage_.index() == 0; }
  explicit operator bool() const noexcept { return hasValue(); }

  const T& value() const& {
    if (!hasValue()) keel_detail::failedResultAccess(*std::get_if<1>(&storage_));
    return *std::get_if<0>(&storage_);
  }
  T&& value() && {
    if (!hasValue()) keel_detail::failedResultAccess(*std::get_if<1>(&storage_));
    return std::move(*std::get_if<0>(&storage_));
  }
  const KeelError& error() const {
    KEEL_PRECONDITION(!hasValue(), "error() of a successful KeelResult");
    return *std::get_if<1>(&storage_);
  }

  // The value, or nothing for a failure.
  std::optional<T> optionalValue() const {
    return hasValue() ? std::optional<T>(*std::get_if<0>(&storage_)) : std::nullopt;
  }

 private:
  std::variant<T, KeelError> storage_;
};
