#include "results/GroupMarks.h"

#include <QRandomGenerator>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// A group whose files are the letters of \a files, with those of \a marked marked.
DuplicateGroup group(const char *files, const char *marked = "")
{
    DuplicateGroup result;
    for (const QChar letter : QString::fromLatin1(files))
        result.files.append(letter);
    for (const QChar letter : QString::fromLatin1(marked))
        result.markedFiles.insert(letter);
    result.hasMarkedFiles = !result.markedFiles.isEmpty();
    return result;
}

QSet<QString> paths(const char *letters)
{
    QSet<QString> result;
    for (const QChar letter : QString::fromLatin1(letters))
        result.insert(letter);
    return result;
}

QList<DuplicateGroup *> pointersTo(QList<DuplicateGroup> &groups, const QList<int> &positions)
{
    QList<DuplicateGroup *> pointers;
    for (const int position : positions)
        pointers.append(&groups[position]);
    return pointers;
}

/// The marks of each group as letters, followed by "+" if its hasMarkedFiles is set.
QStringList marks(const QList<DuplicateGroup> &groups)
{
    QStringList result;
    for (const DuplicateGroup &shown : groups) {
        QStringList letters = shown.markedFiles.values();
        letters.sort();
        result.append(letters.join(QString()) + (shown.hasMarkedFiles ? u"+"_s : QString()));
    }
    return result;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

/// Reference implementation of saveMarks() that compares every row with every group.
void saveMarksByReference(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &checked)
{
    for (qsizetype i = 0; i < shown.size(); ++i) {
        DuplicateGroup &current = *shown.at(i);
        current.markedFiles.clear();
        if (i >= checked.size())
            continue;
        current.markedFiles = checked.at(i);
        current.hasMarkedFiles = !current.markedFiles.isEmpty();
        for (DuplicateGroup &other : groups) {
            if (other.files == current.files) {
                other.markedFiles = current.markedFiles;
                other.hasMarkedFiles = current.hasMarkedFiles;
            }
        }
    }
}

} // namespace

/// How the checked rows become the marks of the groups.
class tst_groupMarks : public QObject
{
    Q_OBJECT

private slots:
    void savesTheCheckedRows();
    void clearsTheMarksOfGroupsWithoutARow();
    void clearsAllMarksWithoutRows();
    void keepsTheMarksOfGroupsThatAreNotShown();
    void sharesMarksBetweenGroupsWithTheSameFiles();
    void lastOfTheRowsWithTheSameFilesWins();
    void sharesNothingIfTheFilesAreInAnotherOrder();
    void sharesNothingIfOnlyTheFirstFileIsTheSame();
    void clearsSharedMarksWithoutARow();
    void matchesTheReferenceImplementation();
};

void tst_groupMarks::savesTheCheckedRows()
{
    QList<DuplicateGroup> groups{group("abc", "bc"), group("de"), group("fg", "g")};
    saveMarks(groups, pointersTo(groups, {0, 1, 2}), {paths("ab"), paths("d"), paths("")});
    QCOMPARE(marks(groups), (QStringList{u"ab+"_s, u"d+"_s, QString()}));
}

void tst_groupMarks::clearsTheMarksOfGroupsWithoutARow()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd", "d"), group("ef")};
    saveMarks(groups, pointersTo(groups, {0, 1, 2}), {paths("b")});
    // Only the marks are cleared: hasMarkedFiles keeps its value.
    QCOMPARE(marks(groups), words("b+ + "));
}

void tst_groupMarks::clearsAllMarksWithoutRows()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd")};
    saveMarks(groups, pointersTo(groups, {0, 1}), {});
    QCOMPARE(marks(groups), words("+ "));

    QList<DuplicateGroup> none;
    saveMarks(none, {}, {});
    QVERIFY(none.isEmpty());
}

