#include "scan/FileSurvey.h"

#include "scan/FileCategories.h"
#include "scan/FileFacts.h"
#include "scan/FolderEntries.h"
#include "scan/SkipRules.h"
#include "scan/WorkQueue.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

/// A folder that has not been read yet.
struct Folder
{
    QString path;
    /// Index into SurveyRequest::folders.
    qint32 index = 0;
};

/// A list of files in pieces. Growing it wastes less memory than doubling the capacity of one vector.
class FilePieces
{
public:
    void add(SurveyedFile file)
    {
        if (m_pieces.empty() || m_pieces.back().size() == pieceSize) {
            m_pieces.emplace_back();
            m_pieces.back().reserve(pieceSize);
        }
        m_pieces.back().push_back(std::move(file));
    }

    [[nodiscard]] std::size_t count() const
    {
        return m_pieces.empty() ? 0 : (m_pieces.size() - 1) * pieceSize + m_pieces.back().size();
    }

    /// Moves all files to the end of \a files and frees the pieces one by one.
    void moveTo(std::vector<SurveyedFile> &files)
    {
        for (std::vector<SurveyedFile> &piece : m_pieces)
            std::ranges::move(std::exchange(piece, {}), std::back_inserter(files));
        m_pieces.clear();
    }

private:
    /// Large enough that the allocator returns the memory of each piece to the system.
    static constexpr std::size_t pieceSize = 4096;

    std::vector<std::vector<SurveyedFile>> m_pieces;
};

/// The state that all threads share.
struct Shared
{
    const SurveyRequest &request;
    const SurveyCallbacks &callbacks;
    WorkQueue<Folder> folders;
    std::atomic<qint64> files = 0;
    QMutex mutex{};
    /// Protected by the mutex.
    std::vector<FilePieces> pieces = {};
    QList<UnreadablePath> unreadable = {};
    /// Numbers of names by canonical path of their folder. Several walks can read one folder.
    QHash<QString, qint64> undecodableNames = {};
};

ScanOptions withoutHiddenRule(ScanOptions options)
{
    options.skipHiddenFolders = false;
    return options;
}

/// The work of one thread.
class SurveyThread
{
public:
    explicit SurveyThread(Shared &shared)
        : m_shared(shared)
        , m_request(shared.request)
        , m_acceptsAll(collectionAccepts(QString(), m_request.options.fileTypes))
        , m_rules(withoutHiddenRule(m_request.options), m_request.folders)
    {
    }

    void run()
    {
        while (const std::optional<Folder> folder = m_shared.folders.take()) {
            if (!m_shared.callbacks.abandoned())
                read(*folder);
            m_shared.folders.finish();
        }
        const QMutexLocker lock(&m_shared.mutex);
        m_shared.pieces.push_back(std::move(m_files));
        m_shared.unreadable += m_unreadable;
        m_shared.undecodableNames.insert(m_undecodableNames);
    }

private:
    void read(const Folder &folder)
    {
        FolderEntries entries(
            folder.path, m_request.includeHidden ? HiddenEntries::Listed : HiddenEntries::LeftOut);
        while (entries.next() && !m_shared.callbacks.abandoned()) {
            QString path = entries.path();
            if (isExcluded(path, folder.index))
                continue;
            if (entries.isFolder())
                m_shared.folders.add({std::move(path), folder.index});
            else
                addFile(entries, path, folder.index);
        }
        if (const QString reason = entries.error(); !reason.isEmpty())
            m_unreadable.append({folder.path, reason});
        if (const qint64 names = entries.undecodableNames(); names > 0)
            m_undecodableNames.insert(QFileInfo(folder.path).canonicalFilePath(), names);
        reportProgress();
    }

    [[nodiscard]] bool isExcluded(const QString &path, qint32 folder) const
    {
        if (!m_request.excluded)
            return false;
        const QString &top = m_request.folders[folder];
        const qsizetype beginning = top.size() + (top.endsWith(u'/') ? 0 : 1);
        const QStringView all(path);
        return m_request.excluded(all.sliced(path.lastIndexOf(u'/') + 1), all.sliced(beginning));
    }

    void addFile(const FolderEntries &entries, const QString &path, qint32 folder)
    {
        if (!isAcceptedType(path) || m_rules.skip(path))
            return;
        std::optional<FileFacts> facts = factsOf(entries, path, {m_request.minSize, m_request.maxSize});
        if (!facts)
            return;
        if (const auto *const unreadable = std::get_if<UnreadablePath>(&*facts)) {
            m_unreadable.append(*unreadable);
            return;
        }
        auto &file = std::get<SurveyedFile>(*facts);
        file.folder = folder;
        m_files.add(std::move(file));
        if (++m_unreported == filesPerReport)
            reportProgress();
    }

    [[nodiscard]] bool isAcceptedType(const QString &path) const
    {
        return m_acceptsAll || collectionAccepts(lowerCaseSuffix(path), m_request.options.fileTypes);
    }

    void reportProgress()
    {
        if (m_unreported > 0)
            m_shared.callbacks.progress(m_shared.files += std::exchange(m_unreported, 0));
    }

    /// Keeps the displayed number moving in a folder with many files.
    static constexpr qint64 filesPerReport = 256;

    Shared &m_shared;
    const SurveyRequest &m_request;
    /// If files without a suffix are accepted, all are: skip the costly suffix lookup.
    const bool m_acceptsAll;
    SkipRules m_rules;
    FilePieces m_files;
    QList<UnreadablePath> m_unreadable;
    QHash<QString, qint64> m_undecodableNames;
    /// Number of files found since the last progress report.
    qint64 m_unreported = 0;
};

std::vector<Folder> foldersToRead(const QStringList &folders)
{
    std::vector<Folder> foldersToRead;
    // In reverse order: the queue yields the last one first.
    for (qsizetype index = folders.size(); index-- > 0;)
        foldersToRead.push_back({folders[index], static_cast<qint32>(index)});
    return foldersToRead;
}

} // namespace

Survey surveyFiles(const SurveyRequest &request, const SurveyCallbacks &callbacks)
{
    Shared shared{request, callbacks, WorkQueue<Folder>(foldersToRead(request.folders))};
    runOnThreads(std::max(request.threads, 1), [&shared] { SurveyThread(shared).run(); });

    const auto undecodable =
        std::accumulate(shared.undecodableNames.cbegin(), shared.undecodableNames.cend(), qint64(0));
    Survey survey{.files = {}, .unreadable = std::move(shared.unreadable), .undecodableNames = undecodable};
    std::size_t count = 0;
    for (const FilePieces &pieces : shared.pieces)
        count += pieces.count();
    survey.files.reserve(count);
    for (FilePieces &pieces : shared.pieces)
        pieces.moveTo(survey.files);
    return survey;
}
