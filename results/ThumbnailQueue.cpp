#include "results/ThumbnailQueue.h"

#include "results/Thumbnail.h"

#include <QDeadlineTimer>
#include <QTimer>
#include <QTreeWidget>

#include <chrono>

using std::chrono_literals::operator""ms;

namespace {

/// Loading time before the event loop runs again: more loads faster in total, less handles user input sooner.
/// A large picture can exceed it.
constexpr auto loadingSlice = 8ms;

void showThumbnail(QTreeWidgetItem *fileRow)
{
    if (const QPixmap thumbnail = loadThumbnail(fileRow->text(0)); !thumbnail.isNull())
        fileRow->setIcon(0, QIcon(thumbnail));
}

} // namespace

ThumbnailQueue::ThumbnailQueue(QTreeWidget *tree)
    : QObject(tree)
    , m_tree(tree)
{
}

void ThumbnailQueue::add(const QTreeWidgetItem *groupRow, const QList<int> &fileRows)
{
    if (fileRows.isEmpty())
        return;
    if (m_requests.isEmpty())
        QTimer::singleShot(0ms, this, &ThumbnailQueue::loadSome);
    m_requests.append({.groupRow = m_tree->indexFromItem(groupRow), .fileRows = fileRows});
}

void ThumbnailQueue::loadSome()
{
    const QDeadlineTimer deadline(loadingSlice);
    do {
        loadNext();
    } while (!m_requests.isEmpty() && !deadline.hasExpired());
    if (!m_requests.isEmpty())
        QTimer::singleShot(0ms, this, &ThumbnailQueue::loadSome);
}

void ThumbnailQueue::loadNext()
{
    Request &request = m_requests.first();
    if (QTreeWidgetItem *const groupRow = m_tree->itemFromIndex(request.groupRow)) {
        QTreeWidgetItem *const fileRow = groupRow->child(request.fileRows.at(request.done++));
        if (fileRow)
            showThumbnail(fileRow);
        if (request.done < request.fileRows.size())
            return;
    }
    m_requests.removeFirst();
}