void tst_groupMarks::keepsTheMarksOfGroupsThatAreNotShown()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd", "c"), group("ef", "f")};
    saveMarks(groups, pointersTo(groups, {1}), {paths("cd")});
    QCOMPARE(marks(groups), words("b+ cd+ f+"));
    saveMarks(groups, {}, {paths("a")});
    QCOMPARE(marks(groups), words("b+ cd+ f+"));
}

void tst_groupMarks::sharesMarksBetweenGroupsWithTheSameFiles()
{
    QList<DuplicateGroup> groups{group("ab", "a"), group("ab"), group("abc", "c"), group("ab", "b")};
    saveMarks(groups, pointersTo(groups, {1}), {paths("ab")});
    QCOMPARE(marks(groups), words("ab+ ab+ c+ ab+"));
    saveMarks(groups, pointersTo(groups, {3}), {paths("")});
    QCOMPARE(marks(groups), words("  c+ "));
}

void tst_groupMarks::lastOfTheRowsWithTheSameFilesWins()
{
    QList<DuplicateGroup> groups{group("ab"), group("ab"), group("ab")};
    saveMarks(groups, pointersTo(groups, {0, 1, 2}), {paths("a"), paths("ab"), paths("b")});
    QCOMPARE(marks(groups), words("b+ b+ b+"));
    saveMarks(groups, pointersTo(groups, {0, 2}), {paths("a"), paths("")});
    QCOMPARE(marks(groups), words("  "));
}

void tst_groupMarks::sharesNothingIfTheFilesAreInAnotherOrder()
{
    QList<DuplicateGroup> groups{group("ab", "a"), group("ba", "b"), group("abb", "a"), group("a", "a")};
    saveMarks(groups, pointersTo(groups, {0}), {paths("b")});
    QCOMPARE(marks(groups), words("b+ b+ a+ a+"));
    saveMarks(groups, pointersTo(groups, {0}), {paths("")});
    QCOMPARE(marks(groups), words(" b+ a+ a+"));
}

void tst_groupMarks::sharesNothingIfOnlyTheFirstFileIsTheSame()
{
    QList<DuplicateGroup> groups{group("ab", "a"), group("ac", "c")};
    saveMarks(groups, pointersTo(groups, {0}), {paths("b")});
    QCOMPARE(marks(groups), words("b+ c+"));
}

/// A group without a row takes over hasMarkedFiles and loses its marks.
void tst_groupMarks::clearsSharedMarksWithoutARow()
{
    QList<DuplicateGroup> groups{group("ab"), group("ab"), group("ab")};
    saveMarks(groups, pointersTo(groups, {0, 1}), {paths("a")});
    QCOMPARE(marks(groups), words("a+ + a+"));
}

void tst_groupMarks::matchesTheReferenceImplementation()
{
    QRandomGenerator random(7);
    const auto randomLetters = [&random](int least, int most) {
        QString letters;
        for (int i = random.bounded(least, most + 1); i > 0; --i)
            letters.append(QChar(u'a' + random.bounded(3)));
        return letters.toLatin1();
    };
    for (int round = 0; round < 3000; ++round) {
        QList<DuplicateGroup> groups;
        QList<int> positions;
        for (int i = random.bounded(8); i > 0; --i) {
            groups.append(group(randomLetters(0, 3), randomLetters(0, 2)));
            // hasMarkedFiles may be out of date.
            groups.last().hasMarkedFiles = random.bounded(2) == 0;
            if (random.bounded(3) > 0)
                positions.append(int(groups.size()) - 1);
        }
        QList<QSet<QString>> checked;
        for (int i = random.bounded(int(positions.size()) + 2); i > 0; --i)
            checked.append(paths(randomLetters(0, 2)));

        QList<DuplicateGroup> expected = groups;
        saveMarksByReference(expected, pointersTo(expected, positions), checked);
        saveMarks(groups, pointersTo(groups, positions), checked);
        QCOMPARE(marks(groups), marks(expected));
    }
}

QTEST_APPLESS_MAIN(tst_groupMarks)
#include "tst_groupMarks.moc"
