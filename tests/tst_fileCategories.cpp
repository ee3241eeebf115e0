#include "scan/FileCategories.h"

#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Category, file type and thumbnail of each suffix. The three tables differ on purpose.
class tst_fileCategories : public QObject
{
    Q_OBJECT

private slots:
    void suffixFollowsTheLastDotInLowerCase_data();
    void suffixFollowsTheLastDotInLowerCase();
    void showsEachSuffixInItsCategory_data();
    void showsEachSuffixInItsCategory();
    void acceptsEachSuffixUnderItsType_data();
    void acceptsEachSuffixUnderItsType();
    void acceptsASuffixOfAnyChosenType_data();
    void acceptsASuffixOfAnyChosenType();
    void hasThumbnailsForCommonPictures_data();
    void hasThumbnailsForCommonPictures();
};

namespace {

const QStringList allTypes{u"picture"_s, u"video"_s, u"audio"_s, u"document"_s, u"archive"_s, u"other"_s};

/// Adds one data row per suffix; each line reads "key: suffix suffix ...".
void addSuffixRows(const QList<QLatin1StringView> &lines)
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("key");
    for (const QLatin1StringView line : lines) {
        const QStringList words = QString(line).split(u' ');
        const QString key = words.first().chopped(1);
        for (const QString &suffix : words.mid(1))
            QTest::newRow(qPrintable(suffix.isEmpty() ? u"no suffix"_s : suffix)) << suffix << key;
    }
}

} // namespace

void tst_fileCategories::suffixFollowsTheLastDotInLowerCase_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("suffix");

    QTest::newRow("lower case") << u"/a/photo.jpg"_s << u"jpg"_s;
    QTest::newRow("upper case") << u"/a/photo.JPG"_s << u"jpg"_s;
    QTest::newRow("mixed case") << u"/a/photo.Jpeg"_s << u"jpeg"_s;
    QTest::newRow("non-ASCII") << u"/a/x.ÄÖ"_s << u"äö"_s;
    QTest::newRow("two dots") << u"/a/x.tar.gz"_s << u"gz"_s;
    QTest::newRow("no dot") << u"/a/README"_s << QString();
    QTest::newRow("dot at the end") << u"/a/x."_s << QString();
    QTest::newRow("dot only in the folder") << u"/a.jpg/README"_s << QString();
    QTest::newRow("dot at the start") << u"/a/.png"_s << u"png"_s;
    QTest::newRow("space at the end") << u"/a/x.jpg "_s << u"jpg "_s;
    QTest::newRow("no folder") << u"x.7Z"_s << u"7z"_s;
}

void tst_fileCategories::suffixFollowsTheLastDotInLowerCase()
{
    QFETCH(const QString, path);
    QTEST(lowerCaseSuffix(path), "suffix");
}

void tst_fileCategories::showsEachSuffixInItsCategory_data()
{
    addSuffixRows({
        QLatin1StringView("picture: jpg jpeg png webp gif bmp"),
        QLatin1StringView("video: mp4 avi mkv mov wmv"),
        QLatin1StringView("audio: mp3 wav flac aac"),
        QLatin1StringView("document: pdf docx doc txt"),
        QLatin1StringView("archive: zip rar 7z"),
        // Collected under a type but not shown under it.
        QLatin1StringView("other: ogg m4a flv tiff tif ico heic svg"),
        // In no table; some resemble an entry of one.
        QLatin1StringView("other:  gz exe JPG jpgx jp png. picture other"),
    });
}

void tst_fileCategories::showsEachSuffixInItsCategory()
{
    QFETCH(const QString, suffix);
    QTEST(categoryOf(suffix), "key");
}

void tst_fileCategories::acceptsEachSuffixUnderItsType_data()
{
    addSuffixRows({
        QLatin1StringView("archive: zip rar 7z"),
        QLatin1StringView("document: doc docx pdf txt"),
        QLatin1StringView("audio: mp3 wav flac aac ogg m4a"),
        QLatin1StringView("video: mp4 avi mkv mov wmv flv"),
        QLatin1StringView("picture: jpg jpeg png webp gif bmp tiff tif ico heic svg"),
        QLatin1StringView("other:  gz exe JPG jpgx jp png. picture other"),
    });
}

/// Its own type and "other" accept a suffix; the remaining types do not.
void tst_fileCategories::acceptsEachSuffixUnderItsType()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, key);
    for (const QString &type : allTypes) {
        const bool accepted = collectionAccepts(suffix, {type});
        QVERIFY2(accepted == (type == key || type == u"other"), qPrintable(type));
    }
}

void tst_fileCategories::acceptsASuffixOfAnyChosenType_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("types");
    QTest::addColumn<bool>("accepted");

    const auto row = [](const char *suffix, const char *types, bool accepted) {
        QTest::addRow("%s under %s", suffix, types)
            << QString::fromLatin1(suffix) << QString::fromLatin1(types) << accepted;
    };
    row("jpg", "", false);
    row("", "", false);
    row("jpg", "audio picture", true);
    row("jpg", "picture audio", true);
    row("jpg", "picture picture", true);
    row("jpg", "audio video", false);
    row("", "archive document audio video picture", false);
    row("gz", "archive document audio video picture", false);
    row("gz", "picture other", true);
    row("mp3", "picture other", true);
    row("mp3", "other picture", true);
    row("jpg", "Picture", false);
    row("jpg", "PICTURE", false);
    row("jpg", "pictures", false);
    row("jpg", "jpg", false);
    row("jpg", "all", false);
    row("gz", "Other", false);
    row("jpg", "all other", true);
}

void tst_fileCategories::acceptsASuffixOfAnyChosenType()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, types);
    QTEST(collectionAccepts(suffix, types.split(u' ', Qt::SkipEmptyParts)), "accepted");
}

void tst_fileCategories::hasThumbnailsForCommonPictures_data()
{
    addSuffixRows({
        QLatin1StringView("thumbnail: jpg jpeg png gif bmp webp"),
        QLatin1StringView("icon:  tiff tif ico heic svg JPG jpgx mp4 mp3 pdf zip gz"),
    });
}

void tst_fileCategories::hasThumbnailsForCommonPictures()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, key);
    QCOMPARE(hasThumbnail(suffix), key == u"thumbnail");
}

QTEST_APPLESS_MAIN(tst_fileCategories)
#include "tst_fileCategories.moc"
