// QuandaFirstDayOfGregorianWeekProviding: anything that can say on which weekday the user's weeks
// begin. The calendar adapter is one; a calendar view or a week-based date mask that only needs
// this answer can depend on this interface alone.
#pragma once

#include "Keel/KeelResult.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

class QuandaFirstDayOfGregorianWeekProviding {
 public:
  virtual ~QuandaFirstDayOfGregorianWeekProviding() = default;

  // The weekday on which the user's calendar starts weeks.
  virtual KeelResult<QuandaDayOfGregorianWeek> preferredFirstDayOfWeek() = 0;

 protected:
  QuandaFirstDayOfGregorianWeekProviding() = default;
  QuandaFirstDayOfGregorianWeekProviding(const QuandaFirstDayOfGregorianWeekProviding&) = default;
  QuandaFirstDayOfGregorianWeekProviding& operator=(const QuandaFirstDayOfGregorianWeekProviding&) =
      default;
};
