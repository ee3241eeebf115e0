#include "tools/tour/Camera.h"
#include "tools/tour/SampleFolder.h"
#include "tools/tour/Tour.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QPalette>
#include <QTextStream>

#include <cstdlib>
#include <memory>

namespace {

int fail(const QString &reason)
{
    QTextStream(stderr) << "quillory-tour: " << reason << Qt::endl;
    return EXIT_FAILURE;
}

/// The colours of a desktop that is set to dark.
QPalette darkPalette()
{
    return QPalette(QColor(0x31, 0x36, 0x3b));
}

/// Goes through the window with \a folders, or with a sample made in \a place when there are none.
QString goThrough(QStringList folders, const QString &place, Camera &camera)
{
    QStringList places = folders;
    std::unique_ptr<SampleFolder> sample;
    if (folders.isEmpty()) {
        sample = std::make_unique<SampleFolder>(place);
        if (!sample->error().isEmpty())
            return sample->error();
        folders.append(sample->path());
        places = sample->places();
    }
    Tour tour(folders, places, sample ? Deletion::OfCopiesInTheSample : Deletion::Never, camera);
    return tour.run();
}

} // namespace

int main(int argc, char *argv[])
{
    // The window's debug log is not for the reader of the tour; QT_LOGGING_RULES brings it back.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.warning=false"));
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Drives the window through one scan and leaves a picture "
                                                    "of each page. Only looks at the folders given; "
                                                    "without any it makes a sample and deletes its copies."));
    const QCommandLineOption output(QStringLiteral("output"), QStringLiteral("Folder for the pictures."),
        QStringLiteral("folder"), QStringLiteral("tour"));
    parser.addOption(output);
    const QCommandLineOption place(QStringLiteral("sample"),
        QStringLiteral("Folder to make the sample in; must not exist yet."), QStringLiteral("folder"));
    parser.addOption(place);
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Starts on a dark desktop."));
    parser.addOption(dark);
    const QCommandLineOption help = parser.addHelpOption();
    parser.addPositionalArgument(
        QStringLiteral("folder"), QStringLiteral("Folder to scan."), QStringLiteral("[folder...]"));
    if (!parser.parse(QCoreApplication::arguments()))
        return fail(parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();

    QStringList folders;
    const QStringList arguments = parser.positionalArguments();
    for (const QString &argument : arguments) {
        const QFileInfo folder(argument);
        if (!folder.isDir())
            return fail(QStringLiteral("no such folder: %1").arg(argument));
        folders.append(folder.absoluteFilePath());
    }
    if (parser.isSet(dark))
        QApplication::setPalette(darkPalette());
    Camera camera(parser.value(output));
    if (!camera.error().isEmpty())
        return fail(camera.error());
    if (const QString error = goThrough(folders, parser.value(place), camera); !error.isEmpty())
        return fail(error);
    QTextStream(stdout) << "\nPictures of every page are in " << camera.folder() << ":\n    "
                        << camera.pictures().join(QStringLiteral("\n    ")) << Qt::endl;
    return EXIT_SUCCESS;
}
