#pragma once

#include <QtGlobal>

class QString;

/// Drops the root privileges of the process during its lifetime, so that permissions apply.
///
/// The process runs as a user that owns no file, so tests must make their files accessible to all users. Does
/// nothing if the process may not change its user: a test must check that access is denied.
class UnprivilegedUser
{
public:
    UnprivilegedUser();
    ~UnprivilegedUser();
    Q_DISABLE_COPY_MOVE(UnprivilegedUser)

private:
    const bool m_changed;
};

/// Lets every user read the folder and only its owner change it.
void allowAccess(const QString &folder);
/// Lets every user read the folder and only root change it.
void allowReadingOnly(const QString &folder);
/// Removes every permission of the file or folder.
void denyAccess(const QString &path);
