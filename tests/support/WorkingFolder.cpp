#include "tests/support/WorkingFolder.h"

#include <QDir>

WorkingFolder::WorkingFolder(const QStringList &folders)
    : m_previousFolder(QDir::currentPath())
{
    for (const QString &folder : folders) {
        if (!QDir(m_folder.path()).mkpath(folder))
            qFatal("Cannot create %s", qPrintable(folder));
    }
    if (!QDir::setCurrent(m_folder.path()))
        qFatal("Cannot enter %s", qPrintable(m_folder.path()));
}

WorkingFolder::~WorkingFolder()
{
    QDir::setCurrent(m_previousFolder);
}

QString WorkingFolder::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QString WorkingFolder::path() const
{
    return m_folder.path();
}
