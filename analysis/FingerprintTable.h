#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <vector>

/// Groups files by fingerprint. Not thread-safe.
///
/// Kept deliberately: one table for all sizes, so that files of different sizes with equal fingerprints form
/// a group.
///
/// Most fingerprints have a single file. The table stores indexes of files and allocates no list for one.
class FingerprintTable
{
public:
    /// \a paths are the files that insert() refers to. They must outlive the table.
    explicit FingerprintTable(const QList<QString> &paths);

    /// Adds the file at \a index of the paths, which must increase from call to call. \a fingerprint must
    /// have 32 bytes.
    void insert(qsizetype index, QByteArrayView fingerprint);

    /// Number of files that share their fingerprint with another file.
    [[nodiscard]] qsizetype duplicates() const;

    /// The paths of the files that share a fingerprint: one list for each fingerprint, in ascending byte
    /// order of the fingerprints. The paths of a list are in the order of their indexes.
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

    /// The files of one fingerprint, linked by m_next from the first to the last.
    struct Copies
    {
        int first;
        int last;
        int count;
    };

    [[nodiscard]] QList<QString> pathsOf(const Copies &copies) const;

    const QList<QString> &m_paths;
    QHash<Fingerprint, Copies> m_copies;
    /// For each file, the next one with the same fingerprint.
    std::vector<int> m_next;
    qsizetype m_duplicates = 0;
};
