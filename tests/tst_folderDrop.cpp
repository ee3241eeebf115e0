#include "app/FolderDrop.h"

#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

using Urls = QList<QUrl>;

std::unique_ptr<QMimeData> mimeData(const Urls &urls)
{
    auto data = std::make_unique<QMimeData>();
    data->setUrls(urls);
    return data;
}

Urls localUrls(const QStringList &paths)
{
    Urls urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

} // namespace

/// Drags over the list of folders, and drops on it.
class tst_folderDrop : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void addsADroppedFolderLikeTheAddButton();
    void addsTheFolderOfADroppedFile();
    void addsEachFolderOfADropOnce();
    void doesNotAddAListedFolder();
    void doesNotAddALinkToAListedFolder();
    void refusesDropsWithoutFolders_data();
    void refusesDropsWithoutFolders();
    void addsOnlyTheFoldersOfAMixedDrop();
    void neverAcceptsAMove();
    void ignoresOtherEvents();

private:
    /// Sends a drag event to the list as Qt does. Returns whether the list accepted it.
    bool drag(QEvent::Type type, const QMimeData &data, Qt::DropAction *action = nullptr);
    /// Enters, moves and drops. Returns true if all three events were accepted, false if none was, and
    /// nothing otherwise.
    std::optional<bool> drop(const QMimeData &data);
    void drop(const QStringList &paths);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};

void tst_folderDrop::init()
{
    m_folder.reset(new QTemporaryDir(QDir(QDir::tempPath()).canonicalPath() + u"/quillory-XXXXXX"_s));
    QVERIFY(QDir(m_folder->path()).mkpath(u"inner"_s));
    writeFile(m_folder->filePath(u"inner/a.txt"_s), "a");
    writeFile(m_folder->filePath(u"inner/b.txt"_s), "b");
    m_driver.reset(new WindowDriver);
    m_driver->removeAllFolders();
}

bool tst_folderDrop::drag(QEvent::Type type, const QMimeData &data, Qt::DropAction *action)
{
    QWidget *const viewport = m_driver->find<QListWidget>("listScanFolders")->viewport();
    const QPoint middle = viewport->rect().center();
    constexpr Qt::DropActions possible = Qt::MoveAction | Qt::CopyAction;
    std::unique_ptr<QDropEvent> event;
    if (type == QEvent::DragEnter)
        event = std::make_unique<QDragEnterEvent>(
            middle, possible, &data, Qt::LeftButton, Qt::KeyboardModifiers());
    else if (type == QEvent::DragMove)
        event = std::make_unique<QDragMoveEvent>(
            middle, possible, &data, Qt::LeftButton, Qt::KeyboardModifiers());
    else
        event =
            std::make_unique<QDropEvent>(middle, possible, &data, Qt::LeftButton, Qt::KeyboardModifiers());
    event->setDropAction(Qt::MoveAction);
    event->ignore();
    QApplication::sendEvent(viewport, event.get());
    if (action)
        *action = event->dropAction();
    return event->isAccepted();
}

std::optional<bool> tst_folderDrop::drop(const QMimeData &data)
{
    const bool entered = drag(QEvent::DragEnter, data);
    const bool moved = drag(QEvent::DragMove, data);
    const bool dropped = drag(QEvent::Drop, data);
    if (entered != moved || moved != dropped)
        return std::nullopt;
    return dropped;
}

void tst_folderDrop::drop(const QStringList &paths)
{
    QCOMPARE(drop(*mimeData(localUrls(paths))), true);
}

void tst_folderDrop::addsADroppedFolderLikeTheAddButton()
{
    const QString inner = m_folder->filePath(u"inner"_s);
    drop({inner + u'/'});
    m_driver->addFolder(m_folder->path());

    QCOMPARE(m_driver->folders(), (QStringList{inner, m_folder->path()}));
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    QCOMPARE(list->item(0)->sizeHint(), list->item(1)->sizeHint());
    const auto *const dropped = list->itemWidget(list->item(0))->findChild<QPushButton *>();
    const auto *const added = list->itemWidget(list->item(1))->findChild<QPushButton *>();
    QCOMPARE(dropped->text(), added->text());
    QVERIFY(list->viewport()->acceptDrops());
}

