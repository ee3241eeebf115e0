#include "analysis/FingerprintTable.h"

#include <algorithm>

FingerprintTable::FingerprintTable(const QList<QString> &paths)
    : m_paths(paths)
    , m_next(static_cast<std::size_t>(paths.size()))
{
    m_copies.reserve(paths.size());
}

void FingerprintTable::insert(qsizetype index, QByteArrayView fingerprint)
{
    const int file = static_cast<int>(index);
    Fingerprint key = {};
    Q_ASSERT(std::size_t(fingerprint.size()) == key.bytes.size());
    std::copy_n(fingerprint.begin(), key.bytes.size(), key.bytes.begin());

    const auto found = m_copies.find(key);
    if (found == m_copies.end()) {
        m_copies.insert(key, {file, file, 1});
        return;
    }
    m_next[static_cast<std::size_t>(found->last)] = file;
    found->last = file;
    ++found->count;
    // The second file makes the first one a duplicate as well.
    m_duplicates += found->count == 2 ? 2 : 1;
}

qsizetype FingerprintTable::duplicates() const
{
    return m_duplicates;
}

QList<QString> FingerprintTable::pathsOf(const Copies &copies) const
{
    QList<QString> paths;
    paths.reserve(copies.count);
    int file = copies.first;
    for (int i = 0; i < copies.count; ++i) {
        paths.append(m_paths.at(file));
        file = m_next[static_cast<std::size_t>(file)];
    }
    return paths;
}

QList<QList<QString>> FingerprintTable::sortedDuplicates() const
{
    std::vector<std::pair<Fingerprint, Copies>> sorted;
    for (auto entry = m_copies.keyValueBegin(); entry != m_copies.keyValueEnd(); ++entry) {
        if (entry->second.count >= 2)
            sorted.emplace_back(entry->first, entry->second);
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) { return a.first < b.first; });

    QList<QList<QString>> duplicates;
    duplicates.reserve(static_cast<qsizetype>(sorted.size()));
    for (const auto &[fingerprint, copies] : sorted)
        duplicates.append(pathsOf(copies));
    return duplicates;
}
