#pragma once

#include <QList>
#include <QObject>
#include <QPersistentModelIndex>

class QTreeWidget;
class QTreeWidgetItem;

/// Loads the thumbnails of file rows while the event loop is idle. GUI thread only.
///
/// Rows may be deleted at any time; their thumbnails are skipped. With one timer per picture, Qt would load
/// all waiting pictures before it handles user input, and find the next timer in quadratic time.
class ThumbnailQueue : public QObject
{
    Q_OBJECT

public:
    /// \a tree becomes the parent.
    explicit ThumbnailQueue(QTreeWidget *tree);

    /// Queues the thumbnails of the children \a fileRows of \a groupRow, which must be in the tree. The text
    /// of a child is the path of its picture. A child whose picture cannot be loaded is not changed.
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
