#include "results/ThumbnailQueue.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// Which rows get a thumbnail, and when.
class tst_thumbnailQueue : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void setsTheIconsLater();
    void keepsRowsWithoutPicture();
    void findsTheRowsOfAMovedGroup();
    void toleratesDeletedRows_data();
    void toleratesDeletedRows();
    void yieldsToTheEventLoop();

private:
    /// Writes a picture of \a width by 32 pixels and adds a row for it.
    QTreeWidgetItem *addPictureRow(QTreeWidgetItem *group, int width) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTreeWidget> m_tree;
    /// Owned by the tree.
    ThumbnailQueue *m_queue = nullptr;
};

void tst_thumbnailQueue::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_tree = std::make_unique<QTreeWidget>();
    m_queue = new ThumbnailQueue(m_tree.get());
}

QTreeWidgetItem *tst_thumbnailQueue::addPictureRow(QTreeWidgetItem *group, int width) const
{
    const QString path = m_folder->filePath(u"%1.png"_s.arg(width));
    QImage image(width, 32, QImage::Format_RGB32);
    image.fill(Qt::red);
    if (!image.save(path))
        qFatal("Cannot write %s", qPrintable(path));
    return new QTreeWidgetItem(group, {path});
}

void tst_thumbnailQueue::setsTheIconsLater()
{
    auto *const group = new QTreeWidgetItem(m_tree.get());
    auto *const first = addPictureRow(group, 8);
    auto *const notQueued = addPictureRow(group, 10);
    auto *const third = addPictureRow(group, 12);
    auto *const nextGroup = new QTreeWidgetItem(m_tree.get());
    auto *const last = addPictureRow(nextGroup, 14);
    m_queue->add(group, {0, 2});
    m_queue->add(nextGroup, {0});
    QVERIFY(first->icon(0).isNull());

    QTRY_VERIFY(!last->icon(0).isNull());
    QCOMPARE(first->icon(0).availableSizes(), QList<QSize>{QSize(8, 32)});
    QCOMPARE(third->icon(0).availableSizes(), QList<QSize>{QSize(12, 32)});
    QCOMPARE(last->icon(0).availableSizes(), QList<QSize>{QSize(14, 32)});
    for (const QTreeWidgetItem *row : {notQueued, group, nextGroup})
        QVERIFY(row->icon(0).isNull());

    // An empty queue accepts further rows.
    m_queue->add(group, {1});
    QTRY_VERIFY(!notQueued->icon(0).isNull());
}

void tst_thumbnailQueue::keepsRowsWithoutPicture()
{
    auto *const group = new QTreeWidgetItem(m_tree.get());
    auto *const gone = addPictureRow(group, 8);
    auto *const broken = addPictureRow(group, 10);
    auto *const good = addPictureRow(group, 12);
    broken->setIcon(0, QIcon(QPixmap(7, 7)));
    QVERIFY(QFile::remove(gone->text(0)));
    QVERIFY(QFile::resize(broken->text(0), 20));

    m_queue->add(group, {0, 1, 2});
    QTRY_VERIFY(!good->icon(0).isNull());
    QVERIFY(gone->icon(0).isNull());
    QCOMPARE(broken->icon(0).availableSizes(), QList<QSize>{QSize(7, 7)});
}

void tst_thumbnailQueue::findsTheRowsOfAMovedGroup()
{
    auto *const before = new QTreeWidgetItem(m_tree.get());
    addPictureRow(before, 6);
    auto *const group = new QTreeWidgetItem(m_tree.get());
    auto *const row = addPictureRow(group, 8);
    auto *const after = new QTreeWidgetItem(m_tree.get());
    auto *const notQueued = addPictureRow(after, 10);

    m_queue->add(before, {0});
    m_queue->add(group, {0});
    delete before;
    m_tree->insertTopLevelItems(0, {new QTreeWidgetItem, new QTreeWidgetItem});

    QTRY_VERIFY(!row->icon(0).isNull());
    QVERIFY(notQueued->icon(0).isNull());
}

void tst_thumbnailQueue::toleratesDeletedRows_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("row deleted") << u"row"_s;
    QTest::newRow("group deleted") << u"group"_s;
    QTest::newRow("tree cleared") << u"clear"_s;
    QTest::newRow("tree destroyed") << u"tree"_s;
}

void tst_thumbnailQueue::toleratesDeletedRows()
{
    QFETCH(const QString, what);
    auto *const group = new QTreeWidgetItem(m_tree.get());
    auto *const row = addPictureRow(group, 8);
    m_queue->add(group, {0});
    if (what == u"row")
        delete row;
    else if (what == u"group")
        delete group;
    else if (what == u"clear")
        m_tree->clear();
    else
        init();

    // The next row may be allocated at the address of the deleted one.
    auto *const nextGroup = new QTreeWidgetItem(m_tree.get());
    auto *const nextRow = addPictureRow(nextGroup, 10);
    auto *const queued = addPictureRow(nextGroup, 12);
    m_queue->add(nextGroup, {1});
    QTRY_VERIFY(!queued->icon(0).isNull());
    QVERIFY(nextRow->icon(0).isNull());
}

/// Thousands of pictures may be queued. User input must not wait for the last of them.
void tst_thumbnailQueue::yieldsToTheEventLoop()
{
    auto *const group = new QTreeWidgetItem(m_tree.get());
    QList<int> rows;
    const QTreeWidgetItem *const model = addPictureRow(group, 200);
    for (int i = 1; i < 2000; ++i) {
        new QTreeWidgetItem(group, {model->text(0)});
        rows.append(i);
    }

    m_queue->add(group, rows);
    const auto *const last = group->child(rows.last());
    int turns = 0;
    QTimer beat;
    connect(&beat, &QTimer::timeout, &beat, [&turns] { ++turns; });
    beat.start(0);

    QTRY_VERIFY_WITH_TIMEOUT(!last->icon(0).isNull(), 60'000);
    QVERIFY2(turns > 5, qPrintable(QString::number(turns)));
}

QTEST_MAIN(tst_thumbnailQueue)
#include "tst_thumbnailQueue.moc"
