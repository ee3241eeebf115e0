#include "tools/tour/Tour.h"

#include "tools/tour/Camera.h"
#include "tools/tour/Dialogs.h"
#include "tools/tour/ScanStage.h"
#include "tools/tour/TourResults.h"

#include <QAction>
#include <QCoreApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QTextStream>
#include <QToolButton>
#include <QToolTip>

namespace {

constexpr int longPath = 150;   // characters; too long for a row
constexpr int mostGroups = 200; // to load and print

void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

} // namespace

Tour::Tour(const QStringList &folders, const QStringList &places, Deletion deletion, Camera &camera)
    : m_folders(folders)
    , m_places(places)
    , m_deletion(deletion)
    , m_camera(camera)
    , m_scaledWindow(showOnPrimaryScreen(m_driver.window()))
{
}

QString Tour::run()
{
    visitStartPage();
    visitDialogs();
    m_driver.setFolders(m_folders);
    if (m_driver.folders() != m_folders)
        return QStringLiteral("the window does not list the folders");

    print(QStringLiteral("Scanning %1").arg(m_folders.join(QStringLiteral(", "))));
    if (QString error = scanAndShoot(m_driver, m_camera); !error.isEmpty())
        return error;
    visitResults();
    if (!m_driver.find("btnSelectAll")->isEnabled()) {
        print(QStringLiteral("\nNo duplicate files"));
        return m_camera.error();
    }
    visitSelection();
    if (m_deletion == Deletion::OfCopiesInTheSample) {
        if (QString error = deleteCopies(); !error.isEmpty())
            return error;
    }
    return m_camera.error();
}

/// Takes pictures with the volumes of this machine and with added folders.
void Tour::visitStartPage()
{
    // Moves the pointer away: it would highlight a row or a button.
    QCursor::setPos(m_driver.window().screen()->geometry().bottomRight());
    settle();
    shoot("01-start");
    m_driver.setFolders(m_places);
    settle();
    shoot("01-folders");
}

void Tour::visitDialogs()
{
    const auto shootDialog = [this](const char *name) { return [this, name](QWidget *) { shoot(name); }; };
    lookAtDialog([this] { m_driver.click("btnScanOptions"); }, shootDialog("02-options"));
    auto *const menuButton = m_driver.find<QToolButton>("btnMenu");
    lookAtMenu(menuButton, [this] { shoot("03-menu"); });
    QAction *const about = menuButton->menu()->actions().constFirst();
    lookAtDialog([about] { about->trigger(); }, shootDialog("04-about"));
}

void Tour::visitResults()
{
    settle();
    shoot("08-results");
    loadGroups(m_driver, mostGroups);
    printGroups(m_driver, mostGroups);
    print(u'\n' + m_driver.labelText("labelStatsInfo"));
    expandOneGroup(m_driver);
    shoot("09-results-group");
    visitCategories();
    m_driver.click("btnAll");
    visitLongPath();
}

void Tour::visitCategories()
{
    for (const char *name : {"Pictures", "Videos", "Audios", "Documents", "Archives", "Others"}) {
        m_driver.click(QByteArray("btn").append(name).constData());
        expandOneGroup(m_driver);
        settle();
        shoot(QByteArray("10-").append(QByteArray(name).toLower()).constData());
    }
}

/// Takes a picture of the first group with a long path, with its tool tip.
void Tour::visitLongPath()
{
    loadGroups(m_driver, mostGroups);
    QTreeWidget *const tree = m_driver.tree();
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *const group = tree->topLevelItem(i);
        if (group->childCount() == 0 || group->child(0)->text(0).size() < longPath)
            continue;
        group->setExpanded(true);
        tree->scrollToItem(group, QAbstractItemView::PositionAtTop);
        const QPoint row = tree->visualItemRect(group->child(0)).center();
        QHelpEvent toolTip(QEvent::ToolTip, row, tree->viewport()->mapToGlobal(row));
        QCoreApplication::sendEvent(tree->viewport(), &toolTip);
        settle();
        shoot("10-long-path");
        QToolTip::hideText();
        return;
    }
}

void Tour::visitSelection()
{
    const auto expandAndShoot = [this](const char *name) {
        loadGroups(m_driver, mostGroups);
        expandOneGroup(m_driver);
        shoot(name);
    };
    m_driver.click("btnUnselect");
    expandAndShoot("11-unselected");
    m_driver.click("btnSelectAll");
    expandAndShoot("12-selected");
}

/// Deletes the marked files and checks which files remain on the disk.
QString Tour::deleteCopies()
{
    const QString sample = m_folders.constFirst();
    const QSet<QString> before = filesBelow(sample);
    const QStringList marked = m_driver.checkedPaths();
    const QSet<QString> toDelete(marked.cbegin(), marked.cend());
    if (m_driver.folders() != QStringList{sample} || toDelete.isEmpty() || !before.contains(toDelete))
        return QStringLiteral("files outside the sample are marked");

    QString report;
    lookAtDialog([this] { m_driver.click("btnRemoveSelected"); },
        [&](QWidget *box) {
            shoot("13-deleted-box");
            report = qobject_cast<QMessageBox *>(box)->text();
        });
    settle();
    shoot("14-after-deletion");
    print(report);
    if (filesBelow(sample) != before - toDelete)
        return QStringLiteral("the deleted files are not the marked ones");
    print(QStringLiteral("%1 marked files are gone, the other %2 are still there.")
              .arg(toDelete.size())
              .arg(before.size() - toDelete.size()));
    return {};
}

void Tour::shoot(const char *name)
{
    m_camera.shoot(m_driver.window(), QLatin1StringView(name));
}
