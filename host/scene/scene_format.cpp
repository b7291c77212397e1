#include "host/scene/scene_format.h"

#include <algorithm>

namespace sorvanix::host {
namespace {

FieldRule NotNegative() { return {.least = 0}; }
FieldRule Colour() { return {.isColour = true}; }

/// A field of what an object holds.
template <class Content, class Value>
SceneField<ObjectContent> Own(std::string name, Value Content::*member, FieldRule rule = {}) {
  const auto access = [member](auto& content) -> auto& {
    return std::get<Content>(content).*member;
  };
  return FieldAt<ObjectContent>(std::move(name), access, std::move(rule));
}

/// The three fields of a Transform that is a member of a record.
template <class Record>
void AddTransform(SceneFields<Record>& fields, Transform Record::*transform, bool withScale) {
  const auto add = [&](const char* name, Vector Transform::*member) {
    const auto access = [=](auto& record) -> auto& { return record.*transform.*member; };
    fields.push_back(FieldAt<Record>(name, access));
  };
  add("position", &Transform::position);
  add("rotation", &Transform::rotation);
  if (withScale) add("scale", &Transform::scale);
}

using ContentFields = SceneFields<ObjectContent>;

ContentFields PrimitiveFields(ContentFields sizes) {
  const FieldRule segments = {.least = 1, .greatest = kMostSegments};
  sizes.push_back(Own("segmentsU", &Primitive::segmentsU, segments));
  sizes.push_back(Own("segmentsV", &Primitive::segmentsV, segments));
  return sizes;
}

ObjectKind PrimitiveKind(std::string_view name, PrimitiveShape shape, ContentFields sizes) {
  return {name, DefaultPrimitive(shape), PrimitiveFields(std::move(sizes))};
}

ObjectKind LightOf(std::string_view name, LightKind kind, ContentFields more = {}) {
  ContentFields fields = {Own("colour", &LightContent::colour, Colour()),
                          Own("intensity", &LightContent::intensity)};
  if (kind != LightKind::Ambient) {
    ContentFields common = {Own("contrast", &LightContent::contrast),
                            Own("falloff", &LightContent::falloff,
                                {.choices = Choices({"none", "linear", "inverseSquare"})}),
                            Own("range", &LightContent::range, NotNegative()),
                            Own("shadows", &LightContent::shadows),
                            Own("specular", &LightContent::specular)};
    std::move(common.begin(), common.end(), std::back_inserter(fields));
  }
  fields.push_back(Own("diffuse", &LightContent::diffuse));
  std::move(more.begin(), more.end(), std::back_inserter(fields));
  return {name, LightContent{.kind = kind}, std::move(fields)};
}

std::vector<ObjectKind> MakeObjectKinds() {
  const auto radius = Own("radius", &Primitive::radius, NotNegative());
  const auto width = Own("width", &Primitive::width, NotNegative());
  const auto height = Own("height", &Primitive::height, NotNegative());
  const auto depth = Own("depth", &Primitive::depth, NotNegative());
  const FieldRule cone = {.least = 0, .greatest = 90};
  const ContentFields area = {Own("width", &LightContent::width, NotNegative()),
                              Own("height", &LightContent::height, NotNegative())};
  return {
      {"null", NullContent{}, {}},
      PrimitiveKind("sphere", PrimitiveShape::Sphere, {radius}),
      PrimitiveKind("cube", PrimitiveShape::Cube, {width, height, depth}),
      PrimitiveKind("plane", PrimitiveShape::Plane, {width, depth}),
      PrimitiveKind("cylinder", PrimitiveShape::Cylinder,
                    {radius, height, Own("caps", &Primitive::caps)}),
      PrimitiveKind("torus", PrimitiveShape::Torus,
                    {radius, Own("pipeRadius", &Primitive::pipeRadius, NotNegative())}),
      {"mesh", MeshContent{}, {Own("file", &MeshContent::file)}},
      {"particles", ParticleContent{}, {}},
      LightOf("omniLight", LightKind::Omni),
      LightOf("spotLight", LightKind::Spot,
              {Own("innerAngle", &LightContent::innerAngle, cone),
               Own("outerAngle", &LightContent::outerAngle, cone)}),
      LightOf("distantLight", LightKind::Distant),
      LightOf("rectangleLight", LightKind::Rectangle, area),
      LightOf("discLight", LightKind::Disc, area),
      LightOf("ambientLight", LightKind::Ambient),
  };
}

bool IsOfKind(const ObjectContent& content, const ObjectKind& kind) {
  if (content.index() != kind.initial.index()) return false;
  if (const auto* primitive = std::get_if<Primitive>(&content)) {
    return primitive->shape == std::get<Primitive>(kind.initial).shape;
  }
  if (const auto* light = std::get_if<LightContent>(&content)) {
    return light->kind == std::get<LightContent>(kind.initial).kind;
  }
  return true;
}

SceneFields<Camera> MakeCameraFields() {
  const FieldRule pixels = {.least = 1, .greatest = 65536};
  SceneFields<Camera> fields;
  AddTransform(fields, &Camera::transform, /*withScale=*/false);
  fields.push_back(Field("fieldOfView", &Camera::fieldOfView, {.least = 0.1, .greatest = 179}));
  fields.push_back(Field("width", &Camera::width, pixels));
  fields.push_back(Field("height", &Camera::height, pixels));
  return fields;
}

SceneFields<Object> MakeObjectFields() {
  SceneFields<Object> fields = {FieldAt<Object>(
      "name", [](auto& object) -> auto& { return object.name.text; })};
  AddTransform(fields, &Object::transform, /*withScale=*/true);
  fields.push_back(Field("visible", &Object::visible));
  return fields;
}

SceneFields<TextureTagNode> MakeTextureFields() {
  using Tag = TextureTagNode;
  SceneFields<Tag> fields = {
      Field("projection", &Tag::projection,
            {.choices = Choices({"sphere", "cylinder", "flat", "cube", "frontal", "spatial", "uvw",
                                 "shrinkWrap"})}),
      Field("uvwSet", &Tag::uvwSet, NotNegative()),
      Field("offsetU", &Tag::offsetU),
      Field("offsetV", &Tag::offsetV),
      Field("lengthU", &Tag::lengthU),
      Field("lengthV", &Tag::lengthV),
      Field("tile", &Tag::tile),
      Field("mirrored", &Tag::mirrored)};
  AddTransform(fields, &Tag::placement, /*withScale=*/true);
  return fields;
}

}  // namespace

const std::vector<ObjectKind>& ObjectKinds() {
  static const std::vector<ObjectKind> kinds = MakeObjectKinds();
  return kinds;
}

const ObjectKind* FindObjectKind(std::string_view name) {
  const auto found = std::find_if(ObjectKinds().begin(), ObjectKinds().end(),
                                  [&](const ObjectKind& kind) { return kind.name == name; });
  return found == ObjectKinds().end() ? nullptr : &*found;
}

const ObjectKind& KindOfContent(const ObjectContent& content) {
  const auto found = std::find_if(ObjectKinds().begin(), ObjectKinds().end(),
                                  [&](const ObjectKind& kind) { return IsOfKind(content, kind); });
  return found == ObjectKinds().end() ? ObjectKinds().front() : *found;
}

const SceneFields<Scene>& FieldsOfScenes() {
  static const SceneFields<Scene> fields = {Field("background", &Scene::background, Colour())};
  return fields;
}

const SceneFields<Camera>& FieldsOfCameras() {
  static const SceneFields<Camera> fields = MakeCameraFields();
  return fields;
}

const SceneFields<Object>& FieldsOfObjects() {
  static const SceneFields<Object> fields = MakeObjectFields();
  return fields;
}

const SceneFields<TextureTagNode>& FieldsOfTextures() {
  static const SceneFields<TextureTagNode> fields = MakeTextureFields();
  return fields;
}

const SceneFields<ParticleItem>& FieldsOfParticles() {
  static const SceneFields<ParticleItem> fields = {Field("position", &ParticleItem::position),
                                                   Field("visible", &ParticleItem::visible),
                                                   Field("alive", &ParticleItem::alive)};
  return fields;
}

const SceneFields<Material>& FieldsOfMaterials() {
  static const SceneFields<Material> fields = {
      FieldAt<Material>(
          "name", [](auto& material) -> auto& { return material.name.text; }),
      Field("highlightExponent", &Material::highlightExponent, NotNegative())};
  return fields;
}

const SceneFields<MaterialChannel>& FieldsOfChannels() {
  static const SceneFields<MaterialChannel> fields = {
      Field("on", &MaterialChannel::on), Field("strength", &MaterialChannel::strength),
      Field("colour", &MaterialChannel::colour, Colour())};
  return fields;
}

}  // namespace sorvanix::host
