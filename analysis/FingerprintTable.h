#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QStringList>

#include <array>
#include <compare>
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
    /// \a paths are the files that insert() refers to: fewer than 2^32. They must outlive the table.
    explicit FingerprintTable(const QStringList &paths);

    /// Adds the file at \a index of the paths, which must increase from call to call. \a fingerprint must
    /// have 32 bytes.
    void insert(qsizetype index, QByteArrayView fingerprint);

    /// Number of files that share their fingerprint with another file.
    [[nodiscard]] qsizetype duplicates() const;

    /// The paths of the files that share a fingerprint: one list for each fingerprint, in ascending byte
    /// order of the fingerprints. The paths of a list are in the order of their indexes.
    [[nodiscard]] QList<QStringList> sortedDuplicates() const;

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

    /// Index of a file. 32 bits save memory; the paths of 2^32 files would take 100 GiB.
    using FileIndex = quint32;

    /// The files of one fingerprint, linked by m_next from the first to the last.
    struct Copies
    {
        FileIndex first;
        FileIndex last;
        FileIndex count;
    };

    [[nodiscard]] QStringList pathsOf(const Copies &copies) const;

    const QStringList &m_paths;
    QHash<Fingerprint, Copies> m_copies;
    /// For each file, the next one with the same fingerprint.
    std::vector<FileIndex> m_next;
    qsizetype m_duplicates = 0;
};
