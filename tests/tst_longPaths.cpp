#include "app/ElidedLabel.h"
#include "app/PathToolTip.h"
#include "results/RowText.h"
#include "tests/support/ScannedFolder.h"

#include <QAbstractItemDelegate>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QChar ellipsis(0x2026);
const QString deep = u"/home/anna/Documents/"_s + u"a folder deep inside/"_s.repeated(8);

/// Image of the row without its check box.
QImage rowText(QTreeWidget *tree, QTreeWidgetItem *row)
{
    const QRect rect = tree->visualItemRect(row).adjusted(80, 0, 0, -20);
    return tree->viewport()->grab(rect).toImage();
}

QString toolTipAt(QWidget *widget, const QPoint &position)
{
    QToolTip::hideText();
    if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); }))
        qFatal("The tool tip does not hide");
    QHelpEvent event(QEvent::ToolTip, position, widget->mapToGlobal(position));
    QCoreApplication::sendEvent(widget, &event);
    return QToolTip::text();
}

} // namespace

/// Paths and names that are wider than the window.
class tst_longPaths : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void init();

    void elidesAPathInTheMiddle();
    void showsWhereCopiesDiffer_data();
    void showsWhereCopiesDiffer();
    void keepsSizeAndCountOfAGroup_data();
    void keepsSizeAndCountOfAGroup();
    void showsTheWholePathInTheToolTip_data();
    void showsTheWholePathInTheToolTip();

    void rowsOfCopiesLookDifferent();
    void elidedRowsHaveToolTips();
    void groupRowsShowTheirSize();
    void folderRowsKeepTheirButtons();
    void elidedFolderRowsHaveToolTips();
};

void tst_longPaths::init()
{
    reset();
}

void tst_longPaths::elidesAPathInTheMiddle()
{
    const QFontMetrics metrics{QFont()};
    const QString path = deep + u"Report.docx"_s;
    const int width = metrics.horizontalAdvance(path) / 2;
    const QString shown = RowText::elidedPath(path, {path}, metrics, width);
    QVERIFY(shown.startsWith(u"/home/anna/"_s));
    QVERIFY(shown.endsWith(u"/Report.docx"_s));
    QVERIFY(metrics.horizontalAdvance(shown) <= width);
    QCOMPARE(RowText::elidedPath(path, {}, metrics, 10 * width), path);
}

void tst_longPaths::showsWhereCopiesDiffer_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("copy");
    QTest::addColumn<QString>("shown");
    QTest::newRow("last folder") << deep + u"old/Report.docx"_s << deep + u"final/Report.docx"_s
                                 << u"old/Report.docx"_s;
    QTest::newRow("first folder") << u"/media/one/"_s + deep << u"/media/two/"_s + deep << u"/media/one/"_s;
    QTest::newRow("folder in the middle")
        << deep + u"old/"_s + deep << deep + u"final/"_s + deep << u"/old/"_s;
    QTest::newRow("folder at the cut")
        << deep + u"old/"_s + deep.left(48) << deep + u"final/"_s + deep.left(48) << u"/old/"_s;
    QTest::newRow("inside a long name")
        << deep + QString(200, u'x') + u"-1-"_s + QString(200, u'y')
        << deep + QString(200, u'x') + u"-2-"_s + QString(200, u'y') << u"-1-"_s;
    QTest::newRow("an ellipsis in the name")
        << deep + ellipsis + u"old/"_s + deep << deep + ellipsis + u"final/"_s + deep << u"old/"_s;
}

void tst_longPaths::showsWhereCopiesDiffer()
{
    QFETCH(const QString, path);
    QFETCH(const QString, copy);
    QFETCH(const QString, shown);
    const QFontMetrics metrics{QFont()};
    const int width = metrics.averageCharWidth() * 60;
    const QStringList both{copy, path};
    const QString text = RowText::elidedPath(path, both, metrics, width);
    QVERIFY2(text.contains(shown), qPrintable(text));
    QVERIFY(text != RowText::elidedPath(copy, both, metrics, width));
    QVERIFY(metrics.horizontalAdvance(text) <= width);
}

void tst_longPaths::keepsSizeAndCountOfAGroup_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("long") << QString(300, u'x') + u".txt"_s;
    QTest::newRow("spaces") << u"four    blanks "_s.repeated(30) + u".txt"_s;
    QTest::newRow("looks like a title") << u"a    1 B, 2 file(s)"_s.repeated(30) + u".txt"_s;
}

