// The file menu: new, open, save, recent files, and what asks before changes are lost.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <filesystem>

#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class DocumentActions : public QObject {
  Q_OBJECT

 public:
  DocumentActions(Workshop& workshop, QWidget* window);

  QAction* New() { return &new_; }
  QAction* Open() { return &open_; }
  QAction* Save() { return &save_; }
  /// Adds all actions of files.
  void FillMenu(QMenu& menu);

  /// Asks what to do with unsaved changes; false when the user wants to go on working on them.
  bool MayLeave();
  /// Opens a scene after asking; a material file becomes a new material. Tells errors in a box.
  void OpenFile(const std::filesystem::path& file);
  /// Opens without asking; tells errors in a box, and what is doubtful in the file.
  bool LoadScene(const std::filesystem::path& file);
  /// Asks before it replaces what another program wrote.
  bool SaveFile();
  bool SaveFileAs();

 Q_SIGNALS:
  void Told(const QString& message);

 private:
  void Connect();
  void FillRecent();
  bool Write(const std::filesystem::path& file);
  void TellWarnings();
  void Complain(const QString& what, const std::string& why);

  Workshop& workshop_;
  QWidget* window_;
  QAction new_, open_, save_, saveAs_;
  QMenu recent_;
};

}  // namespace sorvanix::studio
