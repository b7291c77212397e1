#include "apps/studio/document/selection.h"

#include <algorithm>

namespace sorvanix::studio {

Selection::Selection(Document& document) : document_(document) {
  connect(&document_, &Document::Replaced, this, [this] {
    material_ = 0;
    place_ = kFirst;
  });
  connect(&document_, &Document::SceneChanged, this, &Selection::Settle);
  Settle();
}

const Json* Selection::MaterialJson() const {
  const Json::Array& materials = document_.Materials();
  const auto index = static_cast<std::size_t>(material_);
  return material_ >= 0 && index < materials.size() ? &materials[index] : nullptr;
}

const Json* Selection::Graph() const {
  const Json* material = MaterialJson();
  return material != nullptr ? FindGraph(*material, place_) : nullptr;
}

void Selection::SetMaterial(int index) {
  if (index == material_) return;
  material_ = index;
  Settle();
}

void Selection::SetPlace(const GraphPlace& place) {
  if (place == place_) return;
  place_ = place;
  Q_EMIT PlaceSelected();
}

// After the number of materials may have changed.
void Selection::Settle() {
  const int count = static_cast<int>(document_.Materials().size());
  material_ = std::min(std::max(material_, 0), count - 1);
  Q_EMIT MaterialSelected(material_);
}

}  // namespace sorvanix::studio
