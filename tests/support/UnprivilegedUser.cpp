#include "tests/support/UnprivilegedUser.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_UNIX
constexpr uid_t root = 0;
constexpr uid_t nobody = 65534;

bool becomeNobody()
{
    return geteuid() == root && seteuid(nobody) == 0;
}

bool becomeRoot()
{
    return seteuid(root) == 0;
}
#else
bool becomeNobody()
{
    return false;
}

bool becomeRoot()
{
    return true;
}
#endif

constexpr QFile::Permissions readAndSearch = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                             QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

void setPermissions(const QString &path, QFile::Permissions permissions)
{
    const bool set = QFile::setPermissions(path, permissions);
#ifdef Q_OS_UNIX
    if (!set)
        qFatal("Cannot set the permissions of %s", qPrintable(path));
#else
    Q_UNUSED(set) // Windows has no permission that denies read access to the owner.
#endif
}

} // namespace

UnprivilegedUser::UnprivilegedUser()
    : m_changed(becomeNobody())
{
}

UnprivilegedUser::~UnprivilegedUser()
{
    if (m_changed && !becomeRoot())
        qFatal("Cannot become root again");
}

void allowAccess(const QString &folder)
{
    setPermissions(folder, readAndSearch | QFile::WriteOwner);
}

void allowReadingOnly(const QString &folder)
{
    setPermissions(folder, readAndSearch);
}

void denyAccess(const QString &path)
{
    setPermissions(path, {});
}
