#include "tests/support/DuplicateFiles.h"
#include "tests/support/WindowDriver.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr std::array buttons{
    "btnAll", "btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"};

} // namespace

/// The seven category buttons above the tree.
class tst_categoryFilter : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void showsTheGroupsOfTheCategory_data();
    void showsTheGroupsOfTheCategory();
    void comparesKeysExactly();
    void keepsTheOrderOfAll();
    void usesTheCategoryOfTheFirstFile();
    void selectsOneButton();
    void stylesOneButtonAsSelected();
    void selectsTheButtonOfAnEmptyCategory();
    void stylesTheButtonAfterTheLoad();
    void sharesMarksBetweenCategories();
    void keepsMarksOfLoadedRowsAndDropsTheOthers();
    void reloadsTheShownCategoryFromItsStart();
    void keepsMarksOfAnotherCategory();
    void keepsTheSelectedButtonForTheNextScan();

private:
    bool scan()
    {
        m_driver->setFolders({m_folder->path()});
        return m_driver->scan();
    }

    QStringList selectedButtons()
    {
        QStringList names;
        for (const char *name : buttons) {
            if (m_driver->find(name)->property("selected").toBool())
                names.append(QLatin1StringView(name));
        }
        return names;
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};

void tst_categoryFilter::init()
{
    m_driver.reset(new WindowDriver);
    m_folder.reset(new QTemporaryDir);
}

void tst_categoryFilter::showsTheGroupsOfTheCategory_data()
{
    QTest::addColumn<QStringList>("suffixes");
    QTest::newRow("btnPictures") << QStringList{u"bmp"_s, u"jpg"_s, u"png"_s};
    QTest::newRow("btnVideos") << QStringList{u"mkv"_s};
    QTest::newRow("btnAudios") << QStringList{u"mp3"_s};
    QTest::newRow("btnDocuments") << QStringList{u"pdf"_s, u"txt"_s};
    QTest::newRow("btnArchives") << QStringList{u"ZIP"_s};
    QTest::newRow("btnOthers") << QStringList{u"flv"_s, u"heic"_s, u"ogg"_s, u"svg"_s};
    QTest::newRow("btnAll") << QStringList{u"ZIP"_s, u"bmp"_s, u"flv"_s, u"heic"_s, u"jpg"_s, u"mkv"_s,
        u"mp3"_s, u"ogg"_s, u"pdf"_s, u"png"_s, u"svg"_s, u"txt"_s};
}

void tst_categoryFilter::showsTheGroupsOfTheCategory()
{
    QFETCH(const QStringList, suffixes);
    for (const char *suffix :
        {"bmp", "jpg", "png", "mkv", "mp3", "pdf", "txt", "ZIP", "flv", "heic", "ogg", "svg"})
        writePairs(m_folder->path(), 1, QLatin1StringView(suffix));
    QVERIFY(scan());
    m_driver->click(QTest::currentDataTag());
    QSet<QString> shown;
    for (const QString &path : m_driver->filePaths())
        shown.insert(QFileInfo(path).suffix());
    QCOMPARE(shown, QSet<QString>(suffixes.cbegin(), suffixes.cend()));
    QCOMPARE(m_driver->tree()->topLevelItemCount(), suffixes.size());
}

void tst_categoryFilter::comparesKeysExactly()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    for (const QString &key : {u"All"_s, u"Document"_s, u"documents"_s, u"unheard of"_s, QString()}) {
        QVERIFY(QMetaObject::invokeMethod(&m_driver->window(), "onCategoryClicked", Q_ARG(QString, key)));
        QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
    }
    QVERIFY(
        QMetaObject::invokeMethod(&m_driver->window(), "onCategoryClicked", Q_ARG(QString, u"document"_s)));
    QCOMPARE(m_driver->filePaths().size(), 2);
}

void tst_categoryFilter::keepsTheOrderOfAll()
{
    writePairs(m_folder->path(), 15, u"txt"_s);
    writePairs(m_folder->path(), 15, u"jpg"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    const QStringList all = m_driver->groupTitles();
    QCOMPARE(all.size(), 30);
    m_driver->click("btnPictures");
    QCOMPARE(m_driver->groupTitles(), all.filter(u".jpg"_s));
}

void tst_categoryFilter::usesTheCategoryOfTheFirstFile()
{
    // The order of the listed folders decides which file comes first.
    writeCopies(m_folder->path(), {u"a/copy.txt"_s, u"b/copy.jpg"_s}, "content");
    m_driver->setFolders({m_folder->filePath(u"b"_s), m_folder->filePath(u"a"_s)});
    QVERIFY(m_driver->scan());
    m_driver->click("btnDocuments");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
    m_driver->click("btnPictures");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"copy.jpg    7 B, 2 file(s)"_s));
}

