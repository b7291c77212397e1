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

Json ToJson(const ShaderParameter& parameter, const ParameterValue& value) {
  struct Visitor {
    const ShaderParameter& parameter;
    Json operator()(std::int32_t integer) const {
      const auto choice =
          std::find_if(parameter.choices.begin(), parameter.choices.end(),
                       [integer](const ParameterChoice& each) { return each.value == integer; });
      return choice != parameter.choices.end() ? Json(choice->name) : JsonOf(integer);
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

}  // namespace sorvanix::host
