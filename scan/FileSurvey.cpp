#include "scan/FileSurvey.h"

#include "scan/FileCategories.h"
#include "scan/FolderEntries.h"
#include "scan/SkipRules.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

using Qt::Literals::StringLiterals::operator""_s;

Survey surveyFiles(const SurveyRequest &request, const SurveyCallbacks &callbacks)
{
    Survey survey;
    ScanOptions options = request.options;
    options.skipHiddenFolders = false;
    SkipRules rules(options, request.folders);
    for (qsizetype index = 0; index < request.folders.size(); ++index) {
        const QString beginning = withSlash(request.folders[index]);
        QStringList unread{request.folders[index]};
        while (!unread.isEmpty() && !callbacks.abandoned()) {
            const QString folder = unread.takeLast();
            if (const QFileInfo info(folder); !info.isDir() || !info.isReadable()) {
                survey.unreadable.append({folder, info.exists() ? u"cannot be read"_s : u"is not there"_s});
                continue;
            }
            QDirIterator entries(
                folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks | QDir::Hidden);
            while (entries.hasNext() && !callbacks.abandoned()) {
                const QString path = entries.next();
                const QFileInfo info = entries.fileInfo();
                if ((!request.includeHidden && info.isHidden()) ||
                    (request.excluded &&
                        request.excluded(info.fileName(), QStringView(path).sliced(beginning.size()))))
                    continue;
                if (info.isDir()) {
                    unread.append(path);
                    continue;
                }
                const qint64 size = info.size();
                if (size < request.minSize || size > request.maxSize || rules.skip(path) ||
                    !collectionAccepts(lowerCaseSuffix(path), request.options.fileTypes))
                    continue;
                SurveyedFile file{.path = path,
                    .size = size,
                    .modified = info.lastModified().toMSecsSinceEpoch(),
                    .created = info.birthTime().isValid() ? info.birthTime().toMSecsSinceEpoch()
                                                          : info.lastModified().toMSecsSinceEpoch(),
                    .identity = {},
                    .folder = static_cast<qint32>(index)};
#ifdef Q_OS_UNIX
                struct stat facts = {};
                ::stat(QFile::encodeName(path).constData(), &facts);
                file.identity = {facts.st_dev, facts.st_ino};
                file.links = static_cast<quint32>(facts.st_nlink);
#endif
                survey.files.push_back(file);
                callbacks.progress(static_cast<qint64>(survey.files.size()));
            }
        }
    }
    return survey;
}
