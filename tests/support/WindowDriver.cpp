#include "tests/support/WindowDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>

namespace {

constexpr int pollMilliseconds = 5;

template <typename Visit>
void forEachFileRow(QTreeWidget *tree, Visit visit)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *const group = tree->topLevelItem(i);
        for (int j = 0; j < group->childCount(); ++j)
            visit(group->child(j));
    }
}

} // namespace

void withModalDialogs(const std::function<void()> &action, const std::function<void(QWidget *)> &handle)
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&handle] {
        if (QWidget *const dialog = QApplication::activeModalWidget())
            handle(dialog);
    });
    poll.start(pollMilliseconds);
    action();
}

void fire(const QList<QTimer *> &timers)
{
    for (QTimer *timer : timers)
        QMetaObject::invokeMethod(timer, "timeout");
}

ShownBox deletionBox(int files, int failed)
{
    return {QStringLiteral("Deletion Complete"),
        QStringLiteral("Deleted %1 files successfully, %2 files failed.").arg(files).arg(failed)};
}

WindowDriver::WindowDriver()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_window.show();
}

void WindowDriver::click(const char *buttonName)
{
    find<QAbstractButton>(buttonName)->click();
}

void WindowDriver::callSlot(const char *slotName)
{
    if (!QMetaObject::invokeMethod(&m_window, slotName))
        qFatal("The window has no slot %s", slotName);
}

QList<QTimer *> WindowDriver::timers(int milliseconds)
{
    QList<QTimer *> timers = m_window.findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
    timers.removeIf([milliseconds](const QTimer *timer) { return timer->interval() != milliseconds; });
    return timers;
}

QTreeWidget *WindowDriver::tree()
{
    return find<QTreeWidget>("treeDuplicates");
}

QString WindowDriver::labelText(const char *name)
{
    return find<QLabel>(name)->text();
}

QString WindowDriver::page()
{
    return find<QStackedWidget>("stackedWidget")->currentWidget()->objectName();
}

QStringList WindowDriver::folders()
{
    QStringList paths;
    auto *const list = find<QListWidget>("listScanFolders");
    for (int i = 0; i < list->count(); ++i)
        paths.append(list->itemWidget(list->item(i))->findChild<QLabel *>()->text());
    return paths;
}

void WindowDriver::removeAllFolders()
{
    auto *const list = find<QListWidget>("listScanFolders");
    while (list->count() > 0) {
        // Rows added by listFolders() have no button.
        if (auto *const button = list->itemWidget(list->item(0))->findChild<QPushButton *>())
            button->click();
        else
            delete list->takeItem(0);
    }
}

void WindowDriver::addFolder(const QString &path)
{
    withModalDialogs([this] { click("btnAddFolder"); },
        [&path](QWidget *dialog) {
            if (auto *const chooser = qobject_cast<QFileDialog *>(dialog)) {
                chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
                QMetaObject::invokeMethod(chooser, "accept");
            }
        });
}

void WindowDriver::setFolders(const QStringList &paths)
{
    removeAllFolders();
    for (const QString &path : paths)
        addFolder(path);
}

void WindowDriver::listFolders(const QStringList &paths)
{
    removeAllFolders();
    auto *const list = find<QListWidget>("listScanFolders");
    // The scan reads the path from the first label of a row.
    for (const QString &path : paths) {
        auto *const item = new QListWidgetItem(list);
        auto *const row = new QWidget;
        new QLabel(path, row);
        list->setItemWidget(item, row);
    }
}

void WindowDriver::chooseOptions(const std::function<void(QWidget *dialog)> &choose)
{
    withModalDialogs([this] { click("btnScanOptions"); },
        [&choose](QWidget *dialog) {
            choose(dialog);
            dialog->findChild<QPushButton *>(QStringLiteral("btnOkScanOptions"))->click();
        });
}

bool WindowDriver::scan(int milliseconds)
{
    click("btnStartScan");
    return waitForResults(milliseconds);
}

bool WindowDriver::waitForResults(int milliseconds)
{
    return QTest::qWaitFor(
        [this] { return page() == u"duplicatespage" && tree()->topLevelItemCount() > 0; }, milliseconds);
}

void WindowDriver::loadAllBatches()
{
    for (int before = -1; before != tree()->topLevelItemCount();) {
        before = tree()->topLevelItemCount();
        callSlot("on_treeDuplicates_scroll");
    }
}

void WindowDriver::scrollToTheEnd()
{
    QScrollBar *const bar = tree()->verticalScrollBar();
    for (int before = -1; before != tree()->topLevelItemCount();) {
        before = tree()->topLevelItemCount();
        QCoreApplication::processEvents();
        bar->setValue(bar->maximum() - 1);
        bar->setValue(bar->maximum());
    }
}

QStringList WindowDriver::groupTitles()
{
    QStringList titles;
    for (int i = 0; i < tree()->topLevelItemCount(); ++i)
        titles.append(tree()->topLevelItem(i)->text(0));
    return titles;
}

QStringList WindowDriver::filePaths()
{
    QStringList paths;
    forEachFileRow(tree(), [&paths](const QTreeWidgetItem *row) { paths.append(row->text(0)); });
    return paths;
}

QStringList WindowDriver::checkedPaths()
{
    QStringList paths;
    forEachFileRow(tree(), [&paths](const QTreeWidgetItem *row) {
        if (row->checkState(0) == Qt::Checked)
            paths.append(row->text(0));
    });
    return paths;
}

QTreeWidgetItem *WindowDriver::fileRow(const QString &path)
{
    QTreeWidgetItem *found = nullptr;
    forEachFileRow(tree(), [&](QTreeWidgetItem *row) {
        if (!found && row->text(0) == path)
            found = row;
    });
    return found;
}

void WindowDriver::check(const QString &path, bool checked)
{
    fileRow(path)->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
}

void WindowDriver::checkAll(bool checked)
{
    forEachFileRow(tree(),
        [checked](QTreeWidgetItem *row) { row->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked); });
}

QList<ShownBox> WindowDriver::clickAndCloseBoxes(const char *buttonName)
{
    QList<ShownBox> boxes;
    withModalDialogs([&] { click(buttonName); },
        [&boxes](QWidget *dialog) {
            if (auto *const box = qobject_cast<QMessageBox *>(dialog)) {
                boxes.append({box->windowTitle(), box->text()});
                box->button(QMessageBox::Ok)->click();
            }
        });
    return boxes;
}
