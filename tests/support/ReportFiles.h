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

/// What is below \a folder, links not followed: "path: content", "path -> target" or "path/", sorted.
[[nodiscard]] QStringList treeOf(const QString &folder);

[[nodiscard]] QByteArray contentOf(const QString &path);

/// Gives \a path a new file in place of the old one, with the same times. Its content must be as long as the
/// old one for them to differ in nothing but the content.
void replaceFile(const QString &path, const QByteArray &content);
