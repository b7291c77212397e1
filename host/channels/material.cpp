#include "host/channels/material.h"

#include <sorvanix/ids.h>

#include <algorithm>

#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

ContainerValue ToContainer(const ParameterValue& value) {
  struct Visitor {
    ContainerValue operator()(std::int32_t integer) const { return Word{integer}; }
    ContainerValue operator()(float real) const { return real; }
    ContainerValue operator()(bool truth) const { return truth; }
    ContainerValue operator()(const Vector& vector) const { return vector; }
    ContainerValue operator()(const std::string& text) const { return Text(text); }
  };
  return std::visit(Visitor(), value);
}

// The name of the value, when it is one of its parameter's choices.
std::string_view ChoiceOf(const MaterialNode::Value& given) {
  const auto* integer = std::get_if<std::int32_t>(&given.value);
  if (integer == nullptr) return {};
  for (const ParameterChoice& choice : given.parameter->choices) {
    if (choice.value == *integer) return choice.name;
  }
  return {};
}

Json ToJson(const ShaderParameter& parameter, const ParameterValue& value) {
  struct Visitor {
    const ShaderParameter& parameter;
    Json operator()(std::int32_t integer) const {
      const std::string_view choice = ChoiceOf({&parameter, integer});
      return choice.empty() ? JsonOf(integer) : Json(std::string(choice));
    }
    Json operator()(float real) const { return JsonOf(real); }
    Json operator()(bool truth) const { return Json(truth); }
    Json operator()(const Vector& vector) const { return JsonOf(vector); }
    Json operator()(const std::string& text) const { return Json(text); }
  };
  return std::visit(Visitor{parameter}, value);
}

}  // namespace

Container ContainerOf(const MaterialNode& node) {
  Container container;
  for (const MaterialNode::Value& each : node.values) {
    container.Set(each.parameter->key, ToContainer(each.value));
  }
  for (const MaterialInput& each : node.inputs) {
    Container link;
    link.Set(KeyLinkPluginId, Word{each.node.shader->id});
    link.Set(KeyLinkParameters, NestedContainer(ContainerOf(each.node)));
    container.Set(each.input->key, NestedContainer(link));
  }
  return container;
}

Json JsonOf(const MaterialNode& node) {
  Json::Object members = {{"shader", Json(node.shader->name)}};
  for (const MaterialNode::Value& each : node.values) {
    members.push_back({each.parameter->name, ToJson(*each.parameter, each.value)});
  }
  for (const MaterialInput& each : node.inputs) {
    members.push_back({each.input->name, JsonOf(each.node)});
  }
  return Json(std::move(members));
}

bool DrawsRandomNumbers(const MaterialNode& node) {
  constexpr std::string_view kRandomNoise = "WhiteRandomType";
  return std::any_of(
             node.values.begin(), node.values.end(),
             [&](const MaterialNode::Value& each) { return ChoiceOf(each) == kRandomNoise; }) ||
         std::any_of(node.inputs.begin(), node.inputs.end(),
                     [](const MaterialInput& each) { return DrawsRandomNumbers(each.node); });
}

}  // namespace sorvanix::host
