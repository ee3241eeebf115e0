#pragma once

#include "analysis/ContentGroups.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

using Groups = std::vector<std::vector<quint32>>;

/// Writes one file per content to \a folder, named by its index.
[[nodiscard]] std::vector<SurveyedFile> writeFiles(const QString &folder, const QList<QByteArray> &contents);

/// The expected groups of equal \a contents, as indices in ascending order.
[[nodiscard]] Groups groupsOfEqual(const QList<QByteArray> &contents);

/// Calls groupByContent() with callbacks that do nothing.
[[nodiscard]] ContentGroups groupQuietly(std::span<const SurveyedFile> files, int threads = 2,
    ContentComparison comparison = ContentComparison::Bytes);

/// The paths of the files that could not be read, in their order.
[[nodiscard]] QStringList pathsOf(const QList<UnreadablePath> &unreadable);
