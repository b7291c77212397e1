// What the user can do to the document, each one step of its history.
//
// Menus, keys, drops and scripts all come here. What cannot be done changes nothing and is told by
// Complained.
#pragma once

#include <QObject>
#include <QString>
#include <filesystem>

#include "apps/studio/document/document.h"
#include "apps/studio/document/graph_edit.h"
#include "apps/studio/document/selection.h"

namespace sorvanix::studio {

class Commands : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive it.
  Commands(Document& document, Selection& selection);

  // Materials. New ones are selected.
  void AddMaterial();
  void DuplicateMaterial();
  void RenameMaterial(int index, const QString& name);
  void RemoveMaterial();
  /// Changes its place in the list; -1 is up. At the end of the list it stays.
  void MoveMaterial(int by);
  /// A material file as a new material's colour. The error is one line.
  tl::expected<void, std::string> AddMaterialFile(const std::filesystem::path& file);

  // Graphs, at a place of the selected material.
  void PlaceShader(const GraphPlace& place, const QString& shader);
  /// A filter goes around what stands there, anything else takes its place.
  void TakeShader(const GraphPlace& place, const QString& shader);
  void ReplaceShader(const GraphPlace& place, const QString& shader);
  void Wrap(const GraphPlace& place, const QString& filter);
  void Unwrap(const GraphPlace& place);
  void Remove(const GraphPlace& place);
  void Move(const GraphPlace& from, const GraphPlace& to);
  void Copy(const GraphPlace& from, const GraphPlace& to);
  /// A graph as a material file spells it.
  void Paste(const GraphPlace& place, Json graph);
  void SwitchChannel(const QString& channel, bool on);
  void SetStrength(const std::string& channel, float strength);
  void SetColour(const std::string& channel, const Vector& colour);
  /// The graph of a material file (.json), which becomes part of the scene; any other file is a
  /// bitmap and stays one.
  void PlaceFile(const GraphPlace& place, const std::filesystem::path& file);
  /// Makes the graph of a material file, which a place refers to, part of the scene.
  void Embed(const GraphPlace& place);
  /// A channel's graph that came out of the dialog of one of its shaders, with what the outermost
  /// one stored, or null.
  void PlaceEdited(const GraphPlace& edited, const Json& graph, const Json& state);

 Q_SIGNALS:
  void Complained(const QString& why);

 private:
  void Take(tl::expected<void, std::string> result);
  void ChangeGraph(ChangedMaterial changed, const QString& what, const QString& series = {});
  tl::expected<void, std::string> Insert(std::size_t index, Json material, const QString& what);
  const Json* Material();
  /// The material as a change of this place's graph begins with it.
  Json Ready(const Json& material, const GraphPlace& place) const;
  const host::ShaderDescription* Shader(const QString& name);
  /// A material file's graph as it is spelled in the document's folder.
  tl::expected<Json, std::string> ReadGraphFile(const std::filesystem::path& file) const;

  Document& document_;
  Selection& selection_;
};

}  // namespace sorvanix::studio
