#include "apps/studio/document/recent_files.h"

#include <QFileInfo>
#include <QSettings>

namespace sorvanix::studio {

namespace {

constexpr const char* kKey = "recentFiles";

}  // namespace

QStringList RecentFiles() {
  QStringList files;
  for (const QString& file : QSettings().value(kKey).toStringList()) {
    if (QFileInfo::exists(file)) files.append(file);
  }
  return files;
}

void AddRecentFile(const QString& file) {
  QStringList files = QSettings().value(kKey).toStringList();
  files.removeAll(file);
  files.prepend(file);
  QSettings().setValue(kKey, QStringList(files.mid(0, kMostRecentFiles)));
}

}  // namespace sorvanix::studio
