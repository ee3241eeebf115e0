#include "tests/support/DuplicateFiles.h"
#include "tests/support/OptionsDialog.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

const QStringList archives{u"zip"_s, u"rar"_s, u"7z"_s, u"ZIP"_s};
const QStringList documents{u"doc"_s, u"docx"_s, u"pdf"_s, u"txt"_s};
const QStringList audios{u"mp3"_s, u"wav"_s, u"flac"_s, u"aac"_s, u"ogg"_s, u"m4a"_s};
const QStringList videos{u"mp4"_s, u"avi"_s, u"mkv"_s, u"mov"_s, u"wmv"_s, u"flv"_s};
const QStringList pictures{u"jpg"_s, u"jpeg"_s, u"png"_s, u"webp"_s, u"gif"_s, u"bmp"_s, u"tiff"_s, u"tif"_s,
    u"ico"_s, u"heic"_s, u"svg"_s, u"Jpeg"_s};
const QStringList others{u"gz"_s, u"zipx"_s, u""_s};
const QStringList everything = archives + documents + audios + videos + pictures + others;

void writeOnePairPerSuffix(const QString &folder)
{
    for (qsizetype i = 0; i < everything.size(); ++i) {
        const QString &suffix = everything.at(i);
        const QString ending = suffix.isEmpty() ? QString() : u'.' + suffix;
        // One folder for each: some file systems ignore case.
        writeCopies(folder + u'/' + QString::number(i), {u"first"_s + ending, u"second"_s + ending},
            "content of " + suffix.toUtf8());
    }
}

template <typename Names, typename Chosen>
void check(const QWidget *dialog, const Names &names, const Chosen &chosen)
{
    for (const char *name : names)
        child(dialog, name)->setChecked(chosen.contains(QByteArray(name)));
}

/// Scans \a folders with only the boxes in \a checked checked. Returns the sorted paths of all files with
/// copies.
QStringList scanWith(WindowDriver &driver, const QStringList &folders, const QByteArrayList &checked)
{
    driver.chooseOptions([&checked](QWidget *dialog) {
        check(dialog, typeBoxes, checked);
        check(dialog, skipBoxes, checked);
    });
    driver.setFolders(folders);
    if (!driver.scan())
        qFatal("The scan did not end");
    driver.loadAllBatches();
    QStringList paths = driver.filePaths();
    paths.sort();
    return paths;
}

QByteArrayList allTypes()
{
    return QByteArrayList(typeBoxes.begin(), typeBoxes.end());
}

} // namespace

/// What each option of the dialog changes in a scan.
class tst_scanPerOption : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void collectsTheChosenTypes_data();
    void collectsTheChosenTypes();
    void ignoresTheSizeFields();
    void skipsTheDesktop_data();
    void skipsTheDesktop();
    void neverCollectsHiddenFiles_data();
    void neverCollectsHiddenFiles();
    void findsVisibleFilesInAHiddenFolder();
    void comparesFullPathsWithTheSkippedFolders();
    void usesTheOptionsChosenLast();

private:
    QTemporaryDir m_home;
};

void tst_scanPerOption::initTestCase()
{
    // Redirects the desktop folder on systems with XDG settings. Others are skipped.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(u"config"_s)));
    writeFile(m_home.filePath(u"config/user-dirs.dirs"_s),
        "XDG_DESKTOP_DIR=\"" + QFile::encodeName(m_home.filePath(u"Desktop"_s)) + "\"\n");
}

void tst_scanPerOption::collectsTheChosenTypes_data()
{
    QTest::addColumn<QByteArrayList>("boxes");
    QTest::addColumn<QStringList>("suffixes");

    QTest::newRow("none") << QByteArrayList() << QStringList();
    QTest::newRow("archives") << QByteArrayList{"chkTypeArchive"} << archives;
    QTest::newRow("documents") << QByteArrayList{"chkTypeDoc"} << documents;
    QTest::newRow("audios") << QByteArrayList{"chkTypeAudio"} << audios;
    QTest::newRow("videos") << QByteArrayList{"chkTypeVideo"} << videos;
    QTest::newRow("pictures") << QByteArrayList{"chkTypePhoto"} << pictures;
    QTest::newRow("others") << QByteArrayList{"chkTypeOthers"} << everything;
    QTest::newRow("two") << QByteArrayList{"chkTypeVideo", "chkTypeDoc"} << videos + documents;
    QTest::newRow("all but others") << allTypes().first(5)
                                    << archives + documents + audios + videos + pictures;
    QTest::newRow("all") << allTypes() << everything;
}

