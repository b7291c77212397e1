#include "host/channels/material.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <utility>

#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

void Store(Container& container, const ShaderParameter& parameter, const ParameterValue& value) {
  struct Visitor {
    Container& container;
    const ShaderParameter& parameter;
    void operator()(std::int32_t integer) const { Set(Word{integer}); }
    void operator()(float real) const { Set(real); }
    void operator()(bool truth) const { Set(truth); }
    void operator()(const Vector& vector) const { Set(vector); }
    void operator()(const std::string& text) const { Set(Text(text)); }
    void operator()(const Ramp& ramp) const {
      const RampKeys& keys = parameter.ramp;
      container.Set(keys.count, static_cast<Word>(ramp.size()));
      std::int32_t offset = 0;
      for (const RampKnot& knot : ramp) {
        container.Set(keys.colour + offset, knot.colour);
        container.Set(keys.position + offset, knot.position);
        container.Set(keys.bias + offset, knot.bias);
        offset += keys.stride;
      }
    }
    void Set(ContainerValue single) const { container.Set(parameter.key, std::move(single)); }
  };
  std::visit(Visitor{container, parameter}, value);
}

Container DescriptionOf(const MaterialNode& node) {
  Container link;
  link.Set(KeyLinkPluginId, Word{node.shader->id});
  link.Set(KeyLinkParameters, NestedContainer(ContainerOf(node)));
  return link;
}

Container DescriptionOf(const MaterialBitmap& bitmap) {
  Container link;
  link.Set(KeyLinkPluginId, Word{0});
  link.Set(KeyLinkFilename, Filename(Utf8FromPath(bitmap.file)));
  return link;
}

Json JsonOf(const MaterialBitmap& bitmap) { return Json(bitmap.name); }

// What the value is, when it is one of its parameter's choices; else null.
const ParameterChoice* ChoiceOf(const MaterialNode::Value& given) {
  const auto* integer = std::get_if<std::int32_t>(&given.value);
  if (integer == nullptr) return nullptr;
  for (const ParameterChoice& choice : given.parameter->choices) {
    if (choice.value == *integer) return &choice;
  }
  return nullptr;
}

}  // namespace

Json JsonOf(const ShaderParameter& parameter, const ParameterValue& value) {
  struct Visitor {
    const ShaderParameter& parameter;
    Json operator()(std::int32_t integer) const {
      const ParameterChoice* choice = ChoiceOf({&parameter, integer});
      return choice == nullptr ? JsonOf(integer) : Json(choice->name);
    }
    Json operator()(float real) const { return JsonOf(real); }
    Json operator()(bool truth) const { return Json(truth); }
    Json operator()(const Vector& vector) const { return JsonOf(vector); }
    Json operator()(const std::string& text) const { return Json(text); }
    Json operator()(const Ramp& ramp) const {
      Json::Array knots;
      for (const RampKnot& knot : ramp) {
        knots.push_back(Json(Json::Object{{"position", JsonOf(knot.position)},
                                          {"colour", JsonOf(knot.colour)},
                                          {"bias", JsonOf(knot.bias)}}));
      }
      return Json(std::move(knots));
    }
  };
  return std::visit(Visitor{parameter}, value);
}

Container ContainerOf(const MaterialNode& node) {
  Container container;
  for (const MaterialNode::Value& each : node.values) {
    Store(container, *each.parameter, each.value);
  }
  for (const MaterialInput& each : node.inputs) {
    const Container link =
        std::visit([](const auto& content) { return DescriptionOf(content); }, each.content);
    container.Set(each.input->key, NestedContainer(link));
  }
  return container;
}

Json JsonOf(const MaterialNode& node) {
  Json::Object members = {{"shader", Json(node.shader->name)}};
  for (const MaterialNode::Value& each : node.values) {
    members.push_back({each.parameter->name, JsonOf(*each.parameter, each.value)});
  }
  for (const MaterialInput& each : node.inputs) {
    members.push_back(
        {each.input->name,
         std::visit([](const auto& content) { return JsonOf(content); }, each.content)});
  }
  return Json(std::move(members));
}

bool DrawsRandomNumbers(const MaterialNode& node) {
  const auto isRandom = [](const MaterialNode::Value& each) {
    const ParameterChoice* choice = ChoiceOf(each);
    return choice != nullptr && choice->random;
  };
  return std::any_of(node.values.begin(), node.values.end(), isRandom) ||
         std::any_of(node.inputs.begin(), node.inputs.end(), [](const MaterialInput& each) {
           const auto* inner = std::get_if<MaterialNode>(&each.content);
           return inner != nullptr && DrawsRandomNumbers(*inner);
         });
}

}  // namespace sorvanix::host
