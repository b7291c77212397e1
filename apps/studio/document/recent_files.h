// The files that were open lately, kept in the settings of the user.
#pragma once

#include <QStringList>

namespace sorvanix::studio {

inline constexpr int kMostRecentFiles = 10;

/// The latest first; files that are gone are left out.
QStringList RecentFiles();

/// Puts a file first.
void AddRecentFile(const QString& file);

}  // namespace sorvanix::studio
