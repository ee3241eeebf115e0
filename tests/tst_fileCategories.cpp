#include "scan/FileCategories.h"

#include <QTest>

/// Category, file type and thumbnail of each suffix. The three tables differ on purpose.
class tst_fileCategories : public QObject
{
    Q_OBJECT

private slots:
    void suffixIsTheLastOneInLowerCase_data();
    void suffixIsTheLastOneInLowerCase();
    void shownUnderCategory_data();
    void shownUnderCategory();
    void collectedUnderType_data();
    void collectedUnderType();
    void collectedUnderSeveralTypes_data();
    void collectedUnderSeveralTypes();
    void shownWithThumbnail_data();
    void shownWithThumbnail();
};

namespace {

const QStringList allTypes{QStringLiteral("picture"), QStringLiteral("video"), QStringLiteral("audio"),
    QStringLiteral("document"), QStringLiteral("archive"), QStringLiteral("other")};

/// Adds one data row per suffix; each line reads "key: suffix suffix ...".
void addSuffixRows(const QList<QLatin1StringView> &lines)
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("key");
    for (const QLatin1StringView line : lines) {
        const QStringList words = QString(line).split(u' ');
        const QString key = words.first().chopped(1);
        for (const QString &suffix : words.mid(1))
            QTest::newRow(qPrintable(suffix.isEmpty() ? QStringLiteral("no suffix") : suffix))
                << suffix << key;
    }
}

} // namespace

void tst_fileCategories::suffixIsTheLastOneInLowerCase_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("suffix");

    QTest::newRow("lower case") << QStringLiteral("/a/photo.jpg") << QStringLiteral("jpg");
    QTest::newRow("upper case") << QStringLiteral("/a/photo.JPG") << QStringLiteral("jpg");
    QTest::newRow("mixed case") << QStringLiteral("/a/photo.Jpeg") << QStringLiteral("jpeg");
    QTest::newRow("beyond Latin") << QStringLiteral("/a/x.ÄÖ") << QStringLiteral("äö");
    QTest::newRow("two dots") << QStringLiteral("/a/x.tar.gz") << QStringLiteral("gz");
    QTest::newRow("no dot") << QStringLiteral("/a/README") << QString();
    QTest::newRow("dot at the end") << QStringLiteral("/a/x.") << QString();
    QTest::newRow("dot in the folder only") << QStringLiteral("/a.jpg/README") << QString();
    QTest::newRow("dot at the start") << QStringLiteral("/a/.png") << QStringLiteral("png");
    QTest::newRow("blank at the end") << QStringLiteral("/a/x.jpg ") << QStringLiteral("jpg ");
    QTest::newRow("no folder") << QStringLiteral("x.7Z") << QStringLiteral("7z");
}

void tst_fileCategories::suffixIsTheLastOneInLowerCase()
{
    QFETCH(const QString, path);
    QTEST(lowerCaseSuffix(path), "suffix");
}

void tst_fileCategories::shownUnderCategory_data()
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

void tst_fileCategories::shownUnderCategory()
{
    QFETCH(const QString, suffix);
    QTEST(categoryOf(suffix), "key");
}

void tst_fileCategories::collectedUnderType_data()
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
void tst_fileCategories::collectedUnderType()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, key);
    for (const QString &type : allTypes) {
        const bool accepted = collectionAccepts(suffix, {type});
        QVERIFY2(accepted == (type == key || type == u"other"), qPrintable(type));
    }
}

void tst_fileCategories::collectedUnderSeveralTypes_data()
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

void tst_fileCategories::collectedUnderSeveralTypes()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, types);
    QTEST(collectionAccepts(suffix, types.split(u' ', Qt::SkipEmptyParts)), "accepted");
}

void tst_fileCategories::shownWithThumbnail_data()
{
    addSuffixRows({
        QLatin1StringView("thumbnail: jpg jpeg png gif bmp webp"),
        QLatin1StringView("icon:  tiff tif ico heic svg JPG jpgx mp4 mp3 pdf zip gz"),
    });
}

void tst_fileCategories::shownWithThumbnail()
{
    QFETCH(const QString, suffix);
    QFETCH(const QString, key);
    QCOMPARE(hasThumbnail(suffix), key == u"thumbnail");
}

QTEST_APPLESS_MAIN(tst_fileCategories)
#include "tst_fileCategories.moc"
