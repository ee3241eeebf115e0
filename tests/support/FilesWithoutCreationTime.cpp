#include "tests/support/FilesWithoutCreationTime.h"

#include <QFileInfo>

FilesWithoutCreationTime::FilesWithoutCreationTime()
{
    for (QFile &file : m_files)
        m_usable = file.open(QIODevice::ReadOnly) && m_usable;
}

bool FilesWithoutCreationTime::setTimes(const std::array<QDateTime, 3> &times)
{
    for (std::size_t i = 0; i < m_files.size() && m_usable; ++i) {
        QFile &file = m_files.at(i);
        m_usable = file.setFileTime(times.at(i), QFileDevice::FileModificationTime) &&
                   !QFileInfo(file).fileTime(QFileDevice::FileBirthTime).isValid() &&
                   QFileInfo(file.fileName()).fileTime(QFileDevice::FileModificationTime) == times.at(i);
    }
    return m_usable;
}
