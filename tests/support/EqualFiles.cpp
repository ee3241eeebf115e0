#include "tests/support/EqualFiles.h"

#include "tests/support/ReportFiles.h"
#include "tests/support/TestFiles.h"

#include <QFile>

using Qt::StringLiterals::operator""_s;

void EqualFiles::reset()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_files = m_folder->filePath(u"files"_s);
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
        writeFile(path(name), "content");
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(u"data"_s)));
}

Report EqualFiles::abcReport() const
{
    return reportOf({groupOf({path(u"a"_s), path(u"b"_s), path(u"c"_s)})});
}
