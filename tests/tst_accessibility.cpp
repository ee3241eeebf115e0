#include "tests/support/WindowDriver.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

QString accessibleText(QWidget *widget, QAccessible::Text kind)
{
    const QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible ? accessible->text(kind) : QString();
}

bool hasWords(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar character) { return character.isLetter(); });
}

/// The names of the controls that Tab reaches, from \a first until it returns there.
QStringList walk(QWidget *first)
{
    QStringList names;
    QWidget *current = first;
    first->setFocus(Qt::TabFocusReason);
    do {
        const QString name = current->objectName();
        names.append(name.isEmpty() ? accessibleText(current, QAccessible::Name) : name);
        QTest::keyClick(current, Qt::Key_Tab);
        current = QApplication::focusWidget();
    } while (current && current != first && names.size() < 100);
    return names;
}

QStringList removeButtons(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names.append(u"Remove %1 from the list"_s.arg(path));
    return names;
}

} // namespace

/// Every picture has a name for screen readers. Tab reaches every control except the tree of results, which
/// accepts no keyboard focus.
class tst_accessibility : public QObject
{
    Q_OBJECT

private slots:
    void namesEveryControlWithoutText();
    void namesTheLockOfAReadOnlyVolume();
    void namesEachDeleteButtonAfterItsFolder();
    void tabsThroughTheStartPage();
    void tabsThroughRowsAddedAndRemoved();
    void tabsThroughTheScanPage();
    void tabsThroughTheResultsPage();
    void tabsThroughTheScanOptions();
    void closesTheScanOptionsWithEscape();
    void closesAboutWithEscape();
    void acceptsTheScanOptionsWithEnter_data();
    void acceptsTheScanOptionsWithEnter();
};

void tst_accessibility::namesEveryControlWithoutText()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    driver.addFolder(folder.path());
    QStringList found;
    for (auto *button : driver.window().findChildren<QAbstractButton *>()) {
        if (hasWords(button->text()) || button->objectName().startsWith(u"qt_"_s))
            continue;
        found.append(accessibleText(button, QAccessible::Name));
        QVERIFY(hasWords(found.last()));
        QVERIFY(hasWords(accessibleText(button, QAccessible::Description)));
    }
    QVERIFY(found.contains(u"Help"_s));
    QVERIFY(found.contains(u"Menu"_s));
    QCOMPARE(found.size(), 2 + driver.folders().size());
}

void tst_accessibility::namesTheLockOfAReadOnlyVolume()
{
    WindowDriver driver;
    const QStringList paths = driver.folders();
    auto *const list = driver.find<QListWidget>("listScanFolders");
    for (int i = 0; i < paths.size(); ++i) {
        QLabel *const lock = list->itemWidget(list->item(i))->findChildren<QLabel *>().last();
        QCOMPARE(hasWords(accessibleText(lock, QAccessible::Name)), QStorageInfo(paths.at(i)).isReadOnly());
        QCOMPARE(
            hasWords(accessibleText(lock, QAccessible::Description)), QStorageInfo(paths.at(i)).isReadOnly());
    }
}

void tst_accessibility::namesEachDeleteButtonAfterItsFolder()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    driver.addFolder(folder.path());
    auto *const list = driver.find<QListWidget>("listScanFolders");
    const QStringList paths = driver.folders();
    for (int i = 0; i < paths.size(); ++i) {
        auto *const button = list->itemWidget(list->item(i))->findChild<QPushButton *>();
        QVERIFY(accessibleText(button, QAccessible::Name).contains(paths.at(i)));
    }
}

void tst_accessibility::tabsThroughTheStartPage()
{
    WindowDriver driver;
    QVERIFY(QTest::qWaitForWindowActive(&driver.window()));
    QCOMPARE(walk(driver.find("btnHelp")),
        QStringList({u"btnHelp"_s, u"btnMenu"_s, u"listScanFolders"_s}) + removeButtons(driver.folders()) +
            QStringList({u"btnAddFolder"_s, u"btnScanOptions"_s, u"btnStartScan"_s}));
}

