// KeelResult<T>: the outcome of every fallible operation, either a T or the KeelError that says
// why there is none. There is no third state and no partially valid result.
//
//   KeelResult<QuandaAbstractDate> date = QuandaAbstractDate::make(2024, 2, 29);
//   if (!date) return KeelResult<Plan>(date.error(), {{"day", text}}, path, "plan(day:)",
//   __LINE__); use(date.value());
//
// A success holds the value inline and allocates nothing. Taking the value of a failure (or the
// error of a success) is a programming error and stops the process.
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

  // Passes an existing error on unchanged.
  static KeelResult failure(KeelError error) { return KeelResult(std::move(error), Failure{}); }

  bool hasValue() const noexcept { return storage_.index() == 0; }
  explicit operator bool() const noexcept { return hasValue(); }

  const T& value() const& {
    KEEL_PRECONDITION(hasValue(), "value() of a failed KeelResult");
    return *std::get_if<0>(&storage_);
  }
  T&& value() && {
    KEEL_PRECONDITION(hasValue(), "value() of a failed KeelResult");
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
  struct Failure {};
  KeelResult(KeelError error, Failure) : storage_(std::in_place_index<1>, std::move(error)) {}

  std::variant<T, KeelError> storage_;
};
