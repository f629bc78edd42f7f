#include "tools/quanda/QuandaOptions.h"

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

namespace {

template <class Target>
CLI::Option* addFirstDay(CLI::App& command, Target& firstDay, const std::string& description) {
  return addQuandaLibraryOption(command, "--first-day", firstDay, makeDayOfGregorianWeekFromSyntax,
                                description)
      ->type_name("DAY");
}

}  // namespace

CLI::Option* addQuandaFirstDayOption(CLI::App& command, QuandaDayOfGregorianWeek& firstDay) {
  return addFirstDay(command, firstDay, "The day weeks start on (monday by default)");
}

CLI::Option* addQuandaFirstDayOption(CLI::App& command,
                                     std::optional<QuandaDayOfGregorianWeek>& firstDay) {
  return addFirstDay(command, firstDay, "The day weeks start on (the locale's by default)");
}
