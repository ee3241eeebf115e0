#include "tools/tour/SampleFolder.h"

#include "tools/tour/SampleDocuments.h"
#include "tools/tour/SamplePictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int mailCount = 1200;

QString numbered(const char *pattern, int number)
{
    return QString::asprintf(pattern, number);
}

QByteArray recipe(const QByteArray &dish, int people)
{
    return dish + "\n\nFor " + QByteArray::number(people) +
           " people.\n\nCut everything small, cook it slowly and taste it often.\n";
}

} // namespace

SampleFolder::SampleFolder(const QString &place)
{
    if (place.isEmpty()) {
        m_temporary.emplace(QDir::tempPath() + QStringLiteral("/My files XXXXXX"));
        if (m_temporary->isValid())
            m_path = m_temporary->path();
    } else if (QDir().mkdir(place)) { // fails for a folder that exists
        m_path = QDir(place).absolutePath();
    }
    if (m_path.isEmpty()) {
        m_error = QStringLiteral("cannot create a folder for the sample");
        return;
    }
    // Originals first: the file that was created first is the kept file.
    writeOriginals();
    writeMail();
    writeCopies();
    writeLongPaths();
}

QString SampleFolder::error() const
{
    return m_error;
}

SampleFolder::~SampleFolder()
{
    if (!m_path.isEmpty() && !m_temporary)
        QDir(m_path).removeRecursively();
}

QString SampleFolder::path() const
{
    return m_path;
}

QStringList SampleFolder::places() const
{
    QStringList places;
    for (const QString &name : {QStringLiteral("Pictures"), QStringLiteral("Documents"),
             QStringLiteral("Music"), QStringLiteral("Phone"), QStringLiteral("Backup")})
        places.append(m_path + u'/' + name);
    return places;
}

void SampleFolder::writeOriginals()
{
    for (int i = 0; i < 10; ++i)
        write(numbered("Pictures/Lake/IMG_%04d.jpg", 412 + i), encode(paintLake(quint32(i)), "jpg"));
    for (int i = 0; i < 6; ++i)
        write(numbered("Pictures/City at night/DSC_%03d.png", 71 + i),
            encode(paintCityAtNight(quint32(i)), "png"));
    for (int i = 0; i < 6; ++i)
        write(numbered("Pictures/Garden/flower %d.jpg", 1 + i), encode(paintFlower(quint32(i)), "jpg"));
    write(QStringLiteral("Pictures/Garden/label.bmp"), encode(paintFlower(40).scaled(120, 90), "bmp"));
    // An invalid picture, which has no thumbnail.
    write(QStringLiteral("Pictures/half a download.jpg"), encode(paintLake(3), "jpg").left(100));

    write(QStringLiteral("Documents/Letter to the landlord.pdf"),
        pdfPage(
            QStringLiteral("The heating"), QStringLiteral("It is cold again. Please have a look at it.")));
    write(QStringLiteral("Documents/Garden plan.pdf"),
        pdfPage(QStringLiteral("Garden plan"), QStringLiteral("Beans along the fence, flowers everywhere.")));
    write(QStringLiteral("Documents/Recipes/Ratatouille.txt"), recipe("Ratatouille", 4));
    write(QStringLiteral("Documents/Recipes/Borschtsch.txt"), recipe("Borschtsch", 6));
    write(QStringLiteral("Documents/Recipes/Käsespätzle.txt"), recipe("Kaesespaetzle", 2));
    write(QStringLiteral("Documents/Recipes/Only here.txt"), recipe("Bread", 1));

    write(QStringLiteral("Music/Evening song.wav"), melody(1, 8));
    write(QStringLiteral("Music/Rain.wav"), melody(2, 5));
    write(QStringLiteral("Music/Concert.wav"), melody(3, 900));
    write(QStringLiteral("Music/Not copied.wav"), melody(4, 6));

    write(QStringLiteral("Archives/Garden.zip"),
        zipArchive({{"flower.jpg", encode(paintFlower(1), "jpg")}, {"plan.txt", "Beans along the fence"}}));
    write(QStringLiteral("Archives/Recipes.zip"),
        zipArchive({{"Ratatouille.txt", recipe("Ratatouille", 4)}, {"Bread.txt", recipe("Bread", 1)}}));
    write(QStringLiteral("Documents/New document.txt"), {});
}