void tst_accessibility::tabsThroughRowsAddedAndRemoved()
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    const QTemporaryDir third;
    WindowDriver driver;
    driver.setFolders({first.path(), second.path()});
    auto *const list = driver.find<QListWidget>("listScanFolders");
    list->itemWidget(list->item(1))->findChild<QPushButton *>()->click();
    driver.addFolder(third.path());
    driver.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&driver.window()));
    QCOMPARE(walk(driver.find("btnHelp")),
        QStringList({u"btnHelp"_s, u"btnMenu"_s, u"listScanFolders"_s}) +
            removeButtons({first.path(), third.path()}) +
            QStringList({u"btnAddFolder"_s, u"btnScanOptions"_s, u"btnStartScan"_s}));
}

void tst_accessibility::tabsThroughTheScanPage()
{
    WindowDriver driver;
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(1);
    QVERIFY(QTest::qWaitForWindowActive(&driver.window()));
    QCOMPARE(walk(driver.find("btnHelp")), (QStringList{u"btnHelp"_s, u"btnMenu"_s, u"btnStopScan"_s}));
}

void tst_accessibility::tabsThroughTheResultsPage()
{
    WindowDriver driver;
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(2);
    QVERIFY(QTest::qWaitForWindowActive(&driver.window()));
    QCOMPARE(walk(driver.find("btnHelp")),
        (QStringList{u"btnHelp"_s, u"btnMenu"_s, u"btnAll"_s, u"btnPictures"_s, u"btnVideos"_s,
            u"btnAudios"_s, u"btnDocuments"_s, u"btnArchives"_s, u"btnOthers"_s, u"btnBack"_s,
            u"btnUnselect"_s, u"btnSelectAll"_s, u"btnRemoveSelected"_s}));
}

void tst_accessibility::tabsThroughTheScanOptions()
{
    WindowDriver driver;
    QStringList names;
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&names](QWidget *dialog) {
            if (!dialog->isActiveWindow())
                return;
            names = walk(dialog->findChild<QWidget *>(u"chkTypeArchive"_s));
            dialog->close();
        });
    QCOMPARE(names,
        (QStringList{u"chkTypeArchive"_s, u"chkTypeDoc"_s, u"chkTypeAudio"_s, u"chkTypeVideo"_s,
            u"chkTypePhoto"_s, u"chkTypeOthers"_s, u"spinMinSize"_s, u"comboMinUnit"_s, u"spinMaxSize"_s,
            u"comboMaxUnit"_s, u"chkSkipSystem"_s, u"chkSkipApps"_s, u"chkSkipHiddenFolder"_s,
            u"chkSkipDesktop"_s, u"btnCancelScanOptions"_s, u"btnOkScanOptions"_s}));
}

void tst_accessibility::closesTheScanOptionsWithEscape()
{
    WindowDriver driver;
    int result = -1;
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&result](QWidget *dialog) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            if (!dialog->isVisible())
                result = qobject_cast<QDialog *>(dialog)->result();
            else
                dialog->close();
        });
    QCOMPARE(result, int(QDialog::Rejected));
}

void tst_accessibility::closesAboutWithEscape()
{
    WindowDriver driver;
    bool closed = false;
    withModalDialogs([&driver] { driver.find<QToolButton>("btnMenu")->menu()->actions().first()->trigger(); },
        [&closed](QWidget *dialog) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            closed = !dialog->isVisible();
            dialog->close();
        });
    QVERIFY(closed);
}

void tst_accessibility::acceptsTheScanOptionsWithEnter_data()
{
    QTest::addColumn<Qt::Key>("key");
    for (const char *name : {"chkTypeArchive", "spinMinSize", "comboMaxUnit", "chkSkipDesktop"})
        QTest::newRow(name) << Qt::Key_Return;
    QTest::newRow("btnOkScanOptions") << Qt::Key_Enter;
}

void tst_accessibility::acceptsTheScanOptionsWithEnter()
{
    QFETCH(const Qt::Key, key);
    WindowDriver driver;
    int result = -1;
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&](QWidget *dialog) {
            if (!dialog->isActiveWindow())
                return;
            auto *const focused = dialog->findChild<QWidget *>(QLatin1StringView(QTest::currentDataTag()));
            focused->setFocus();
            QTest::keyClick(focused, key);
            result = dialog->isVisible() ? -1 : qobject_cast<QDialog *>(dialog)->result();
            dialog->close();
        });
    QCOMPARE(result, int(QDialog::Accepted));
}

QTEST_MAIN(tst_accessibility)
#include "tst_accessibility.moc"
