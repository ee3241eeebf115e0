#pragma once

#include <QObject>
#include <QStringList>

class QAbstractItemView;
class QMimeData;

/// The folders that dragged \a data stands for, each once: a folder for itself, a file for the folder that it
/// is in. Empty for anything that is not in a local file system.
[[nodiscard]] QStringList foldersIn(const QMimeData &data);

/// Accepts folders and files that are dropped on a view, and refuses everything else.
///
/// A drop copies: whatever the source proposes, it is never told to remove what was dragged.
class FolderDrop : public QObject
{
    Q_OBJECT

public:
    /// The \a view owns this object.
    explicit FolderDrop(QAbstractItemView *view);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// Folders were dropped; absolute paths, at least one.
    void dropped(const QStringList &folders);
};
