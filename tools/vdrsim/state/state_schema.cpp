#include "state/state_schema.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "datapath/caps.h"
#include "state/shape.h"
#include "state/tables.h"

namespace vdrsim {

namespace {

using Json = nlohmann::ordered_json;
using shape::Collection;
using shape::Member;
using shape::Scalar;
using shape::Shape;
using shape::Struct;

constexpr const char* kDialect = "https://json-schema.org/draft/2020-12/schema";

Json SchemaOf(const Scalar& scalar) { return Json::parse(fmt::format("{{{}}}", scalar.schema())); }

// Goes over the tables from a state on, and describes each kind of object once.
class Describer {
 public:
  Json Describe() {
    Json schema = {{"$schema", kDialect}, {"title", "State of the simulated datapath"}};
    schema.update(Members(&HeaderTable(), StateTable()));
    schema["$defs"] = std::move(definitions_);
    return schema;
  }

 private:
  Json Of(const Shape& shape) {
    if (const auto* scalar = std::get_if<const Scalar*>(&shape)) return SchemaOf(**scalar);
    if (const auto* members = std::get_if<const Struct*>(&shape))
      return Reference(nullptr, **members);
    return Of(*std::get<const Collection*>(shape));
  }

  Json Of(const Collection& collection) {
    Json elements = Of(collection.element, collection.key);
    Json schema = {{"type", collection.name ? "object" : "array"}};
    if (collection.name) schema["propertyNames"] = SchemaOf(*collection.name);
    schema[collection.name ? "additionalProperties" : "items"] = std::move(elements);
    if (collection.most != kNoCap) {
      schema[collection.name ? "maxProperties" : "maxItems"] = collection.most;
    }
    return schema;
  }

  Json Of(const Shape& element, const Struct* key) {
    const auto* members = std::get_if<const Struct*>(&element);
    return members ? Reference(key, **members) : Of(element);
  }

  Json Reference(const Struct* key, const Struct& members) {
    const std::string name = std::string(key ? key->name : "") + members.name;
    if (!definitions_.contains(name)) {
      definitions_[name] = nullptr;  // keeps the place
      Json definition = Members(key, members);
      definitions_[name] = std::move(definition);
    }
    return {{"$ref", "#/$defs/" + name}};
  }

  Json Members(const Struct* key, const Struct& members) {
    Json properties = Json::object();
    Json required = Json::array();
    for (const Struct* part : {key, &members}) {
      if (!part) continue;
      for (const Member& member : part->members) {
        properties[member.name] = Of(member.shape);
        if (member.isRequired) required.push_back(member.name);
      }
    }
    Json schema = {{"type", "object"}, {"properties", std::move(properties)}};
    if (!required.empty()) schema["required"] = std::move(required);
    schema["additionalProperties"] = false;
    return schema;
  }

  Json definitions_ = Json::object();
};

}  // namespace

std::string StateSchema() { return Describer().Describe().dump(2) + "\n"; }

}  // namespace vdrsim
