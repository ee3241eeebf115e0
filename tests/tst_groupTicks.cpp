#include "results/GroupTicks.h"

#include <QRandomGenerator>
#include <QTest>

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

QSet<QString> ticks(const char *letters)
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

/// The marks of each group as letters, with "+" behind them when the group says that it has marks.
QStringList marks(const QList<DuplicateGroup> &groups)
{
    QStringList result;
    for (const DuplicateGroup &shown : groups) {
        QStringList letters = shown.markedFiles.values();
        letters.sort();
        result.append(letters.join(QString()) + (shown.hasMarkedFiles ? QStringLiteral("+") : QString()));
    }
    return result;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

/// The same told plainly: row after row, and for each row all groups.
void saveTicksPlainly(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &ticked)
{
    for (qsizetype i = 0; i < shown.size(); ++i) {
        DuplicateGroup &current = *shown.at(i);
        current.markedFiles.clear();
        if (i >= ticked.size())
            continue;
        current.markedFiles = ticked.at(i);
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

/// How the ticks of the rows get into the groups.
class tst_groupTicks : public QObject
{
    Q_OBJECT

private slots:
    void savesTheTicksOfTheRows();
    void dropsTheTicksOfGroupsWithoutRow();
    void dropsAllTicksWithoutAnyRow();
    void leavesGroupsThatAreNotShownAlone();
    void sharesTicksBetweenGroupsWithTheSameFiles();
    void lastOfTheRowsWithTheSameFilesDecides();
    void sharesNothingWhenFilesAreInAnotherOrder();
    void dropsSharedTicksWithoutRow();
    void isTheSameAsThePlainWay();
};

void tst_groupTicks::savesTheTicksOfTheRows()
{
    QList<DuplicateGroup> groups{group("abc", "bc"), group("de"), group("fg", "g")};
    saveTicks(groups, pointersTo(groups, {0, 1, 2}), {ticks("ab"), ticks("d"), ticks("")});
    QCOMPARE(marks(groups), (QStringList{QStringLiteral("ab+"), QStringLiteral("d+"), QString()}));
}

void tst_groupTicks::dropsTheTicksOfGroupsWithoutRow()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd", "d"), group("ef")};
    saveTicks(groups, pointersTo(groups, {0, 1, 2}), {ticks("b")});
    // Only the ticks go: whether there were any is still on record.
    QCOMPARE(marks(groups), words("b+ + "));
}

void tst_groupTicks::dropsAllTicksWithoutAnyRow()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd")};
    saveTicks(groups, pointersTo(groups, {0, 1}), {});
    QCOMPARE(marks(groups), words("+ "));

    QList<DuplicateGroup> none;
    saveTicks(none, {}, {});
    QVERIFY(none.isEmpty());
}

void tst_groupTicks::leavesGroupsThatAreNotShownAlone()
{
    QList<DuplicateGroup> groups{group("ab", "b"), group("cd", "c"), group("ef", "f")};
    saveTicks(groups, pointersTo(groups, {1}), {ticks("cd")});
    QCOMPARE(marks(groups), words("b+ cd+ f+"));
    saveTicks(groups, {}, {ticks("a")});
    QCOMPARE(marks(groups), words("b+ cd+ f+"));
}

void tst_groupTicks::sharesTicksBetweenGroupsWithTheSameFiles()
{
    QList<DuplicateGroup> groups{group("ab", "a"), group("ab"), group("abc", "c"), group("ab", "b")};
    saveTicks(groups, pointersTo(groups, {1}), {ticks("ab")});
    QCOMPARE(marks(groups), words("ab+ ab+ c+ ab+"));
    saveTicks(groups, pointersTo(groups, {3}), {ticks("")});
    QCOMPARE(marks(groups), words("  c+ "));
}

void tst_groupTicks::lastOfTheRowsWithTheSameFilesDecides()
{
    QList<DuplicateGroup> groups{group("ab"), group("ab"), group("ab")};
    saveTicks(groups, pointersTo(groups, {0, 1, 2}), {ticks("a"), ticks("ab"), ticks("b")});
    QCOMPARE(marks(groups), words("b+ b+ b+"));
    saveTicks(groups, pointersTo(groups, {0, 2}), {ticks("a"), ticks("")});
    QCOMPARE(marks(groups), words("  "));
}

void tst_groupTicks::sharesNothingWhenFilesAreInAnotherOrder()
{
    QList<DuplicateGroup> groups{group("ab", "a"), group("ba", "b"), group("abb", "a"), group("a", "a")};
    saveTicks(groups, pointersTo(groups, {0}), {ticks("b")});
    QCOMPARE(marks(groups), words("b+ b+ a+ a+"));
    saveTicks(groups, pointersTo(groups, {0}), {ticks("")});
    QCOMPARE(marks(groups), words(" b+ a+ a+"));
}

/// A group without row takes over whether there are ticks, and drops the ticks themselves.
void tst_groupTicks::dropsSharedTicksWithoutRow()
{
    QList<DuplicateGroup> groups{group("ab"), group("ab"), group("ab")};
    saveTicks(groups, pointersTo(groups, {0, 1}), {ticks("a")});
    QCOMPARE(marks(groups), words("a+ + a+"));
}

void tst_groupTicks::isTheSameAsThePlainWay()
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
            // On record although there are none: the record may lag behind.
            groups.last().hasMarkedFiles = random.bounded(2) == 0;
            if (random.bounded(3) > 0)
                positions.append(int(groups.size()) - 1);
        }
        QList<QSet<QString>> ticked;
        for (int i = random.bounded(int(positions.size()) + 2); i > 0; --i)
            ticked.append(ticks(randomLetters(0, 2)));

        QList<DuplicateGroup> expected = groups;
        saveTicksPlainly(expected, pointersTo(expected, positions), ticked);
        saveTicks(groups, pointersTo(groups, positions), ticked);
        QCOMPARE(marks(groups), marks(expected));
    }
}

QTEST_APPLESS_MAIN(tst_groupTicks)
#include "tst_groupTicks.moc"
