// Which ends of a closed domain count as inside it. The library itself always asks for the first
// case, both bounds inclusive.
#pragma once

enum class KeelBoundsEligibility {
  inclusiveMinInclusiveMax,
  inclusiveMinExclusiveMax,
  exclusiveMinInclusiveMax,
  exclusiveMinExclusiveMax,
};