void tst_folderDrop::addsTheFolderOfADroppedFile()
{
    drop({m_folder->filePath(u"inner/a.txt"_s)});
    QCOMPARE(m_driver->folders(), QStringList{m_folder->filePath(u"inner"_s)});
}

void tst_folderDrop::addsEachFolderOfADropOnce()
{
    const QString inner = m_folder->filePath(u"inner"_s);
    const QStringList paths{inner + u"/a.txt"_s, m_folder->path(), inner + u"/b.txt"_s, inner};
    const QStringList expected{inner, m_folder->path()};
    QCOMPARE(foldersIn(*mimeData(localUrls(paths))), expected);
    drop(paths);
    QCOMPARE(m_driver->folders(), expected);
}

void tst_folderDrop::doesNotAddAListedFolder()
{
    const QString inner = m_folder->filePath(u"inner"_s);
    m_driver->addFolder(inner);

    drop({inner});
    drop({inner + u"/a.txt"_s});
    drop({m_folder->path(), inner});

    QCOMPARE(m_driver->folders(), (QStringList{inner, m_folder->path()}));
    // The Add button lists a folder as often as the user adds it.
    m_driver->addFolder(inner);
    QCOMPARE(m_driver->folders(), (QStringList{inner, m_folder->path(), inner}));
}

void tst_folderDrop::doesNotAddALinkToAListedFolder()
{
    const QString inner = m_folder->filePath(u"inner"_s);
    const QString link = m_folder->filePath(u"link"_s);
#ifdef Q_OS_WIN
    QSKIP("Only administrators can create symbolic links here");
#endif
    QVERIFY(QFile::link(inner, link));

    drop({inner});
    drop({link});

    QCOMPARE(m_driver->folders(), QStringList{inner});
}

void tst_folderDrop::refusesDropsWithoutFolders_data()
{
    QTest::addColumn<Urls>("urls");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << Urls() << u"/tmp"_s;
    QTest::newRow("a web page") << Urls{QUrl(u"http://www.quillory.example/tmp"_s)} << QString();
    QTest::newRow("a folder on a server") << Urls{QUrl(u"sftp://quillory.example/tmp"_s)} << QString();
    QTest::newRow("a missing file") << Urls{QUrl::fromLocalFile(u"/no/such/file"_s)} << QString();
    QTest::newRow("an empty address") << Urls{QUrl()} << QString();
}

void tst_folderDrop::refusesDropsWithoutFolders()
{
    QFETCH(const Urls, urls);
    QFETCH(const QString, text);
    const std::unique_ptr<QMimeData> data = text.isEmpty() ? mimeData(urls) : std::make_unique<QMimeData>();
    if (!text.isEmpty())
        data->setText(text);
    QCOMPARE(foldersIn(*data), QStringList());

    QCOMPARE(drop(*data), false);
    QCOMPARE(m_driver->folders(), QStringList());
}

void tst_folderDrop::addsOnlyTheFoldersOfAMixedDrop()
{
    Urls urls = localUrls({u"/no/such/file"_s, m_folder->path()});
    urls.prepend(QUrl(u"https://www.quillory.example/"_s));
    QCOMPARE(drop(*mimeData(urls)), true);
    QCOMPARE(m_driver->folders(), QStringList{m_folder->path()});
}

/// The source of a drag deletes its files after a move.
void tst_folderDrop::neverAcceptsAMove()
{
    const auto data = mimeData(localUrls({m_folder->path()}));
    for (const QEvent::Type type : {QEvent::DragEnter, QEvent::DragMove, QEvent::Drop}) {
        Qt::DropAction action = Qt::MoveAction;
        QVERIFY(drag(type, *data, &action));
        QCOMPARE(action, Qt::CopyAction);
    }
}

void tst_folderDrop::ignoresOtherEvents()
{
    m_driver->setFolders({m_folder->path()});
    auto *const list = m_driver->find<QListWidget>("listScanFolders");
    const QSignalSpy pressed(list, &QListWidget::itemPressed);
    const QPoint row = list->visualItemRect(list->item(0)).center();
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, row);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, row);
    QCOMPARE(pressed.size() + list->selectedItems().size(), 2);
}

QTEST_MAIN(tst_folderDrop)
#include "tst_folderDrop.moc"
