// QuandaPreferredTimeFormatProviding: anything that can say whether the user reads hours on a
// 12-hour or a 24-hour clock. The calendar adapter is one; a formatter that only needs this
// answer can depend on this interface alone.
#pragma once

#include "Keel/KeelResult.h"
#include "Quanda/FoundationAdapting/QuandaPreferredTimeFormat.h"

class QuandaPreferredTimeFormatProviding {
 public:
  virtual ~QuandaPreferredTimeFormatProviding() = default;

  // The clock of the user's current locale.
  virtual KeelResult<QuandaPreferredTimeFormat> preferredTimeFormat() = 0;

 protected:
  QuandaPreferredTimeFormatProviding() = default;
  QuandaPreferredTimeFormatProviding(const QuandaPreferredTimeFormatProviding&) = default;
  QuandaPreferredTimeFormatProviding& operator=(const QuandaPreferredTimeFormatProviding&) =
      default;
};
