#include "app/FolderDrop.h"

#include <QAbstractItemView>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <optional>

namespace {

/// Returns the folder that \a url names, or the folder of the file that it names.
std::optional<QString> folderOf(const QUrl &url)
{
    if (!url.isLocalFile())
        return std::nullopt;
    const QFileInfo info(QDir::cleanPath(url.toLocalFile()));
    if (info.isDir())
        return info.absoluteFilePath();
    if (info.exists())
        return info.absolutePath();
    return std::nullopt;
}

/// Stops at the first folder: this runs for each move of the pointer.
bool containsFolder(const QMimeData &data)
{
    return std::ranges::any_of(data.urls(), [](const QUrl &url) { return folderOf(url).has_value(); });
}

} // namespace

QStringList foldersIn(const QMimeData &data)
{
    QStringList folders;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (const std::optional<QString> folder = folderOf(url))
            folders.append(*folder);
    }
    folders.removeDuplicates();
    return folders;
}

FolderDrop::FolderDrop(QAbstractItemView *view)
    : QObject(view)
{
    view->setAcceptDrops(true);
    // The viewport receives the drag events. The filter installed last runs first.
    view->viewport()->installEventFilter(this);
}

bool FolderDrop::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);

    auto *const drag = static_cast<QDropEvent *>(event);
    drag->setDropAction(Qt::CopyAction);
    drag->setAccepted(containsFolder(*drag->mimeData()));
    if (type == QEvent::Drop && drag->isAccepted())
        emit dropped(foldersIn(*drag->mimeData()));
    return true;
}
