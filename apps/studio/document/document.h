// The document of the studio: a scene file in memory, and the history of its changes.
//
// It is kept as the JSON of the file, not as what the JSON describes. So nothing is lost that the
// studio does not show, and undoing all changes gives the very bytes that saving gave before them.
#pragma once

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>

#include "apps/studio/document/scene_edit.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

class Document : public QObject {
  Q_OBJECT

 public:
  /// A new scene. The catalogue, which files are checked against, must outlive it.
  explicit Document(const host::ShaderCatalogue& catalogue);

  const Json& Scene() const { return scene_; }
  const host::ShaderCatalogue& Catalogue() const { return catalogue_; }
  const Json::Array& Materials() const { return ListMember(scene_, "materials"); }
  /// Absolute; empty for a scene that was never saved.
  const std::filesystem::path& File() const { return file_; }
  /// What relative names in the scene are relative to; empty without a file.
  std::filesystem::path Folder() const { return file_.parent_path(); }
  /// For people: the file's name, or "Untitled".
  QString Title() const;
  /// As JSON. A scene that is as it was opened keeps its own layout.
  std::string Text() const;
  /// What is doubtful in the file as it was opened, one line for each; empty for nothing.
  const std::string& Warnings() const { return warnings_; }
  /// Whether the file holds something else than what was last read from it or written to it.
  bool IsChangedOnDisk() const;
  /// By which IsChangedOnDisk knows the file; empty without one.
  const std::string& DiskHash() const { return diskHash_; }
  bool IsModified() const { return !history_.isClean(); }
  QUndoStack& History() { return history_; }

  // Each replaces the document or, with an error, leaves it untouched. The error tells file, place
  // and what was expected, one line for each problem.
  void New();
  tl::expected<void, std::string> Open(const std::filesystem::path& file);
  /// What was rescued from a crash: unsaved changes of a file, or of none, and its DiskHash then.
  tl::expected<void, std::string> Recover(const std::string& text,
                                          const std::filesystem::path& file,
                                          const std::string& diskHash);

  /// Writes the file, whole or not at all, in the form that its name says.
  tl::expected<void, std::string> SaveAs(const std::filesystem::path& file);

  /// One step of the history. Checked as a file is: what could not be opened again is refused, with
  /// nothing changed, and one line tells why. No change at all is no step. Changes of a material
  /// that follow one another in the same series, such as turns of the wheel, are one step.
  tl::expected<void, std::string> ChangeMaterial(std::size_t index, Json material,
                                                 const QString& what, const QString& series = {});
  tl::expected<void, std::string> ChangeScene(Json scene, const QString& what);

 Q_SIGNALS:
  /// One material is another now.
  void MaterialChanged(int index);
  /// Anything may be another now, the number of materials too.
  void SceneChanged();
  /// The document has another name.
  void FileChanged();
  /// It is another document now. SceneChanged comes after it.
  void Replaced();

 private:
  friend class DocumentChange;

  void Start(Json scene, const std::filesystem::path& file, std::string openedBytes);
  bool IsAsOpened() const;
  std::string BytesFor(const std::filesystem::path& file, const Json& scene) const;
  void PutMaterial(std::size_t index, Json material);
  void PutScene(Json scene);
  tl::expected<void, std::string> Check(const Json& scene) const;

  const host::ShaderCatalogue& catalogue_;
  Json scene_;
  std::filesystem::path file_;
  std::string openedBytes_;  // of the file as it was opened; empty for a new scene
  std::string openedJson_;   // the same as JSON in one line, to be compared with
  std::string diskHash_;
  std::string warnings_;
  QUndoStack history_;
};

}  // namespace sorvanix::studio
