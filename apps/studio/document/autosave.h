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
#include <memory>
#include <string>
#include <vector>

#include "apps/studio/document/document.h"

namespace sorvanix::studio {

/// What a crash left behind. It stays on the disk until it is forgotten, so that nothing is lost
/// when it cannot be opened, or when the next crash comes too soon.
struct Rescued {
  QString place;                    ///< the file in the application's data
  std::string text;                 ///< of the scene; empty when the file is damaged
  std::filesystem::path file;       ///< of the document; empty for none
  std::string diskHash;             ///< of the document's file then
  std::shared_ptr<QLockFile> lock;  ///< while it lives, no other studio takes the same

  bool IsDamaged() const { return text.empty(); }
  /// Removes it.
  void Forget();
  /// Puts it out of the way under another name, which is the answer.
  QString SetAside();
};

class Autosave : public QObject {
  Q_OBJECT

 public:
  /// Follows the document, which must outlive it. The folder is made when it is not there.
  Autosave(Document& document, const QString& folder);
  /// The end of the program is no crash: nothing is left behind.
  ~Autosave() override;

  /// What crashes left in the folder, the latest first.
  static std::vector<Rescued> LeftBehind(const QString& folder);

  /// Writes at once what would be written soon. False when that failed.
  bool Flush();
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