/// Two copies with paths that are too long for a row and differ only near the end.
void SampleFolder::writeLongPaths()
{
    const QString folder = QStringLiteral("Documents/Community garden/Correspondence with the city council/"
                                          "Annual reports and budget of the association/");
    const QString name = QStringLiteral("/Annual report of the community garden, with all tables.pdf");
    write(folder + QStringLiteral("final") + name,
        pdfPage(QStringLiteral("Annual report"), QStringLiteral("The beans have done well.")));
    copy(folder + QStringLiteral("final") + name, folder + QStringLiteral("old") + name);
}

/// Many small files with different contents, to make the scan longer.
void SampleFolder::writeMail()
{
    for (int i = 0; i < mailCount; ++i) {
        const QByteArray number = QByteArray::number(i);
        write(numbered("Mail/%d/", 2015 + i * 10 / mailCount) + numbered("%05d.eml", i),
            "Subject: Letter " + number + "\n\nSee you on day " + number + ".\n");
    }
}

void SampleFolder::writeCopies()
{
    const auto copyTo = [this](const QString &folder, const QStringList &files) {
        for (const QString &file : files)
            copy(file, folder + u'/' + QFileInfo(file).fileName());
    };
    for (int i = 0; i < 8; ++i)
        copyTo(QStringLiteral("Backup/Pictures"), {numbered("Pictures/Lake/IMG_%04d.jpg", 412 + i)});
    for (int i = 0; i < 4; ++i)
        copyTo(QStringLiteral("Backup/Pictures"), {numbered("Pictures/City at night/DSC_%03d.png", 71 + i)});
    for (int i = 0; i < 3; ++i)
        copyTo(QStringLiteral("Phone"), {numbered("Pictures/Garden/flower %d.jpg", 1 + i)});
    copyTo(QStringLiteral("Phone"),
        {QStringLiteral("Pictures/Lake/IMG_0412.jpg"), QStringLiteral("Pictures/Lake/IMG_0413.jpg"),
            QStringLiteral("Pictures/Garden/label.bmp"), QStringLiteral("Pictures/half a download.jpg")});
    copyTo(QStringLiteral("Backup/Documents"),
        {QStringLiteral("Documents/Letter to the landlord.pdf"), QStringLiteral("Documents/Garden plan.pdf"),
            QStringLiteral("Documents/Recipes/Ratatouille.txt"),
            QStringLiteral("Documents/Recipes/Borschtsch.txt"),
            QStringLiteral("Documents/Recipes/Käsespätzle.txt")});
    copyTo(QStringLiteral("Phone/Music"),
        {QStringLiteral("Music/Evening song.wav"), QStringLiteral("Music/Rain.wav"),
            QStringLiteral("Music/Concert.wav")});
    copyTo(QStringLiteral("Downloads"),
        {QStringLiteral("Archives/Garden.zip"), QStringLiteral("Archives/Recipes.zip"),
            QStringLiteral("Mail/2015/00007.eml")});
    copy(QStringLiteral("Pictures/Lake/IMG_0412.jpg"), QStringLiteral("Downloads/IMG_0412 (1).jpg"));
    copy(QStringLiteral("Documents/New document.txt"), QStringLiteral("Desktop/New document.txt"));
    copy(QStringLiteral("Documents/New document.txt"), QStringLiteral("Desktop/New document (2).txt"));
}

QString SampleFolder::filePath(const QString &name)
{
    const QString path = m_path + u'/' + name;
    QDir().mkpath(QFileInfo(path).path());
    return path;
}

void SampleFolder::write(const QString &name, const QByteArray &content)
{
    QFile file(filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        m_error = QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString());
}

void SampleFolder::copy(const QString &from, const QString &to)
{
    QFile file(m_path + u'/' + from);
    if (!file.copy(filePath(to)))
        m_error = QStringLiteral("cannot copy %1: %2").arg(file.fileName(), file.errorString());
}
