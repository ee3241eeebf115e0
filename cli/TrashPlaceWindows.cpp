#include "cli/FileHandle.h"
#include "cli/TrashPlace.h"

#include <QDir>
#include <QStorageInfo>

#include <shellapi.h>

using Qt::StringLiterals::operator""_s;

std::optional<Obstacle> prepareTrash(const HeldFile &file)
{
    // Windows deletes what it cannot recycle, without a question: only fixed disks have a recycle bin.
    const std::wstring root = QDir::toNativeSeparators(QStorageInfo(file.path()).rootPath()).toStdWString();
    SHQUERYRBINFO contents = {};
    contents.cbSize = sizeof contents;
    if (::GetDriveTypeW(root.c_str()) != DRIVE_FIXED || FAILED(::SHQueryRecycleBinW(root.c_str(), &contents)))
        return Obstacle{Obstacle::Kind::System, u"its volume has no recycle bin"_s};
    return std::nullopt;
}

void correctTrashNote(const QString & /*pathInTrash*/, const QString & /*origin*/)
{
    // Windows writes its own notes.
}
