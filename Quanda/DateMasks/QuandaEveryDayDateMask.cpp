#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"

#include <nlohmann/json.hpp>

void nlohmann::adl_serializer<QuandaEveryDayDateMask>::to_json(nlohmann::json& json,
                                                               const QuandaEveryDayDateMask&) {
  json = nlohmann::json::object();
}

QuandaEveryDayDateMask nlohmann::adl_serializer<QuandaEveryDayDateMask>::from_json(
    const nlohmann::json& json) {
  if (!json.is_object()) {
    throw nlohmann::json::type_error::create(
        302, std::string("type must be object, but is ") + json.type_name(), &json);
  }
  return QuandaEveryDayDateMask();
}
