#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

#include "Quanda/Abstract/QuandaCalendarBindingPrivate.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"

namespace {

// The readable name of an object's dynamic type ("QuandaMockTimeProvider").
template <class Base>
std::string dynamicTypeName(const Base& object) {
  const char* mangled = typeid(object).name();
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> demangled(
      abi::__cxa_demangle(mangled, nullptr, nullptr, &status), std::free);
  return status == 0 && demangled ? std::string(demangled.get()) : std::string(mangled);
}

}  // namespace

std::string quanda_binding::describeAdapter(const QuandaCalendarAdapting& calendarAdapter) {
  if (const auto* foundation =
          dynamic_cast<const QuandaFoundationCalendarAdapter*>(&calendarAdapter)) {
    return foundation->description();
  }
  return dynamicTypeName(calendarAdapter);
}

std::string quanda_binding::describeProvider(const QuandaTimeProviding& timeProvider) {
  return dynamicTypeName(timeProvider);
}
