// One step of a document's history: a material, or the whole scene, before and after.
#pragma once

#include <QUndoCommand>
#include <filesystem>
#include <optional>

#include "apps/studio/document/document.h"

namespace sorvanix::studio {

class DocumentChange : public QUndoCommand {
 public:
  /// Of one material, or without a number of the whole scene. Redoing it makes the change.
  /// Changes with the same `series` that follow one another become one step.
  DocumentChange(Document& document, std::optional<std::size_t> material, Json after,
                 const QString& what, const QString& series = {});

  void undo() override { Put(before_); }
  void redo() override { Put(after_); }
  int id() const override { return series_.isEmpty() ? -1 : 1; }
  bool mergeWith(const QUndoCommand* next) override;

 private:
  void Put(const Json& json);

  Document& document_;
  std::optional<std::size_t> material_;
  std::filesystem::path folder_;  // that names of files in the two are relative to
  Json before_, after_;
  QString series_;
};

}  // namespace sorvanix::studio
