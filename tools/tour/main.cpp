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

/// The palette of a dark desktop.
QPalette darkPalette()
{
    return QPalette(QColor(0x31, 0x36, 0x3b));
}

/// Runs the tour with \a folders; if there are none, with a sample created in \a place. Returns an error
/// message.
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
    // Hides the debug output of the window. QT_LOGGING_RULES overrides this.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.warning=false"));
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Operates the window through one scan and saves screenshots of all pages. Deletes no files of "
        "the given folders. Without a folder, creates a sample and deletes its copies."));
    const QCommandLineOption output(QStringLiteral("output"), QStringLiteral("Folder for the screenshots."),
        QStringLiteral("folder"), QStringLiteral("tour"));
    parser.addOption(output);
    const QCommandLineOption place(QStringLiteral("sample"),
        QStringLiteral("Folder to create for the sample; must not exist."), QStringLiteral("folder"));
    parser.addOption(place);
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Simulate a dark desktop."));
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
    QTextStream(stdout) << "\nScreenshots are in " << camera.folder() << ":\n    "
                        << camera.pictures().join(QStringLiteral("\n    ")) << Qt::endl;
    return EXIT_SUCCESS;
}
