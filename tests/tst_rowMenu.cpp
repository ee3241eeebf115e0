#include "results/RowMenu.h"

#include "tests/support/MessageFilter.h"
#include "tests/support/OpenedUrls.h"
#include "tests/support/ScannedFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

QStringList entries(const QMenu *menu)
{
    QStringList texts;
    if (menu) {
        for (const QAction *action : menu->actions())
            texts.append(action->text());
    }
    return texts;
}

void trigger(const QMenu *menu, const QString &entry)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == entry)
            action->trigger();
    }
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

const QStringList fileEntries{u"Open"_s, u"Show in folder"_s, u"Copy path"_s};

} // namespace

/// The context menu of the results: its entries, their actions, and that opening it has no side effects.
class tst_rowMenu : public QObject, private ScannedFolder
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void offersThreeActionsForAFile();
    void offersToCopyThePathsOfAGroup();
    void offersNothingWithoutAFile();
    void opensTheFile();
    void showsTheFolderOfTheFile();
    void copiesThePath();
    void copiesThePathsOfAGroup();
    void keepsItsPathsWhenTheRowIsDeleted();

    void opensOnARightClick();
    void opensNothingOnEmptySpace();
    void changesNeitherCheckBoxesNorRows();

private:
    /// Right-clicks with mouse and context menu events. Returns the menu that opens, or null.
    QMenu *rightClick(const QPoint &position);
    [[nodiscard]] std::unique_ptr<QMenu> menuOf(const QTreeWidgetItem *row);

    OpenedUrls m_opened{{u"file"_s}};
    QStringList m_paths;
};

void tst_rowMenu::initTestCase()
{
    dropRepeatedMessages();
    // Without a session bus no file manager can be found, so the folder is opened.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
}

/// One group of three files, expanded; the clipboard holds something else.
void tst_rowMenu::init()
{
    m_opened.urls.clear();
    reset();
    m_paths = write({u"a b.txt"_s, u"c,d.txt"_s, u"e#f%20.txt"_s}, "content");
    QVERIFY(scan());
    m_paths = m_driver->filePaths();
    QCOMPARE(m_paths.size(), 3);
    group(0)->setExpanded(true);
    QGuiApplication::clipboard()->setText(u"something else"_s);
}

std::unique_ptr<QMenu> tst_rowMenu::menuOf(const QTreeWidgetItem *row)
{
    return std::unique_ptr<QMenu>(createRowMenu(row, nullptr));
}

QMenu *tst_rowMenu::rightClick(const QPoint &position)
{
    QWidget *const viewport = m_driver->tree()->viewport();
    QTest::mouseClick(viewport, Qt::RightButton, {}, position);
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, viewport->mapToGlobal(position));
    QApplication::sendEvent(viewport, &event);
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

void tst_rowMenu::offersThreeActionsForAFile()
{
    QCOMPARE(entries(menuOf(group(0)->child(1)).get()), fileEntries);
}

void tst_rowMenu::offersToCopyThePathsOfAGroup()
{
    QCOMPARE(entries(menuOf(group(0)).get()), QStringList{u"Copy paths"_s});
}

void tst_rowMenu::offersNothingWithoutAFile()
{
    QVERIFY(!menuOf(nullptr));
    const QTreeWidgetItem groupOfMissingFiles;
    QVERIFY(!menuOf(&groupOfMissingFiles));
    m_driver->click("btnPictures");
    QCOMPARE(m_driver->groupTitles(), QStringList{u"No duplicate files"_s});
    QVERIFY(!menuOf(group(0)));
}

void tst_rowMenu::opensTheFile()
{
    for (int i = 0; i < 3; ++i)
        trigger(menuOf(group(0)->child(i)).get(), u"Open"_s);
    QList<QUrl> expected;
    for (const QString &path : m_paths)
        expected.append(QUrl::fromLocalFile(path));
    QCOMPARE(m_opened.urls, expected);
}

void tst_rowMenu::showsTheFolderOfTheFile()
{
#ifdef Q_OS_WIN
    QSKIP("On Windows this would open the file manager");
#endif
    trigger(menuOf(group(0)->child(0)).get(), u"Show in folder"_s);
    QTRY_COMPARE(m_opened.urls, QList<QUrl>{QUrl::fromLocalFile(m_folder->path())});
}

void tst_rowMenu::copiesThePath()
{
    trigger(menuOf(group(0)->child(2)).get(), u"Copy path"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), native(m_paths.at(2)));
    QVERIFY(m_opened.urls.isEmpty());
}

void tst_rowMenu::copiesThePathsOfAGroup()
{
    trigger(menuOf(group(0)).get(), u"Copy paths"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), native(m_paths.join(u'\n')));
}

void tst_rowMenu::keepsItsPathsWhenTheRowIsDeleted()
{
    const std::unique_ptr<QMenu> menu = menuOf(group(0)->child(1));
    m_driver->click("btnBack");
    QCOMPARE(groups(), 0);
    trigger(menu.get(), u"Copy path"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), native(m_paths.at(1)));
}

void tst_rowMenu::opensOnARightClick()
{
    const QTreeWidget *const tree = m_driver->tree();
    QPointer<QMenu> menu = rightClick(tree->visualItemRect(group(0)->child(1)).center());
    QCOMPARE(entries(menu), fileEntries);
    QCOMPARE(menu->parentWidget(), &m_driver->window());

    trigger(menu, u"Copy path"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), native(m_paths.at(1)));
    menu->close();
    QTRY_VERIFY(!menu);
    menu = rightClick(tree->visualItemRect(group(0)).center());
    QCOMPARE(entries(menu), QStringList{u"Copy paths"_s});
    menu->close();
}

void tst_rowMenu::opensNothingOnEmptySpace()
{
    const QRect last = m_driver->tree()->visualItemRect(group(0)->child(2));
    QVERIFY(!rightClick(last.bottomLeft() + QPoint(50, 20)));
    m_driver->click("btnPictures");
    QVERIFY(!rightClick(m_driver->tree()->visualItemRect(group(0)).center()));
}

/// Clicks hit check boxes as well, and some groups are not loaded yet.
void tst_rowMenu::changesNeitherCheckBoxesNorRows()
{
    m_driver->click("btnBack");
    for (int i = 0; i < 30; ++i)
        write({u"first %1"_s.arg(i), u"second %1"_s.arg(i)}, QByteArray(10 + i, 'x'));
    QVERIFY(scan());
    QTreeWidget *const tree = m_driver->tree();
    const int loaded = groups();
    group(0)->setExpanded(true);
    QCoreApplication::processEvents();
    const QStringList checked = m_driver->checkedPaths();
    const Qt::CheckState groupState = group(0)->checkState(0);
    QTreeWidgetItem *const kept = group(0)->child(0);

    for (int y = 1; y < tree->viewport()->height(); y += 7) {
        for (const int x : {5, 12, 25, 32, 45, 300}) {
            if (QMenu *const menu = rightClick(QPoint(x, y)))
                menu->close();
        }
    }
    QCOMPARE(groups(), loaded);
    QCOMPARE(group(0)->child(0), kept);
    QCOMPARE(tree->verticalScrollBar()->value(), 0);
    QCOMPARE(m_driver->checkedPaths(), checked);
    QCOMPARE(group(0)->checkState(0), groupState);
    QVERIFY(group(0)->isExpanded());
    QCOMPARE(QGuiApplication::clipboard()->text(), u"something else"_s);
    QVERIFY(m_opened.urls.isEmpty());
}

QTEST_MAIN(tst_rowMenu)
#include "tst_rowMenu.moc"
