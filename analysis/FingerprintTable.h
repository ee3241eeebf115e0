#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <vector>

/// Which of many files have equal fingerprints. One table serves the whole run: files of different sizes can
/// share a fingerprint.
///
/// It has an entry for each file that was read, most of them without a copy. So it knows files by number and
/// allocates nothing for a single file.
class FingerprintTable
{
public:
    /// For the files at \a paths, which must outlive the table.
    explicit FingerprintTable(const QList<QString> &paths);

    /// Adds the file with this index, each time a higher one, and its fingerprint of 32 bytes.
    void insert(qsizetype index, QByteArrayView fingerprint);

    /// Files held by fingerprints of two or more files.
    [[nodiscard]] qsizetype duplicates() const;

    /// The paths of each fingerprint of two or more files, in ascending byte order of the fingerprints; those
    /// of one fingerprint in the order of their indexes.
    [[nodiscard]] QList<QList<QString>> sortedDuplicates() const;

private:
    struct Fingerprint
    {
        std::array<unsigned char, 32> bytes;

        friend auto operator<=>(const Fingerprint &, const Fingerprint &) = default;
        friend std::size_t qHash(const Fingerprint &fingerprint, std::size_t seed) noexcept
        {
            return qHashBits(fingerprint.bytes.data(), fingerprint.bytes.size(), seed);
        }
    };

    /// The files of one fingerprint: a chain from the first to the last.
    struct Copies
    {
        int first;
        int last;
        int count;
    };

    [[nodiscard]] QList<QString> pathsOf(const Copies &copies) const;

    const QList<QString> &m_paths;
    QHash<Fingerprint, Copies> m_copies;
    /// For each file the next one of its chain.
    std::vector<int> m_next;
    qsizetype m_duplicates = 0;
};
