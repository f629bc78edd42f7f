// QuandaImportedRecurrence: what a calendar's recurrence rule becomes here (see
// QuandaRecurrenceRule::importing): the date mask of its occurrences, the first day of the week
// its weeks begin on, and the first date it was read from.
#pragma once

#include <memory>

#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMasking.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

struct QuandaImportedRecurrence {
  // The occurrences: every date the mask matches (with firstDayOfWeek) is one, none before start.
  std::shared_ptr<const QuandaDateMasking> mask;
  // The first day of the week the rule's weeks begin on (its WKST, Monday when absent); only a
  // weekly rule with an interval consults it.
  QuandaDayOfGregorianWeek firstDayOfWeek = QuandaDayOfGregorianWeek::monday;
  // The date the rule starts from (its DTSTART, or the start the caller gave).
  QuandaAbstractDate start = QuandaAbstractDate::zero;
};
