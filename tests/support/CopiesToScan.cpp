#include "tests/support/CopiesToScan.h"

#include "tests/support/DuplicateFiles.h"

void CopiesToScan::reset()
{
    m_folder.reset(new QTemporaryDir);
    m_paths = writeCopies(m_folder->path(),
        {QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")}, "content");
}
