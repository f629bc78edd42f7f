// Small helpers shared by the date masks' JSON archive code.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace quanda_detail {

// The archived value must be a JSON list; anything else is nlohmann's type_error, like every other
// mismatch of JSON kinds.
inline const nlohmann::json& requireJsonArray(const nlohmann::json& json) {
  if (!json.is_array()) {
    throw nlohmann::json::type_error::create(
        302, std::string("type must be array, but is ") + json.type_name(), &json);
  }
  return json;
}

// The value under a key of a keyed record: a missing key or a value that is not a record is
// nlohmann's own out_of_range or type_error.
inline const nlohmann::json& requireJsonKey(const nlohmann::json& json, std::string_view key) {
  if (!json.is_object()) {
    throw nlohmann::json::type_error::create(
        302, std::string("type must be object, but is ") + json.type_name(), &json);
  }
  return json.at(std::string(key));
}

}  // namespace quanda_detail
