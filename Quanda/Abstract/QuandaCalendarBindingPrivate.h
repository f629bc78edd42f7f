// What the value types' operations through a calendar adapter share: the few lines that pass an
// adapter's answer on (its error wrapped once with the operation's own arguments, path and
// signature), that validate components the adapter read, and that name an adapter, a time
// provider and an instant in an error's arguments.
//
// Arguments are built by a callable only on failure, so a success allocates nothing here. Each
// helper takes its caller's line from a default argument, as KeelError::wrap does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Keel/KeelDate.h"
#include "Keel/KeelError.h"
#include "Keel/KeelResult.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "Quanda/QuandaTimeProviding.h"

namespace quanda_binding {

// An instant as its seconds since 1970, the form the adapter's own errors name it in; a logic
// interval by its description (the same number).
inline std::string describeInstant(KeelDate instant) {
  return keel::describeDouble(instant.time_since_epoch().count());
}
inline std::string describeInstant(QuandaLogicTimeInterval instant) {
  return instant.description();
}
// The library's adapter by its description (its device's locale and zone), another adapter and
// any time provider by their type's name.
std::string describeAdapter(const QuandaCalendarAdapting& calendarAdapter);
std::string describeProvider(const QuandaTimeProviding& timeProvider);

// The arguments of a factory that reads an instant: the instant under its key, the adapter, and
// the zone when one is named.
template <class Instant>
auto readingArguments(std::string_view key, Instant instant,
                      const QuandaCalendarAdapting& calendarAdapter,
                      std::optional<std::string_view> timezoneIdentifier = std::nullopt) {
  return [=, &calendarAdapter] {
    KeelArguments args{{key, describeInstant(instant)},
                       {"calendarAdapter", describeAdapter(calendarAdapter)}};
    if (timezoneIdentifier) args.emplace_back("timezoneIdentifier", *timezoneIdentifier);
    return args;
  };
}

// The callee's result as it is, or its error wrapped with args().
template <class Value, class Args>
KeelResult<Value> passedOn(KeelResult<Value> result, const Args& args, std::string_view path,
                           std::string_view function, std::uint32_t lineNumber = __builtin_LINE()) {
  if (!result) return KeelError::wrap(result.error(), args(), path, function, lineNumber);
  return result;
}

// The value that Value::make makes of the components an adapter read. A failure of the reading
// or of the validation is wrapped with args(), to which a validation failure adds "components"
// where the operation names them.
enum class NamesComponents : bool { no, yes };

template <class Value, class Components, class Args>
KeelResult<Value> madeFrom(const KeelResult<Components>& components, const Args& args,
                           NamesComponents namesComponents, std::string_view path,
                           std::string_view function, std::uint32_t lineNumber = __builtin_LINE()) {
  if (!components) return KeelError::wrap(components.error(), args(), path, function, lineNumber);
  KeelResult<Value> value = Value::make(components.value());
  if (!value) {
    KeelArguments failed = args();
    if (namesComponents == NamesComponents::yes)
      failed.emplace_back("components", components.value());
    return KeelError::wrap(value.error(), std::move(failed), path, function, lineNumber);
  }
  return value;
}

}  // namespace quanda_binding
