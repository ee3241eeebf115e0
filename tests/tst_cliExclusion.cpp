#include "cli/Exclusion.h"

#include <QTest>

using Qt::Literals::StringLiterals::operator""_s;

/// Which names and paths a pattern leaves out.
class tst_cliExclusion : public QObject
{
    Q_OBJECT

private slots:
    void matchesWholeTexts_data();
    void matchesWholeTexts();
    void matchesNameAndPath();
    void acceptsAFolderWithASlash();
    void isEmptyWithoutPatterns();
};

void tst_cliExclusion::matchesWholeTexts_data()
{
    QTest::addColumn<QString>("glob");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matches");
    int row = 0;
    const auto add = [&row](const QString &glob, const QString &text, bool matches) {
        QTest::addRow("%d: %s, %s", row++, qPrintable(glob), qPrintable(text)) << glob << text << matches;
    };
    add(u"abc"_s, u"abc"_s, true);
    add(u"abc"_s, u"abcd"_s, false);
    add(u"abc"_s, u"xabc"_s, false);
    add(u"abc"_s, u"Abc"_s, false);
    add(u"*.o"_s, u"a.o"_s, true);
    add(u"*.o"_s, u".o"_s, true);
    add(u"*.o"_s, u"axo"_s, false);
    add(u"*.o"_s, u"a\nb.o"_s, true);
    add(u"*.o"_s, u"a.o\n"_s, false);
    add(u"*.o"_s, u"d/a.o"_s, false);
    add(u"**.o"_s, u"d/a.o"_s, true);
    add(u"d/*"_s, u"d/a"_s, true);
    add(u"d/*"_s, u"d/e/a"_s, false);
    add(u"d/**/a"_s, u"d/e/f/a"_s, true);
    add(u"?"_s, u"\U0001F600"_s, true);
    add(u"?"_s, u"ab"_s, false);
    add(u"a?b"_s, u"a/b"_s, false);
    add(u"[a-c]"_s, u"b"_s, true);
    add(u"[a-c]"_s, u"d"_s, false);
    add(u"[!a-c]"_s, u"d"_s, true);
    add(u"[^a-c]"_s, u"b"_s, false);
    add(u"[!a]"_s, u"/"_s, false);
    add(u"[]a]"_s, u"]"_s, true);
    add(u"[!]a]"_s, u"]"_s, false);
    add(u"[a\\d]"_s, u"7"_s, false);
    add(u"[[:x]"_s, u":"_s, true);
    add(u"[a"_s, u"[a"_s, true);
    add(u"a]"_s, u"a]"_s, true);
    add(u"\\*"_s, u"*"_s, true);
    add(u"\\*"_s, u"a"_s, false);
    add(u"a\\"_s, u"a\\"_s, true);
    add(u"(a|b)+{1}$^.%1"_s, u"(a|b)+{1}$^.%1"_s, true);
    add(u"(a|b)"_s, u"a"_s, false);
    add(u"\\E\\Qa"_s, u"EQa"_s, true);
}

void tst_cliExclusion::matchesWholeTexts()
{
    QFETCH(const QString, glob);
    QFETCH(const QString, text);
    QFETCH(const bool, matches);
    QCOMPARE(globExpression(glob).match(text).hasMatch(), matches);
}

void tst_cliExclusion::matchesNameAndPath()
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
