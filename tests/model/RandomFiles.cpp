#include "tests/model/RandomFiles.h"

#include <QTest>

using Qt::StringLiterals::operator""_s;

RandomFiles::RandomFiles(const QString &root, ExpectedDisk &disk, RandomChoice &random)
    : m_root(root)
    , m_disk(disk)
    , m_random(random)
{
}

void RandomFiles::replaceAll()
{
    m_disk.clear();
    m_count = 0;
    static const QList<int> groupCounts{0, 3, 8, 19, 20, 21, 35, 45, 60, 70};
    static const QList<int> copyCounts{2, 2, 2, 3, 3, 4, 7};
    QList<QByteArray> contents;
    const int groups = m_random.oneOf(groupCounts);
    for (int group = 0; group < groups; ++group) {
        const int copies = m_random.oneOf(copyCounts);
        for (int file = 0; file < copies; ++file)
            contents.insert(m_random.below(contents.size() + 1), content(group, file));
    }
    for (qsizetype i = 0; i < contents.size(); ++i) {
        m_disk.write(freshPath(), contents.at(i));
        // Some files of a group get equal creation times, others different ones.
        if (i % 40 == 20)
            QTest::qSleep(5);
    }
}

QString RandomFiles::freshPath()
{
    static const QStringList suffixes{u".jpg"_s, u".JPG"_s, u".mp4"_s, u".mp3"_s, u".txt"_s, u".zip"_s,
        u".heic"_s, u".tar.gz"_s, QString(), u".Docx"_s, u". mp3"_s, u" %1.pdf"_s};
    static const QStringList folders{u"/a/"_s, u"/a/inside/"_s, u"/a/inside/deep/"_s, u"/b/"_s};
    return m_root + m_random.oneOf(folders) + u'f' + QString::number(m_count++) + m_random.oneOf(suffixes);
}

/// Content with the fingerprint of the group. Bytes that the fingerprint does not cover differ between files.
QByteArray RandomFiles::content(int group, int file)
{
    const QByteArray mark = "group " + QByteArray::number(group) + ' ';
    const QByteArray ownMark = "file " + QByteArray::number(file);
    switch (group % 12) {
    case 0: // Only the first 4096 bytes count. The files have two sizes.
        return mark.leftJustified(4096, '.') + ownMark.leftJustified(904 + 1000 * (file % 2), '.');
    case 1: // The middle does not count.
        return mark.leftJustified(4096, '.') + ownMark.leftJustified(2000, '.') + QByteArray(4096, 't');
    case 2: // The last bytes count.
        return mark.leftJustified(6000, '.') + ownMark.leftJustified(4096, '.');
    case 3: // Different files of one size.
        return (ownMark + ' ' + mark).leftJustified(30, '.');
    case 4:
        return group % 24 == 4 ? QByteArray("") : mark + ownMark;
    default:
        return mark.leftJustified(10 + 40 * (group % 5), '.');
    }
}
