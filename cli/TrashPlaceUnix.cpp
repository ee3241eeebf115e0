#include "cli/TrashPlace.h"

#include "cli/SystemError.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QUrl>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr mode_t ownerOnly = 0700;

Obstacle noTrash(const QString &reason)
{
    return {Obstacle::Kind::System, u"no trash can be used: "_s + reason};
}

/// Creates the folder unless it exists. False if there is no folder afterwards.
bool makeFolder(const QString &path)
{
    return ::mkdir(QFile::encodeName(path).constData(), ownerOnly) == 0 || QFileInfo(path).isDir();
}

/// Whether \a path is a trash folder for all users: a folder with the sticky bit, no link.
bool isSharedTrash(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           (status.st_mode & S_ISVTX) != 0;
}

/// The trash folder at the top of a volume other than the user's home; empty if it cannot be created.
QString makeVolumeTrash(const QString &top)
{
    const QString user = QString::number(::getuid());
    const QDir topFolder(top);
    if (isSharedTrash(topFolder.filePath(u".Trash"_s))) {
        const QString trash = topFolder.filePath(u".Trash/"_s + user);
        if (makeFolder(trash))
            return trash;
    }
    const QString trash = topFolder.filePath(u".Trash-"_s + user);
    return makeFolder(trash) ? trash : QString();
}

/// The trash folder of the user's home; empty if it cannot be created.
QString makeHomeTrash()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString trash = data + u"/Trash"_s;
    return QDir().mkpath(data) && makeFolder(trash) ? trash : QString();
}

/// An obstacle if no file can be created in \a folder. Creates a file without a name, where the system can.
std::optional<Obstacle> unwritable(const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    if (::faccessat(AT_FDCWD, path.constData(), W_OK | X_OK, AT_EACCESS) != 0)
        return noTrash(qt_error_string(errno));
#ifdef O_TMPFILE
    const int file = ::open(path.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0)
        ::close(file);
    else if (errno != EOPNOTSUPP && errno != EISDIR && errno != ENOENT)
        return noTrash(qt_error_string(errno));
#endif
    return std::nullopt;
}

/// Whether the trash can hold a file with this name. Its .trashinfo file has a longer name, and a number if
/// the name is taken: "name-0001.trashinfo".
bool fitsIntoTrash(const QString &trash, const QByteArray &name)
{
    constexpr long usualLimit = 255;
    constexpr QByteArrayView number("-0001");
    constexpr QByteArrayView suffix(".trashinfo");
    const long limit = ::pathconf(QFile::encodeName(trash).constData(), _PC_NAME_MAX);
    const auto isTaken = QFileInfo::exists(trash + u"/files/"_s + QFile::decodeName(name)) ||
                         QFileInfo::exists(trash + u"/info/"_s + QFile::decodeName(name) + u".trashinfo"_s);
    return name.size() + suffix.size() + (isTaken ? number.size() : 0) <= (limit > 0 ? limit : usualLimit);
}

} // namespace

std::optional<Obstacle> prepareTrash(const HeldFile &file)
{
    const QStorageInfo volume(file.path());
    const bool isAtHome = volume == QStorageInfo(QDir::home());
    const QString trash = isAtHome ? makeHomeTrash() : makeVolumeTrash(volume.rootPath());
    if (trash.isEmpty())
        return noTrash(u"its folder cannot be made"_s);
    for (const QString &folder : {trash + u"/files"_s, trash + u"/info"_s}) {
        if (!makeFolder(folder))
            return noTrash(qt_error_string(errno));
        if (const auto obstacle = unwritable(folder))
            return obstacle;
    }
    if (!fitsIntoTrash(trash, file.name()))
        return noTrash(u"the file's name is too long for it"_s);
    return std::nullopt;
}

void correctTrashNote(const QString &pathInTrash, const QString &origin)
{
    const auto needsEncoding = [](QChar character) { return character == u'%' || character < u' '; };
    if (std::ranges::none_of(origin, needsEncoding))
        return;
    const QFileInfo trashed(pathInTrash);
    const QString note = QDir(trashed.path()).filePath(u"../info/"_s + trashed.fileName() + u".trashinfo"_s);
    QFile original(note);
    if (!original.open(QFile::ReadOnly))
        return;
    const QByteArray content = original.readAll();
    const qsizetype date = content.lastIndexOf("\nDeletionDate=");
    QSaveFile corrected(note);
    if (date < 0 || !corrected.open(QFile::WriteOnly))
        return;
    corrected.write("[Trash Info]\nPath=" + QUrl::toPercentEncoding(origin, "/") + content.sliced(date));
    corrected.commit();
}
