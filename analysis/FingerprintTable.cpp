#include "analysis/FingerprintTable.h"

#include <algorithm>
#include <utility>

FingerprintTable::FingerprintTable(const QStringList &paths)
    : m_paths(paths)
    , m_next(static_cast<std::size_t>(paths.size()))
{
    Q_ASSERT(std::in_range<FileIndex>(paths.size()));
    m_copies.reserve(paths.size());
}

void FingerprintTable::insert(qsizetype index, QByteArrayView fingerprint)
{
    const auto file = static_cast<FileIndex>(index);
    Fingerprint key = {};
    Q_ASSERT(std::size_t(fingerprint.size()) == key.bytes.size());
    std::copy_n(fingerprint.begin(), key.bytes.size(), key.bytes.begin());

    const auto found = m_copies.find(key);
    if (found == m_copies.end()) {
        m_copies.insert(key, {file, file, 1});
        return;
    }
    m_next[found->last] = file;
    found->last = file;
    ++found->count;
    // The second file makes the first one a duplicate as well.
    m_duplicates += found->count == 2 ? 2 : 1;
}

qsizetype FingerprintTable::duplicates() const
{
    return m_duplicates;
}

QStringList FingerprintTable::pathsOf(const Copies &copies) const
{
    QStringList paths;
    paths.reserve(copies.count);
    FileIndex file = copies.first;
    for (FileIndex i = 0; i < copies.count; ++i) {
        paths.append(m_paths.at(file));
        file = m_next[file];
    }
    return paths;
}

QList<QStringList> FingerprintTable::sortedDuplicates() const
{
    std::vector<std::pair<Fingerprint, Copies>> sorted;
    for (auto entry = m_copies.keyValueBegin(); entry != m_copies.keyValueEnd(); ++entry) {
        if (entry->second.count >= 2)
            sorted.emplace_back(entry->first, entry->second);
    }
    std::ranges::sort(sorted, {}, &std::pair<Fingerprint, Copies>::first);

    QList<QStringList> duplicates;
    duplicates.reserve(static_cast<qsizetype>(sorted.size()));
    for (const auto &[fingerprint, copies] : sorted)
        duplicates.append(pathsOf(copies));
    return duplicates;
}
