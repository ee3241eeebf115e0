#pragma once

#include "analysis/RegularFile.h"
#include "scan/FileSurvey.h"

#include <QString>

#include <span>

/// A file that is compared piece by piece. Reports a problem if its size is not the one that the survey
/// found. Usable by one thread at a time.
class ComparedFile
{
public:
    explicit ComparedFile(const SurveyedFile &file);

    /// Why the file could not be opened or read; empty if it could.
    [[nodiscard]] const QString &problem() const;

    /// Fills \a piece with the bytes from \a position on. Sets problem() on failure.
    void read(qint64 position, std::span<char> piece);

    /// Like read(), but returns false without reading if the bytes are not in the page cache.
    [[nodiscard]] bool readIfCached(qint64 position, std::span<char> piece);

    /// Starts reading \a count bytes from \a position on into the page cache, if the system can. Does not
    /// block.
    void prefetch(qint64 position, qint64 count) const;

private:
    void check(qint64 read, std::span<char> piece);

    RegularFile m_file;
    QString m_problem;
};
