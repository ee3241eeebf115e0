#include "cli/Exclusion.h"

#include <QTest>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// A row of matchesWholeTexts().
void addRow(const QString &glob, const QString &text, bool matches)
{
    QTest::addRow("%s, %s", qPrintable(glob), qPrintable(text)) << glob << text << matches;
}

} // namespace

/// Names and paths that a pattern of --exclude matches.
class tst_cliExclusion : public QObject
{
    Q_OBJECT

private slots:
    void matchesWholeTexts_data();
    void matchesWholeTexts();
    void matchesNamesAndPaths();
    void acceptsAFolderWithASlash();
    void isEmptyWithoutPatterns();

private:
    static void addSetsAndEscapes();
};

void tst_cliExclusion::matchesWholeTexts_data()
{
    QTest::addColumn<QString>("glob");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    addRow(u"abc"_s, u"abc"_s, true);
    addRow(u"abc"_s, u"abcd"_s, false);
    addRow(u"abc"_s, u"xabc"_s, false);
    addRow(u"abc"_s, u"Abc"_s, false);
    addRow(u"*.o"_s, u"a.o"_s, true);
    addRow(u"*.o"_s, u".o"_s, true);
    addRow(u"*.o"_s, u"axo"_s, false);
    addRow(u"*.o"_s, u"a\nb.o"_s, true);
    addRow(u"*.o"_s, u"a.o\n"_s, false);
    addRow(u"*.o"_s, u"d/a.o"_s, false);
    addRow(u"**.o"_s, u"d/a.o"_s, true);
    addRow(u"d/*"_s, u"d/a"_s, true);
    addRow(u"d/*"_s, u"d/e/a"_s, false);
    addRow(u"d/**/a"_s, u"d/e/f/a"_s, true);
    addRow(u"?"_s, u"\U0001F600"_s, true);
    addRow(u"?"_s, u"ab"_s, false);
    addRow(u"a?b"_s, u"a/b"_s, false);
    addSetsAndEscapes();
}

void tst_cliExclusion::addSetsAndEscapes()
{
    addRow(u"[a-c]"_s, u"b"_s, true);
    addRow(u"[a-c]"_s, u"d"_s, false);
    addRow(u"[!a-c]"_s, u"d"_s, true);
    addRow(u"[^a-c]"_s, u"b"_s, false);
    addRow(u"[!a]"_s, u"/"_s, false);
    addRow(u"[]a]"_s, u"]"_s, true);
    addRow(u"[!]a]"_s, u"]"_s, false);
    addRow(u"[a\\d]"_s, u"7"_s, false);
    addRow(u"[[:x]"_s, u":"_s, true);
    addRow(u"[a"_s, u"[a"_s, true);
    addRow(u"a]"_s, u"a]"_s, true);
    addRow(u"\\*"_s, u"*"_s, true);
    addRow(u"\\*"_s, u"a"_s, false);
    addRow(u"a\\"_s, u"a\\"_s, true);
    addRow(u"(a|b)+{1}$^.%1"_s, u"(a|b)+{1}$^.%1"_s, true);
    addRow(u"(a|b)"_s, u"a"_s, false);
    addRow(u"\\E\\Qa"_s, u"EQa"_s, true);
}

void tst_cliExclusion::matchesWholeTexts()
{
    QFETCH(const QString, glob);
    QFETCH(const QString, text);
    QFETCH(const bool, matches);
    QCOMPARE(globExpression(glob).match(text).hasMatch(), matches);
}

void tst_cliExclusion::matchesNamesAndPaths()
{
    const ExclusionRule rule = exclusionRule({u"name"_s, u"folder/*.txt"_s});
    QVERIFY(rule(u"name", u"any/where/name"));
    QVERIFY(rule(u"a.txt", u"folder/a.txt"));
    QVERIFY(!rule(u"a.txt", u"other/a.txt"));
    QVERIFY(!rule(u"a.txt", u"other/folder/a.txt"));
}

void tst_cliExclusion::acceptsAFolderWithASlash()
{
    const ExclusionRule rule = exclusionRule({u"folder/"_s});
    QVERIFY(rule(u"folder", u"a/folder"));
    QVERIFY(!rule(u"file", u"folder/file"));
}

void tst_cliExclusion::isEmptyWithoutPatterns()
{
    QVERIFY(!exclusionRule({}));
}

QTEST_GUILESS_MAIN(tst_cliExclusion)
#include "tst_cliExclusion.moc"
