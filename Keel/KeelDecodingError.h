// KeelDecodingError: thrown by the JSON archive decoders when the archived data is well-formed JSON
// of the right kind but does not describe a valid value. what() is the fixed description of the
// failure ("Failed to create date from int"). JSON type errors stay nlohmann's own exceptions.
#pragma once

#include <stdexcept>
#include <string>

class KeelDecodingError : public std::runtime_error {
 public:
  enum class Kind { dataCorrupted };

  explicit KeelDecodingError(const std::string& description, Kind kind = Kind::dataCorrupted)
      : std::runtime_error(description), kind_(kind) {}

  Kind kind() const noexcept { return kind_; }

 private:
  Kind kind_;
};
