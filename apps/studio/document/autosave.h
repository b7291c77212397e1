// Keeps unsaved changes of the document in a file of the application's data, for the case of a
// crash.
//
// Every running studio has a file of its own and holds a lock beside it. A file whose lock nobody
// holds is what a crash left behind.
#pragma once

#include <QLockFile>
#include <QObject>
#include <QString>
#include <QTimer>
#include <filesystem>
#include <optional>
#include <string>

#include "apps/studio/document/document.h"

namespace sorvanix::studio {

/// What a crash left behind.
struct Rescued {
  std::string text;            ///< of the scene
  std::filesystem::path file;  ///< of the document; empty for none
};

class Autosave : public QObject {
  Q_OBJECT

 public:
  /// Follows the document, which must outlive it. The folder is made when it is not there.
  Autosave(Document& document, const QString& folder);
  /// The end of the program is no crash: nothing is left behind.
  ~Autosave() override;

  /// Takes what a crash left in the folder, the latest first, and removes it there. Nothing when
  /// there is none, or when it cannot be read.
  static std::optional<Rescued> TakeRescued(const QString& folder);

  /// Writes at once what would be written soon.
  void Flush();
  /// The file that holds the changes while there are any.
  const QString& File() const { return file_; }

 private:
  void Schedule();

  Document& document_;
  QString file_;
  QLockFile lock_;
  QTimer timer_;
};

}  // namespace sorvanix::studio
