#pragma once

#include <QList>
#include <QObject>
#include <QPersistentModelIndex>

class QTreeWidget;
class QTreeWidgetItem;

/// Gives file rows the thumbnails of their pictures when the event loop has time for it. GUI thread; owned by
/// its tree.
///
/// Rows may go at any time, theirs are then left out. A single timer for each picture would have Qt load all
/// that are waiting before it turns to the user again, and take a quadratic time to find the next one.
class ThumbnailQueue : public QObject
{
    Q_OBJECT

public:
    explicit ThumbnailQueue(QTreeWidget *tree);

    /// Has the children \a fileRows of \a groupRow, which must stand in the tree already, show the pictures
    /// in the files they are named after. A row whose picture cannot be loaded stays as it is.
    void add(const QTreeWidgetItem *groupRow, const QList<int> &fileRows);

private:
    struct Request
    {
        QPersistentModelIndex groupRow;
        QList<int> fileRows;
        qsizetype done = 0;
    };

    void loadSome();
    void loadNext();

    QTreeWidget *const m_tree;
    QList<Request> m_requests;
};
