#include "Quanda/DateMasks/QuandaDateMaskArchive.h"

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "Keel/KeelDecodingError.h"
#include "Keel/KeelPrecondition.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"
#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaMonthCycleDateMask.h"
#include "Quanda/DateMasks/QuandaMonthsOfYearDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeeksOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeeksOfMonthDateMask.h"

namespace {

using Decoder = std::shared_ptr<const QuandaDateMasking> (*)(const nlohmann::json&);

template <class Mask>
std::shared_ptr<const QuandaDateMasking> decode(const nlohmann::json& json) {
  return std::make_shared<const Mask>(Mask::decode(json));
}

template <class Mask>
constexpr std::pair<std::string_view, Decoder> entry() {
  return {Mask::kind, &decode<Mask>};
}

constexpr std::array decoders{
    entry<QuandaEveryDayDateMask>(),        entry<QuandaDaysOfWeekDateMask>(),
    entry<QuandaDaysOfMonthDateMask>(),     entry<QuandaReverseDaysOfMonthDateMask>(),
    entry<QuandaWeeksOfMonthDateMask>(),    entry<QuandaReverseWeeksOfMonthDateMask>(),
    entry<QuandaWeekdaysOfMonthDateMask>(), entry<QuandaReverseWeekdaysOfMonthDateMask>(),
    entry<QuandaDayCycleDateMask>(),        entry<QuandaWeekCycleDateMask>(),
    entry<QuandaDaysOfWeeksDateMask>(),     entry<QuandaDateRangeDateMask>(),
    entry<QuandaDateRangesDateMask>(),      entry<QuandaAllOfDateMask>(),
    entry<QuandaAnyOfDateMask>(),           entry<QuandaNotDateMask>(),
    entry<QuandaMonthsOfYearDateMask>(),    entry<QuandaMonthCycleDateMask>(),
};

// How deep the decoder is inside nested combinations, on this thread.
thread_local std::size_t nesting = 0;

struct NestingLevel {
  NestingLevel() {
    if (nesting >= maximumDateMaskNesting) {
      throw KeelDecodingError("Date masks nested too deeply");
    }
    ++nesting;
  }
  ~NestingLevel() { --nesting; }
  NestingLevel(const NestingLevel&) = delete;
  NestingLevel& operator=(const NestingLevel&) = delete;
};

}  // namespace

nlohmann::json encodeTaggedDateMask(const QuandaDateMasking& mask) {
  nlohmann::json own;
  mask.encode(own);
  return {{"kind", std::string(mask.archiveKind())}, {"mask", std::move(own)}};
}

std::shared_ptr<const QuandaDateMasking> decodeTaggedDateMask(const nlohmann::json& json) {
  const NestingLevel level;
  const auto& kind =
      quanda_detail::requireJsonKey(json, "kind").get_ref<const nlohmann::json::string_t&>();
  const nlohmann::json& own = quanda_detail::requireJsonKey(json, "mask");
  for (const auto& [name, decoder] : decoders) {
    if (name == kind) return decoder(own);
  }
  throw KeelDecodingError("Unknown date mask kind '" + kind + "'");
}

void nlohmann::adl_serializer<std::shared_ptr<const QuandaDateMasking>>::to_json(
    nlohmann::json& json, const std::shared_ptr<const QuandaDateMasking>& mask) {
  KEEL_PRECONDITION(mask != nullptr, "cannot archive a null date mask");
  json = encodeTaggedDateMask(*mask);
}

std::shared_ptr<const QuandaDateMasking> nlohmann::adl_serializer<
    std::shared_ptr<const QuandaDateMasking>>::from_json(const nlohmann::json& json) {
  return decodeTaggedDateMask(json);
}