void tst_categoryFilter::selectsOneButton()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    QCOMPARE(selectedButtons(), QStringList(u"btnAll"_s));
    for (const char *name : buttons) {
        m_driver->click(name);
        QCOMPARE(selectedButtons(), QStringList(QLatin1StringView(name)));
        for (const char *each : buttons)
            QCOMPARE(m_driver->find(each)->property("selected").typeId(), int(QMetaType::Bool));
    }
}

/// The property alone changes nothing: the style must be applied again.
void tst_categoryFilter::stylesOneButtonAsSelected()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    for (const char *name : buttons) {
        m_driver->click(name);
        for (const char *each : buttons) {
            auto *const button = m_driver->find(each);
            // A point below the text shows the background.
            const QColor background = m_driver->window().grab().toImage().pixelColor(
                button->mapTo(&m_driver->window(), QPoint(40, button->height() - 5)));
            QCOMPARE(background == QColor(0xd2, 0xe8, 0xff), qstrcmp(each, name) == 0);
        }
    }
}

void tst_categoryFilter::selectsTheButtonOfAnEmptyCategory()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    m_driver->click("btnArchives");
    QCOMPARE(m_driver->groupTitles(), QStringList(u"No duplicate files"_s));
    QCOMPARE(selectedButtons(), QStringList(u"btnArchives"_s));
}

void tst_categoryFilter::stylesTheButtonAfterTheLoad()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    QVERIFY(scan());
    QStringList selectedWhenFilled;
    connect(m_driver->tree()->model(), &QAbstractItemModel::rowsInserted, this,
        [&] { selectedWhenFilled = selectedButtons(); });
    m_driver->click("btnDocuments");
    QCOMPARE(selectedWhenFilled, QStringList(u"btnAll"_s));
    QCOMPARE(selectedButtons(), QStringList(u"btnDocuments"_s));
}

void tst_categoryFilter::sharesMarksBetweenCategories()
{
    const QStringList texts = writeCopies(m_folder->path(), {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}, "text");
    writePairs(m_folder->path(), 1, u"jpg"_s);
    QVERIFY(scan());
    m_driver->click("btnDocuments");
    m_driver->checkAll(false);
    m_driver->check(texts.at(1));
    m_driver->click("btnAll");
    QCOMPARE(m_driver->checkedPaths().filter(u".txt"_s), QStringList(texts.at(1)));
    m_driver->check(texts.at(2));
    m_driver->click("btnDocuments");
    QStringList marked = m_driver->checkedPaths();
    marked.sort();
    QCOMPARE(marked, (QStringList{texts.at(1), texts.at(2)}));
}

void tst_categoryFilter::keepsMarksOfLoadedRowsAndDropsTheOthers()
{
    writePairs(m_folder->path(), 100, u"txt"_s);
    QVERIFY(scan());
    m_driver->callSlot("on_treeDuplicates_scroll");
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 40);
    const QStringList marked = m_driver->checkedPaths();
    QCOMPARE(marked.size(), 40);
    m_driver->click("btnDocuments");
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 20);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 100);
    QCOMPARE(m_driver->checkedPaths(), marked);
}

void tst_categoryFilter::reloadsTheShownCategoryFromItsStart()
{
    writePairs(m_folder->path(), 45, u"txt"_s);
    QVERIFY(scan());
    const QStringList first = m_driver->groupTitles();
    const QStringList marked = m_driver->checkedPaths();
    m_driver->click("btnAll");
    QCOMPARE(m_driver->groupTitles(), first);
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 45);
    QCOMPARE(m_driver->checkedPaths(), marked);
}

void tst_categoryFilter::keepsMarksOfAnotherCategory()
{
    writePairs(m_folder->path(), 30, u"txt"_s);
    writePairs(m_folder->path(), 30, u"mp3"_s);
    QVERIFY(scan());
    m_driver->loadAllBatches();
    const QStringList marked = m_driver->checkedPaths();
    QCOMPARE(marked.size(), 60);
    m_driver->click("btnDocuments");
    m_driver->click("btnAudios");
    // The documents beyond the first 20 lost their marks when the category changed; all audio files kept
    // theirs.
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->checkedPaths(), marked.filter(u".mp3"_s));
    m_driver->click("btnDocuments");
    m_driver->loadAllBatches();
    QCOMPARE(m_driver->checkedPaths(), marked.filter(u".txt"_s).first(20));
}

void tst_categoryFilter::keepsTheSelectedButtonForTheNextScan()
{
    writePairs(m_folder->path(), 1, u"txt"_s);
    writePairs(m_folder->path(), 1, u"jpg"_s);
    QVERIFY(scan());
    m_driver->click("btnPictures");
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 1);
    m_driver->click("btnBack");
    QVERIFY(m_driver->scan());
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 2);
    QCOMPARE(selectedButtons(), QStringList(u"btnPictures"_s));
}

QTEST_MAIN(tst_categoryFilter)
#include "tst_categoryFilter.moc"
