#include "apps/studio/document/document_change.h"

#include <utility>

namespace sorvanix::studio {

DocumentChange::DocumentChange(Document& document, std::optional<std::size_t> material, Json after,
                               const QString& what, const QString& series)
    : QUndoCommand(what),
      document_(document),
      material_(material),
      folder_(document.Folder()),
      before_(material ? document.Materials()[*material] : document.Scene()),
      after_(std::move(after)),
      series_(series) {}

bool DocumentChange::mergeWith(const QUndoCommand* next) {
  const auto& other = *static_cast<const DocumentChange*>(next);  // of the same id
  if (other.material_ != material_ || other.series_ != series_ || other.folder_ != folder_) {
    return false;
  }
  after_ = other.after_;
  return true;
}

// The document may have been saved elsewhere since.
void DocumentChange::Put(const Json& json) {
  const FolderChange change = {document_.Catalogue(), folder_, document_.Folder()};
  const bool moved = change.from != change.to;
  if (material_) {
    document_.PutMaterial(*material_, moved ? MoveMaterial(json, change) : json);
  } else {
    document_.PutScene(moved ? MoveScene(json, change) : json);
  }
}

}  // namespace sorvanix::studio