void tst_scanPerOption::collectsTheChosenTypes()
{
    QFETCH(const QByteArrayList, boxes);
    QFETCH(const QStringList, suffixes);
    const QTemporaryDir folder;
    writeOnePairPerSuffix(folder.path());
    WindowDriver driver;
    QStringList found;
    for (const QString &path : scanWith(driver, {folder.path()}, boxes)) {
        if (const QFileInfo file(path); file.completeBaseName() == u"first")
            found.append(file.suffix());
    }
    QStringList expected = suffixes;
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
    if (suffixes.isEmpty())
        QCOMPARE(driver.groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_scanPerOption::ignoresTheSizeFields()
{
    const QTemporaryDir folder;
    const QStringList paths = writeCopies(folder.path(), {u"a.txt"_s, u"b.txt"_s}, QByteArray(3000, 'x'));
    WindowDriver driver;

    driver.chooseOptions([](QWidget *dialog) {
        dialog->findChild<QSpinBox *>(u"spinMinSize"_s)->setValue(99);
        dialog->findChild<QComboBox *>(u"comboMinUnit"_s)->setCurrentText(u"GB"_s);
        dialog->findChild<QSpinBox *>(u"spinMaxSize"_s)->setValue(1);
        dialog->findChild<QComboBox *>(u"comboMaxUnit"_s)->setCurrentText(u"KB"_s);
    });
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());
    QStringList found = driver.filePaths();
    found.sort();

    QCOMPARE(found, paths);
}

void tst_scanPerOption::skipsTheDesktop_data()
{
    QTest::addColumn<bool>("skip");
    QTest::newRow("rule off") << false;
    QTest::newRow("rule on") << true;
}

void tst_scanPerOption::skipsTheDesktop()
{
    QFETCH(const bool, skip);
    const QString desktop = m_home.filePath(u"Desktop"_s);
    if (QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) != desktop)
        QSKIP("The desktop folder cannot be redirected here");
    QStringList onDesktop = writeCopies(desktop, {u"a.txt"_s, u"deep/b.txt"_s}, "desktop");
    // The rule compares the beginning of the path and ignores case.
    for (const QString &beside : {u"Desktop2"_s, u"DESKTOP"_s})
        onDesktop +=
            writeCopies(m_home.filePath(beside), {u"a.txt"_s, u"b.txt"_s}, "beside, " + beside.toUtf8());
    const QStringList elsewhere = writeCopies(m_home.path(), {u"a.txt"_s, u"Documents/b.txt"_s}, "elsewhere");
    QFile::link(m_home.filePath(u"Desktop/deep"_s), m_home.filePath(u"way in"_s));

    WindowDriver driver;
    const QStringList found = scanWith(driver, {m_home.path(), m_home.filePath(u"way in"_s)},
        allTypes() + QByteArrayList(skip ? 1 : 0, "chkSkipDesktop"));
    QStringList expected = elsewhere;
    if (!skip)
        expected += onDesktop + QStringList(m_home.filePath(u"way in/b.txt"_s));
    expected.sort();
    QCOMPARE(found, expected);
}

void tst_scanPerOption::neverCollectsHiddenFiles_data()
{
    QTest::addColumn<QByteArrayList>("boxes");
    QTest::newRow("rule off") << allTypes();
    QTest::newRow("rule on") << allTypes() + QByteArrayList{"chkSkipHiddenFolder"};
}

void tst_scanPerOption::neverCollectsHiddenFiles()
{
#ifndef Q_OS_UNIX
    QSKIP("A leading dot does not hide a file here");
#endif
    QFETCH(const QByteArrayList, boxes);
    const QTemporaryDir folder;
    writeCopies(folder.path(), {u".a.txt"_s, u".b.txt"_s, u".hidden/a.txt"_s, u".hidden/b.txt"_s}, "hidden");
    const QStringList visible = writeCopies(folder.path(), {u"a.txt"_s, u"not.hidden/b.txt"_s}, "visible");
    WindowDriver driver;
    QCOMPARE(scanWith(driver, {folder.path()}, boxes), visible);
}

void tst_scanPerOption::findsVisibleFilesInAHiddenFolder()
{
    const QTemporaryDir folder;
    const QStringList paths = writeCopies(folder.path(), {u".folder/a.txt"_s, u".folder/b.txt"_s}, "content");
    WindowDriver driver;
    // The rule checks whether the file itself is hidden, not its folder.
    QCOMPARE(
        scanWith(driver, {folder.filePath(u".folder"_s)}, allTypes() + QByteArrayList{"chkSkipHiddenFolder"}),
        paths);
}

void tst_scanPerOption::comparesFullPathsWithTheSkippedFolders()
{
#ifdef Q_OS_WIN
    QSKIP("Folders cannot be named C: here");
#endif
    const QTemporaryDir folder;
    // The rules for Windows and its programs compare full paths, not folder names.
    const QStringList paths = writeCopies(folder.path(),
        {u"C:/Program Files (x86)/a.txt"_s, u"C:/Program Files/a.txt"_s, u"C:/Windows/a.txt"_s}, "content");
    WindowDriver driver;
    QCOMPARE(
        scanWith(driver, {folder.path()}, allTypes() + QByteArrayList(skipBoxes.begin(), skipBoxes.end())),
        paths);
}

void tst_scanPerOption::usesTheOptionsChosenLast()
{
    const QTemporaryDir folder;
    const QStringList texts = writeCopies(folder.path(), {u"a.txt"_s, u"b.txt"_s}, "text");
    const QStringList songs = writeCopies(folder.path(), {u"a.mp3"_s, u"b.mp3"_s}, "song");
    WindowDriver driver;
    QCOMPARE(scanWith(driver, {folder.path()}, {"chkTypeDoc"}), texts);
    driver.click("btnBack");
    QCOMPARE(scanWith(driver, {folder.path()}, {"chkTypeAudio"}), songs);
}

QTEST_MAIN(tst_scanPerOption)
#include "tst_scanPerOption.moc"
