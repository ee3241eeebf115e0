#include "tests/support/HostileTree.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#ifdef Q_OS_UNIX

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/sysmacros.h>
#endif

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

int openFolder(const QString &path)
{
    return open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

QByteArray targetOf(int folder, const char *name)
{
    QByteArray target(4096, '\0');
    const auto length = readlinkat(folder, name, target.data(), static_cast<std::size_t>(target.size()));
    return target.left(length);
}

/// Calls \a visit with the folder, the name and the metadata of each entry. Closes the descriptor.
template <typename Visit>
void forEachEntry(int folder, Visit visit)
{
    DIR *const entries = folder < 0 ? nullptr : fdopendir(folder);
    if (!entries)
        return;
    while (const dirent *const entry = readdir(entries)) {
        const QByteArray name = entry->d_name;
        struct stat info = {};
        if (name != "." && name != ".." && fstatat(folder, name.constData(), &info, AT_SYMLINK_NOFOLLOW) == 0)
            visit(folder, name, info);
    }
    closedir(entries);
}

void addState(int parent, const QByteArray &prefix, DiskState &state)
{
    forEachEntry(parent, [&](int folder, const QByteArray &name, const struct stat &info) {
        QByteArray description = "mode " + QByteArray::number(info.st_mode, 8) + " inode " +
                                 QByteArray::number(qint64(info.st_ino));
        if (S_ISDIR(info.st_mode))
            addState(openat(folder, name.constData(), folderFlags), prefix + name + '/', state);
        else
            description += " size " + QByteArray::number(qint64(info.st_size));
        if (S_ISLNK(info.st_mode))
            description += " to " + targetOf(folder, name.constData());
        state.insert(prefix + name, description);
    });
}

void removeContents(int parent)
{
    forEachEntry(parent, [](int folder, const QByteArray &name, const struct stat &info) {
        if (S_ISDIR(info.st_mode))
            removeContents(openat(folder, name.constData(), folderFlags));
        unlinkat(folder, name.constData(), S_ISDIR(info.st_mode) ? AT_REMOVEDIR : 0);
    });
}

/// Creates a folder; returns its descriptor and closes that of its parent.
int enterNewFolder(int parent, const char *name)
{
    const bool made = mkdirat(parent, name, S_IRWXU) == 0;
    const int folder = made ? openat(parent, name, folderFlags) : -1;
    close(parent);
    return folder;
}

bool writeFileIn(int folder, const char *name, const QByteArray &content)
{
    QFile file;
    return file.open(openat(folder, name, O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR),
               QIODevice::WriteOnly, QFile::AutoCloseHandle) &&
           file.write(content) == content.size();
}

} // namespace

HostileTree::~HostileTree()
{
    removeContents(openFolder(m_folder.path()));
}

DiskState HostileTree::state() const
{
    DiskState state;
    addState(openFolder(m_folder.path()), {}, state);
    return state;
}

bool writeDeepFile(const QString &folder, int levels, const QByteArray &folderName,
    const QByteArray &fileName, const QByteArray &content)
{
    int innermost = openFolder(folder);
    for (int i = 0; i < levels && innermost >= 0; ++i)
        innermost = enterNewFolder(innermost, folderName.constData());
    const bool written = innermost >= 0 && writeFileIn(innermost, fileName.constData(), content);
    if (innermost >= 0)
        close(innermost);
    return written;
}

bool makeFolderWithRawName(const QString &folder, const QByteArray &name)
{
    return mkdir((QFile::encodeName(folder) + '/' + name).constData(), S_IRWXU) == 0;
}

#else

HostileTree::~HostileTree() = default;

// Paths suffice, because writeDeepFile() creates no deep trees here.
DiskState HostileTree::state() const
{
    DiskState state;
    QDirIterator entries(m_folder.path(),
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QByteArray name = rawName(entries.next());
        const QFileInfo info = entries.fileInfo();
        state.insert(name, info.isDir() ? "folder" : "size " + QByteArray::number(info.size()));
    }
    return state;
}

