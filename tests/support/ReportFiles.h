#pragma once

#include "cli/Report.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A group of a report that keeps the first of \a paths and marks the others. Its size is that of the first
/// file.
[[nodiscard]] ReportGroup groupOf(const QStringList &paths);

/// A report with these groups.
[[nodiscard]] Report reportOf(const QList<ReportGroup> &groups);

/// The entries below \a folder, sorted: "path: content", "path -> target" or "path/". Does not follow links.
[[nodiscard]] QStringList treeOf(const QString &folder);

/// The content of a file; "(unreadable)" if it cannot be read.
[[nodiscard]] QByteArray contentOf(const QString &path);

/// Replaces the file at \a path with another file that has the same modification time.
void replaceFile(const QString &path, const QByteArray &content);
