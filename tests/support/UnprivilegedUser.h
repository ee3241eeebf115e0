#pragma once

#include <QtGlobal>

class QString;

/// Makes this process an ordinary user for its lifetime when root runs it, so that permissions count.
///
/// That user owns nothing: what it is to reach has to be open to everybody. Where the process may not change
/// its user nothing happens, so a test has to see for itself that it is kept out.
class UnprivilegedUser
{
public:
    UnprivilegedUser();
    ~UnprivilegedUser();
    Q_DISABLE_COPY_MOVE(UnprivilegedUser)

private:
    const bool m_changed;
};

/// Lets every user read and search the folder, and only its owner change it.
void allowAccess(const QString &folder);
/// Lets every user read and search the folder, and nobody but root change it.
void allowReadingOnly(const QString &folder);
/// Takes every permission off the file or folder.
void denyAccess(const QString &path);
