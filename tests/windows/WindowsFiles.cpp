#include "tests/windows/WindowsFiles.h"

#include <QDir>

#include <qt_windows.h>

#include <string>

namespace {

std::wstring nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// A path that Windows does not normalise.
std::wstring exactPath(const QString &folder, const QString &name)
{
    return L"\\\\?\\" + nativePath(QDir(folder).absolutePath() + u'/') + name.toStdWString();
}

} // namespace

bool runsUnderWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

void setReadOnly(const QString &path, bool readOnly)
{
    const DWORD attributes = readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
    if (!SetFileAttributesW(nativePath(path).c_str(), attributes))
        qFatal("Cannot change the attributes of %s", qPrintable(path));
}

OpenFile::OpenFile(const QString &path, Sharing sharing)
    : m_handle(CreateFileW(nativePath(path).c_str(), GENERIC_READ,
          sharing == Sharing::Reading ? FILE_SHARE_READ : 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
          nullptr))
{
    if (m_handle == INVALID_HANDLE_VALUE)
        qFatal("Cannot open %s", qPrintable(path));
}

OpenFile::~OpenFile()
{
    CloseHandle(m_handle);
}

bool writeFileWithExactName(const QString &folder, const QString &name, const QByteArray &content)
{
    const std::wstring path = exactPath(folder, name);
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const auto size = static_cast<DWORD>(content.size());
    const bool isWritten =
        WriteFile(file, content.constData(), size, &written, nullptr) != 0 && written == size;
    CloseHandle(file);
    return isWritten;
}

bool removeFileWithExactName(const QString &folder, const QString &name)
{
    return DeleteFileW(exactPath(folder, name).c_str()) != 0;
}
