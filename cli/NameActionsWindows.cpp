#include "cli/NameActions.h"

#include "cli/FileHandle.h"
#include "cli/Leftovers.h"
#include "cli/SystemError.h"
#include "scan/NativePath.h"

#include <QDir>
#include <QFileInfo>

using Qt::StringLiterals::operator""_s;

namespace {

Obstacle lastError()
{
    return systemObstacle(static_cast<int>(::GetLastError()));
}

} // namespace

std::optional<Obstacle> deleteFile(HeldFile &candidate)
{
    // Uses the handle, because the path may lead to another file by now.
    const HANDLE handle = ::ReOpenFile(handleOf(candidate.content()), DELETE,
        FILE_SHARE_READ | FILE_SHARE_DELETE, FILE_FLAG_OPEN_REPARSE_POINT);
    if (handle == INVALID_HANDLE_VALUE)
        return lastError();
    FILE_DISPOSITION_INFO disposition = {TRUE};
    const bool isDeleted =
        ::SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition) != 0;
    const auto obstacle = isDeleted ? std::nullopt : std::optional(lastError());
    ::CloseHandle(handle);
    // Windows removes the name when the last handle is closed.
    candidate.content().close();
    return obstacle;
}

std::optional<Obstacle> replaceByHardLink(const HeldFile &kept, HeldFile &candidate)
{
    const QString temporary = QFileInfo(candidate.path()).dir().filePath(temporaryName());
    const std::wstring link = nativePath(temporary);
    if (::CreateHardLinkW(link.c_str(), nativePath(kept.path()).c_str(), nullptr) == 0)
        return lastError();
    std::optional<Obstacle> obstacle = candidate.change();
    if (identityAt(temporary) != kept.identity())
        obstacle = Obstacle{Obstacle::Kind::NotAsReported, u"the kept file was replaced"_s};
    // Windows does not replace an open file.
    candidate.content().close();
    if (!obstacle &&
        ::MoveFileExW(link.c_str(), nativePath(candidate.path()).c_str(), MOVEFILE_REPLACE_EXISTING) == 0)
        obstacle = lastError();
    if (obstacle)
        ::DeleteFileW(link.c_str());
    return obstacle;
}