bool writeDeepFile(const QString &, int, const QByteArray &, const QByteArray &, const QByteArray &)
{
    return false;
}

bool makeFolderWithRawName(const QString &, const QByteArray &)
{
    return false;
}

#endif

#ifdef Q_OS_LINUX

bool makeDevice(const QString &path)
{
    return mknod(QFile::encodeName(path).constData(), S_IFCHR | S_IRUSR | S_IWUSR, makedev(1, 3)) == 0;
}

#else

bool makeDevice(const QString &)
{
    return false;
}

#endif

HostileTree::HostileTree()
{
    if (!m_folder.isValid())
        qFatal("Cannot create a folder: %s", qPrintable(m_folder.errorString()));
}

QString HostileTree::path(const QString &name) const
{
    return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
}

QByteArray HostileTree::rawName(const QString &absolutePath) const
{
    return QFile::encodeName(absolutePath).mid(QFile::encodeName(m_folder.path()).size() + 1);
}

QList<QByteArray> goneFrom(const DiskState &before, const DiskState &after)
{
    QList<QByteArray> gone = before.keys();
    gone.removeIf([&after](const QByteArray &name) { return after.contains(name); });
    return gone;
}

QList<HostileName> hostileNames()
{
    return {
        {"line break", QStringLiteral("two\nlines.txt")},
        {"carriage return", QStringLiteral("two\r\nlines.txt")},
        {"tab and bell", QStringLiteral("tab\there\a.txt")},
        {"escape sequence", QStringLiteral("\033[31mred.txt")},
        {"single quote", QStringLiteral("it's.txt")},
        {"double quotes", QStringLiteral("\"quoted\".txt")},
        {"backslash", QStringLiteral("back\\slash.txt")},
        {"shell", QStringLiteral("$(reboot) `x`; *?.txt")},
        {"leading dash", QStringLiteral("-rf.txt")},
        {"trailing blanks", QStringLiteral("trailing.txt   ")},
        {"leading blank", QStringLiteral(" leading.txt")},
        {"blanks only", QStringLiteral("   ")},
        {"trailing dot", QStringLiteral("stop.")},
        {"three dots", QStringLiteral("a...txt")},
        {"placeholders", QStringLiteral("%1 %2 %L3 %s.txt")},
        {"markup", QStringLiteral("<b>bold<br>&amp;<img src=x>.txt")},
        {"address", QStringLiteral("file:%2F%2Fhome#x?y.txt")},
        {"resource", QStringLiteral(":colon.txt")},
        {"right to left", QStringLiteral("\u05E9\u05DC\u05D5\u05DD \u0645\u0631\u062D\u0628\u0627.txt")},
        {"overridden direction", QStringLiteral("\u202Egpj.txt")},
        {"pictograms", QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467 \U0001F3F4.txt")},
        {"composed", QStringLiteral("caf\u00E9.txt")},
        {"decomposed", QStringLiteral("cafe\u0301.txt")},
        {"dotless i", QStringLiteral("\u0130\u0131.TXT")},
        {"no character", QStringLiteral("\uFFFF\uFEFF.txt")},
        {"replacement character", QStringLiteral("\uFFFD.txt")},
        {"255 bytes", QString(251, u'n') + QStringLiteral(".txt")},
        {"255 bytes of pictograms",
            QString::fromUtf8(QByteArray("\xF0\x9F\x98\x80").repeated(63)) + QStringLiteral(".tx")},
    };
}

void writeEmptyFiles(const QString &folder, int count, const QString &suffix)
{
    QDir().mkpath(folder);
    for (int i = 0; i < count; ++i) {
        QFile file(QStringLiteral("%1/%2.%3").arg(folder, QString::number(i), suffix));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("Cannot write %s", qPrintable(file.fileName()));
    }
}

bool writeSparseFile(const QString &path, qint64 size, const QByteArray &tail)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.resize(size) && file.seek(size - tail.size()) &&
           file.write(tail) == tail.size() && file.flush();
}
