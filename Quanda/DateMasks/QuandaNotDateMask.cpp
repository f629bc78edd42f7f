#include "Quanda/DateMasks/QuandaNotDateMask.h"

#include <nlohmann/json.hpp>

#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

QuandaNotDateMask::QuandaNotDateMask(std::shared_ptr<const QuandaDateMasking> mask)
    : mask_(std::move(mask)) {
  KEEL_PRECONDITION(mask_ != nullptr, "a not mask needs a mask");
  if (const auto* sets = mask_->monthDaySets()) setMonthDaySets(sets->complement());
  setDomainStarts(domainStartsOf(*mask_));
}

void nlohmann::adl_serializer<QuandaNotDateMask>::to_json(nlohmann::json& json,
                                                          const QuandaNotDateMask& mask) {
  json = {{"mask", encodeTaggedDateMask(*mask.mask())}};
}

QuandaNotDateMask nlohmann::adl_serializer<QuandaNotDateMask>::from_json(
    const nlohmann::json& json) {
  return QuandaNotDateMask(decodeTaggedDateMask(quanda_detail::requireJsonKey(json, "mask")));
}
