#pragma once

#include <QObject>
#include <QStringList>

class QAbstractItemView;
class QMimeData;

/// Returns the folders in the dragged \a data, each once; a file counts as the folder that contains it. URLs
/// outside the local file system are skipped.
[[nodiscard]] QStringList foldersIn(const QMimeData &data);

/// Accepts folders and files dropped on a view and rejects everything else.
///
/// Always reports a copy to the drag source: after a move, the source would delete the dragged files.
class FolderDrop : public QObject
{
    Q_OBJECT

public:
    /// \a view becomes the parent.
    explicit FolderDrop(QAbstractItemView *view);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// Emitted for each accepted drop. \a folders has at least one entry; all paths are absolute.
    void dropped(const QStringList &folders);
};