void tst_longPaths::keepsSizeAndCountOfAGroup()
{
    QFETCH(const QString, name);
    const QFontMetrics metrics{QFont()};
    const QString figures = u"    1.50 MB, 12 file(s)"_s;
    const int width = metrics.averageCharWidth() * 70;
    const QString shown = RowText::elidedTitle(name + figures, metrics, width);
    QVERIFY2(shown.endsWith(u".txt"_s + figures), qPrintable(shown));
    QCOMPARE(shown.count(ellipsis), 1);
    QVERIFY(metrics.horizontalAdvance(shown) <= width);
    QCOMPARE(RowText::elidedTitle(name + figures, metrics, 100'000), name + figures);
}

void tst_longPaths::showsTheWholePathInTheToolTip_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("short") << u"/home/anna"_s;
    QTest::newRow("long") << deep.repeated(10);
    QTest::newRow("without separators") << QString(1000, u'x');
    QTest::newRow("letters of two code units") << u"\U0001F5D1"_s.repeated(500) + u'x';
    QTest::newRow("long, one code unit off") << u'x' + u"\U0001F5D1"_s.repeated(500);
}

void tst_longPaths::showsTheWholePathInTheToolTip()
{
    QFETCH(const QString, path);
    const QString tip = pathToolTip(path);
    QCOMPARE(QString(tip).remove(u'\n'), path);
    for (const QString &line : tip.split(u'\n')) {
        QVERIFY(line.size() <= 100);
        QVERIFY(line.toUtf8().indexOf('?') < 0); // half a surrogate pair
    }
    QVERIFY(pathToolTip(u"/<b>bold</b>"_s).contains(u"&lt;b&gt;bold"_s));
}

void tst_longPaths::rowsOfCopiesLookDifferent()
{
    const QString far = u"a folder deep inside/"_s.repeated(5) + u"of the sample/"_s;
    write({far + u"old/"_s + far + u"Report.docx"_s, far + u"final/"_s + far + u"Report.docx"_s}, "the same");
    QVERIFY(scan());
    group(0)->setExpanded(true);
    QTreeWidget *const tree = m_driver->tree();
    QVERIFY(rowText(tree, group(0)->child(0)) != rowText(tree, group(0)->child(1)));
}

void tst_longPaths::elidedRowsHaveToolTips()
{
    const QString longName = u"a folder deep inside/"_s.repeated(8) + u"Report.docx"_s;
    write({longName, u"Report.docx"_s}, "the same");

    QVERIFY(scan());
    QTreeWidget *const tree = m_driver->tree();
    group(0)->setExpanded(true);
    const auto toolTipOf = [tree](QTreeWidgetItem *row) {
        return toolTipAt(tree->viewport(), tree->visualItemRect(row).center()).remove(u'\n');
    };

    QCOMPARE(toolTipOf(m_driver->fileRow(path(longName))), path(longName));
    QCOMPARE(toolTipOf(m_driver->fileRow(path(u"Report.docx"_s))), QString());
}

void tst_longPaths::groupRowsShowTheirSize()
{
    const QString name = QString(240, u'x') + u".txt"_s;
    write({u"a/"_s + name, u"b/"_s + name}, "the same");

    QVERIFY(scan());
    QTreeWidget *const tree = m_driver->tree();
    const QImage before = rowText(tree, group(0));
    group(0)->setText(0, name + u"    8 B, 3 file(s)"_s);

    QVERIFY(rowText(tree, group(0)) != before);
    group(0)->setText(0, name + u"    8 B, 2 file(s)"_s);
    QCOMPARE(rowText(tree, group(0)), before);
}

void tst_longPaths::folderRowsKeepTheirButtons()
{
    const QString folder = path(u"a folder deep inside/"_s.repeated(8) + u"Documents"_s);
    QVERIFY(QDir().mkpath(folder));
    m_driver->setFolders({folder});
    QCOMPARE(m_driver->folders(), QStringList{folder});
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    const QWidget *const row = list->itemWidget(list->item(0));
    QTRY_COMPARE(row->width(), list->visualItemRect(list->item(0)).width());
    const auto *const button = row->findChild<QPushButton *>();
    QVERIFY(row->rect().contains(button->geometry()));
    auto *const label = row->findChild<ElidedLabel *>();
    QVERIFY(label->geometry().right() < button->x());

    // The end of the path is drawn.
    const QImage before = label->grab().toImage();
    label->setText(folder.chopped(1) + u'S');
    QVERIFY(label->grab().toImage() != before);
}

void tst_longPaths::elidedFolderRowsHaveToolTips()
{
    const QString folder = path(u"a folder deep inside/"_s.repeated(8) + u"Documents"_s);
    QVERIFY(QDir().mkpath(folder));
    m_driver->setFolders({folder, m_folder->path()});
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    const auto toolTipOf = [list](int row) {
        auto *const label = list->itemWidget(list->item(row))->findChild<QLabel *>();
        return toolTipAt(label, label->rect().center()).remove(u'\n');
    };
    QTRY_COMPARE(toolTipOf(0), folder);
    QCOMPARE(toolTipOf(1), QString());
}

QTEST_MAIN(tst_longPaths)
#include "tst_longPaths.moc"
