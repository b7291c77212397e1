// What the user works on: one material of the document, and a place in its graphs.
#pragma once

#include <QObject>

#include "apps/studio/document/document.h"
#include "apps/studio/document/graph_edit.h"

namespace sorvanix::studio {

class Selection : public QObject {
  Q_OBJECT

 public:
  /// The first material, and its colour channel. The document must outlive it.
  explicit Selection(Document& document);

  /// -1 when the document has no material.
  int Material() const { return material_; }
  const GraphPlace& Place() const { return place_; }
  /// The selected material; null when there is none.
  const Json* MaterialJson() const;
  /// What stands at the place; null for nothing.
  const Json* Graph() const;

  void SetMaterial(int index);
  void SetPlace(const GraphPlace& place);

 Q_SIGNALS:
  void MaterialSelected(int index);
  void PlaceSelected();

 private:
  void Settle();

  inline static const GraphPlace kFirst = {.channel = "colour", .inputs = {}};
  Document& document_;
  int material_ = 0;
  GraphPlace place_ = kFirst;
};

}  // namespace sorvanix::studio
