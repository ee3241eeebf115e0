#include "tests/support/ScannedFolder.h"

#include "tests/support/DuplicateFiles.h"

void ScannedFolder::reset()
{
    m_driver.reset(new WindowDriver);
    m_folder.reset(new QTemporaryDir);
}

QString ScannedFolder::path(const QString &name) const
{
    return m_folder->filePath(name);
}

QStringList ScannedFolder::write(const QStringList &names, const QByteArray &content) const
{
    return writeCopies(m_folder->path(), names, content);
}

QSet<QString> ScannedFolder::filesOnDisk() const
{
    return filesBelow(m_folder->path());
}

bool ScannedFolder::scan()
{
    m_driver->setFolders({m_folder->path()});
    return m_driver->scan();
}

QTreeWidgetItem *ScannedFolder::group(int index) const
{
    return m_driver->tree()->topLevelItem(index);
}

int ScannedFolder::groups() const
{
    return m_driver->tree()->topLevelItemCount();
}
