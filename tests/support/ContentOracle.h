#pragma once

#include "analysis/ContentGroups.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

using Groups = std::vector<std::vector<quint32>>;

/// Writes each of \a contents into a file of its own in \a folder, named by its index.
[[nodiscard]] std::vector<SurveyedFile> writeFiles(const QString &folder, const QList<QByteArray> &contents);

/// The groups of equal \a contents, in ascending order, as groupByContent() has to find them.
[[nodiscard]] Groups groupsOfEqual(const QList<QByteArray> &contents);

/// Groups files without listening.
[[nodiscard]] ContentGroups groupQuietly(std::span<const SurveyedFile> files, int threads = 2,
    ContentComparison comparison = ContentComparison::Bytes);

/// The paths of files that could not be read, in their order.
[[nodiscard]] QStringList pathsOf(const QList<UnreadablePath> &unreadable);
