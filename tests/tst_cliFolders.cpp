#include "cli/PathOrder.h"
#include "cli/SearchedFolders.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/WorkingFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <memory>

using Qt::Literals::StringLiterals::operator""_s;

/// Absolute paths of files, and the order of paths.
class tst_cliFolders : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void comparesPathsByTheirBytes();
    void makesPathsAbsolute();
    void followsLinksBeforeDotDot();

private:
    std::unique_ptr<WorkingFolder> m_place;
};

void tst_cliFolders::init()
{
    m_place = std::make_unique<WorkingFolder>(QStringList{u"a/r"_s, u"b"_s, u"r"_s});
}

void tst_cliFolders::cleanup()
{
    m_place.reset();
}

void tst_cliFolders::comparesPathsByTheirBytes()
{
    const QStringList texts{u""_s, u"\n"_s, u"a"_s, u"a/b"_s, u"ab"_s, u"z"_s, u"\u00e4"_s, u"\u0800"_s,
        u"\ud7ff"_s, u"\ue000"_s, u"\ufeff"_s, u"\uffff"_s, u"\U00010000"_s, u"\U0001F600"_s,
        u"\U0001F600a"_s, u"\U0010FFFF"_s};
    for (const QString &a : texts) {
        QCOMPARE(utf8Size(a), a.toUtf8().size());
        for (const QString &b : texts)
            QCOMPARE(comesBefore(a, b), a.toUtf8() < b.toUtf8());
    }
}

void tst_cliFolders::makesPathsAbsolute()
{
    const QString place = QDir::currentPath();
    const QString root = QDir::rootPath();
    const SearchedFolders folders({u"."_s, u"a//"_s, u"b/../r/"_s, u"missing"_s, root, u":a"_s}, {});
    QCOMPARE(folders.absolute(), QStringList({place, place + u"/a"_s, place + u"/r"_s, place + u"/missing"_s,
                                     root, place + u"/:a"_s}));
    const auto absolute = [&folders](const QString &path, qint32 folder) {
        return folders.absolutePath({.path = path, .identity = {}, .folder = folder});
    };
    QCOMPARE(absolute(u"./x"_s, 0), place + u"/x"_s);
    QCOMPARE(absolute(u"a//x"_s, 1), place + u"/a/x"_s);
    QCOMPARE(absolute(root + u"etc/x"_s, 4), root + u"etc/x"_s);
}

void tst_cliFolders::followsLinksBeforeDotDot()
{
    if (!makeLink(m_place->path(u"a/r"_s), m_place->path(u"link"_s)))
        QSKIP("there are no symbolic links here");
    const SearchedFolders folders({u"link/.."_s, u"link"_s}, {});
    const QString place = QFileInfo(m_place->path()).canonicalFilePath();
    QCOMPARE(folders.absolute(), QStringList({place + u"/a"_s, QDir::currentPath() + u"/link"_s}));
}

QTEST_GUILESS_MAIN(tst_cliFolders)
#include "tst_cliFolders.moc"
