// KEEL_PRECONDITION: the one way this library stops on a programming error.
//
// A caller that breaks a documented precondition (an arithmetic overflow, a double that does not
// fit the integer it is converted to, an index outside a table, a zero cycle length) has a bug,
// not a recoverable condition. Such a call never returns a value and never throws: it prints what
// went wrong and where, then calls std::abort(). Conditions that a caller can meet in normal use
// are reported through KeelResult instead.
//
// The macro can be used inside constexpr functions: a failing check there is not a constant
// expression, so a compile-time evaluation that would fail does not compile.
#pragma once

namespace keel_detail {
[[noreturn]] void preconditionFailure(const char* message, const char* file, int line,
                                      const char* function) noexcept;
}  // namespace keel_detail

#define KEEL_PRECONDITION(condition, message) \
  ((condition) ? static_cast<void>(0)         \
               : ::keel_detail::preconditionFailure((message), __FILE__, __LINE__, __func__))
