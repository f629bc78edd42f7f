// QuandaDateMaskBase<Mask>: the identity and archive members that every concrete mask defines the
// same way, written once.
//
// A concrete mask derives from QuandaDateMaskBase<itself>, declares `static constexpr
// std::string_view kind` (its tag in the tagged archive), operator==, a std::hash specialisation
// and a nlohmann::adl_serializer specialisation; this base turns them into the virtual archiveKind,
// encode, isEqual and hashValue of QuandaDateMasking, and adds decode().
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "Quanda/DateMasks/QuandaDateMasking.h"

template <class Mask>
class QuandaDateMaskBase : public QuandaDateMasking {
 public:
  std::string_view archiveKind() const final { return Mask::kind; }
  void encode(nlohmann::json& json) const final {
    nlohmann::adl_serializer<Mask>::to_json(json, self());
  }
  bool isEqual(const QuandaDateMasking& other) const final {
    const auto* same = dynamic_cast<const Mask*>(&other);
    return same != nullptr && *same == self();
  }
  std::size_t hashValue() const final { return std::hash<Mask>{}(self()); }

  // The mask of the archive form written by encode. Throws KeelDecodingError or nlohmann's
  // exceptions for anything else.
  static Mask decode(const nlohmann::json& json) {
    return nlohmann::adl_serializer<Mask>::from_json(json);
  }

 protected:
  QuandaDateMaskBase() = default;

 private:
  const Mask& self() const noexcept { return static_cast<const Mask&>(*this); }
};
