#include "tools/quanda/QuandaOptions.h"

#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

CLI::Option* addQuandaFirstDayOption(CLI::App& command, QuandaDayOfGregorianWeek& firstDay) {
  return addQuandaLibraryOption(command, "--first-day", firstDay, makeDayOfGregorianWeekFromSyntax,
                                "The day weeks start on (monday by default)")
      ->type_name("DAY");
}
