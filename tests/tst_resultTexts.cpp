#include "results/ResultTexts.h"

#include <QLocale>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qint64 gibi = 1024LL * 1024 * 1024;

DuplicateGroup groupOf(qsizetype files, qint64 size)
{
    DuplicateGroup group;
    group.files = QList<QString>(files, u"/x"_s);
    group.size = size;
    return group;
}

} // namespace

/// The texts of the results page.
class tst_resultTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void formatsTheSizeOfAGroup_data();
    void formatsTheSizeOfAGroup();
    void formatsTheSizeOfAFile_data();
    void formatsTheSizeOfAFile();
    void formatsTheTitleOfAGroup_data();
    void formatsTheTitleOfAGroup();
    void formatsTheTotals_data();
    void formatsTheTotals();
};

void tst_resultTexts::initTestCase()
{
    // The texts must not depend on the locale; German writes 1.024,50.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void tst_resultTexts::formatsTheSizeOfAGroup_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");

    const auto row = [](qint64 bytes, const char *text) {
        QTest::addRow("%lld bytes", static_cast<long long>(bytes)) << bytes << QString::fromLatin1(text);
    };
    row(0, "0 B");
    row(1, "1 B");
    row(1023, "1023 B");
    row(1024, "1.00 KB");
    row(1025, "1.00 KB");
    row(1536, "1.50 KB");
    row(20'000, "19.53 KB");
    row(1'048'575, "1024.00 KB");
    row(1'048'576, "1.00 MB");
    row(1'572'864, "1.50 MB");
    row(gibi, "1024.00 MB");
    row(5 * gibi, "5120.00 MB");
    row(2000 * gibi, "2048000.00 MB");
}

void tst_resultTexts::formatsTheSizeOfAGroup()
{
    QFETCH(const qint64, bytes);
    QTEST(ResultTexts::groupSize(bytes), "text");
}

void tst_resultTexts::formatsTheSizeOfAFile_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");

    const auto row = [](qint64 bytes, const char *text) {
        QTest::addRow("%lld bytes", static_cast<long long>(bytes)) << bytes << QString::fromLatin1(text);
    };
    row(0, "0 KB");
    row(1023, "0 KB");
    row(1024, "1 KB");
    row(2047, "1 KB");
    row(2048, "2 KB");
    row(1'048'576, "1024 KB");
    row(5 * gibi, "5242880 KB");
}

void tst_resultTexts::formatsTheSizeOfAFile()
{
    QFETCH(const qint64, bytes);
    QTEST(ResultTexts::fileSize(bytes), "text");
}

void tst_resultTexts::formatsTheTitleOfAGroup_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("files");
    QTest::addColumn<QString>("title");

    QTest::newRow("plain") << u"cat.jpg"_s << qint64(2048) << 2 << u"cat.jpg    2.00 KB, 2 file(s)"_s;
    QTest::newRow("many files") << u"a"_s << qint64(0) << 12345 << u"a    0 B, 12345 file(s)"_s;
    QTest::newRow("placeholders") << u"%1 %2 %3 %L1 %%n.txt"_s << qint64(1023) << 3
                                  << u"%1 %2 %3 %L1 %%n.txt    1023 B, 3 file(s)"_s;
    QTest::newRow("spaces") << u"  x  "_s << qint64(1) << 2 << u"  x      1 B, 2 file(s)"_s;
    QTest::newRow("not Latin") << u"שלום\U0001F600"_s << 5 * gibi << 2
                               << u"שלום\U0001F600    5120.00 MB, 2 file(s)"_s;
}

void tst_resultTexts::formatsTheTitleOfAGroup()
{
    QFETCH(const QString, fileName);
    QFETCH(const qint64, size);
    QFETCH(const int, files);
    QTEST(ResultTexts::groupTitle(fileName, size, files), "title");
}

void tst_resultTexts::formatsTheTotals_data()
{
    QTest::addColumn<QList<DuplicateGroup>>("groups");
    QTest::addColumn<QString>("text");

    QTest::newRow("no group") << QList<DuplicateGroup>{} << u"Total 0 duplicates, 0 files, size 0.00 GB"_s;
    QTest::newRow("empty files") << QList{groupOf(2, 0)} << u"Total 1 duplicates, 2 files, size 0.00 GB"_s;
    QTest::newRow("three of 1 GiB") << QList{groupOf(3, gibi)}
                                    << u"Total 1 duplicates, 3 files, size 3.00 GB"_s;
    QTest::newRow("several groups") << QList{groupOf(3, gibi), groupOf(2, gibi / 4), groupOf(5, 1000)}
                                    << u"Total 3 duplicates, 10 files, size 3.50 GB"_s;
    QTest::newRow("a hundredth") << QList{groupOf(2, gibi / 200)}
                                 << u"Total 1 duplicates, 2 files, size 0.01 GB"_s;
    QTest::newRow("huge") << QList{groupOf(1500, 2000 * gibi)}
                          << u"Total 1 duplicates, 1500 files, size 3000000.00 GB"_s;
}

void tst_resultTexts::formatsTheTotals()
{
    QFETCH(QList<DuplicateGroup>, groups);
    QList<DuplicateGroup *> pointers;
    for (DuplicateGroup &group : groups)
        pointers.append(&group);
    QTEST(ResultTexts::totals(pointers), "text");
}

QTEST_GUILESS_MAIN(tst_resultTexts)
#include "tst_resultTexts.moc"
