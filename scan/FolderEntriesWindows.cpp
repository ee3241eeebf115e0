#include "scan/FolderEntries.h"

#include "scan/FileNames.h"
#include "scan/NativePath.h"

#include <utility>

#include <qt_windows.h>

using Qt::StringLiterals::operator""_s;

namespace {

/// Milliseconds since 1970-01-01 UTC of a time in units of 100 ns since 1601-01-01 UTC.
qint64 milliseconds(const FILETIME &time)
{
    constexpr qint64 from1601To1970 = 11'644'473'600'000;
    const quint64 ticks = quint64(time.dwHighDateTime) << 32U | time.dwLowDateTime;
    return static_cast<qint64>(ticks / 10'000) - from1601To1970;
}

bool isEmpty(const FILETIME &time)
{
    return time.dwLowDateTime == 0 && time.dwHighDateTime == 0;
}

/// Whether \a entry is a symbolic link or a junction. Cloud files and deduplicated files are reparse points
/// too, but not links.
bool isLink(const WIN32_FIND_DATAW &entry)
{
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK || entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

} // namespace

/// Lists the entries of a folder with FindFirstFileEx() and FindNextFile().
struct FolderEntries::Search
{
    explicit Search(const QString &folderWithSlash)
        : handle(FindFirstFileExW(nativePath(folderWithSlash + u'*').c_str(), FindExInfoBasic, &entry,
              FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH))
    {
        if (isOpen())
            return;
        error = GetLastError();
        // The root of an empty drive has no entries, not even itself.
        if (error == ERROR_FILE_NOT_FOUND)
            error = ERROR_SUCCESS;
    }

    ~Search()
    {
        if (isOpen())
            FindClose(handle);
    }

    Q_DISABLE_COPY_MOVE(Search)

    [[nodiscard]] bool isOpen() const
    {
        return handle != INVALID_HANDLE_VALUE; // NOLINT(performance-no-int-to-ptr): a macro of Windows.
    }

    /// Moves to the next entry; the first call, to the entry that the constructor has found.
    bool next()
    {
        if (!isOpen())
            return false;
        if (!std::exchange(isStarted, true) || FindNextFileW(handle, &entry))
            return true;
        if (const DWORD reason = GetLastError(); reason != ERROR_NO_MORE_FILES)
            error = reason;
        return false;
    }

    [[nodiscard]] bool isFolder() const
    {
        return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }

    WIN32_FIND_DATAW entry = {};
    HANDLE handle;
    DWORD error = ERROR_SUCCESS;
    bool isStarted = false;
};

FolderEntries::FolderEntries(const QString &folder, HiddenEntries hidden)
    : m_search(std::make_unique<Search>(withSlash(folder)))
    , m_folderWithSlash(withSlash(folder))
    , m_hidden(hidden)
{
}

FolderEntries::~FolderEntries() = default;

bool FolderEntries::next()
{
    while (m_search->next()) {
        m_name = QString::fromWCharArray(m_search->entry.cFileName);
        if (isLeftOut())
            continue;
        if (keepsItsNameOnWindows(m_name))
            return true;
        ++m_undecodableNames;
    }
    return false;
}

bool FolderEntries::isLeftOut() const
{
    const WIN32_FIND_DATAW &entry = m_search->entry;
    if (m_name == u"."_s || m_name == u".."_s || isLink(entry))
        return true;
    if (m_hidden == HiddenEntries::LeftOut && (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0)
        return true;
    // Kept deliberately: Qt treats a shortcut as a link and would read its target, so the user never
    // sees shortcuts.
    return !m_search->isFolder() && m_name.endsWith(u".lnk");
}

QString FolderEntries::path() const
{
    return m_folderWithSlash + m_name;
}

bool FolderEntries::isFolder() const
{
    return m_search->isFolder();
}

ListedFacts FolderEntries::facts() const
{
    const WIN32_FIND_DATAW &entry = m_search->entry;
    const quint64 size = quint64(entry.nFileSizeHigh) << 32U | entry.nFileSizeLow;
    return {static_cast<qint64>(size), milliseconds(entry.ftLastWriteTime),
        milliseconds(isEmpty(entry.ftCreationTime) ? entry.ftLastWriteTime : entry.ftCreationTime)};
}

QString FolderEntries::error() const
{
    const DWORD error = m_search->error;
    return error == ERROR_SUCCESS ? QString() : qt_error_string(static_cast<int>(error));
}
