#include "cli/FileHandle.h"
#include "cli/TrashPlace.h"

#include <QDir>
#include <QStorageInfo>

#include <shellapi.h>

using Qt::StringLiterals::operator""_s;

std::optional<Obstacle> prepareTrash(const HeldFile &file)
{
    // Without a recycle bin, which only fixed disks have, Windows would delete the file without asking.
    const std::wstring root = QDir::toNativeSeparators(QStorageInfo(file.path()).rootPath()).toStdWString();
    SHQUERYRBINFO contents = {};
    contents.cbSize = sizeof contents;
    if (::GetDriveTypeW(root.c_str()) != DRIVE_FIXED || FAILED(::SHQueryRecycleBinW(root.c_str(), &contents)))
        return Obstacle{Obstacle::Kind::System, u"its volume has no recycle bin"_s};
    return std::nullopt;
}

void correctTrashNote(const QString & /*pathInTrash*/, const QString & /*origin*/)
{
    // Windows keeps the original path itself.
}
