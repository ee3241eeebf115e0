#include "analysis/ContentGroups.h"

#include "analysis/FileHash.h"
#include "analysis/RegularFile.h"

#include <algorithm>
#include <cstring>
#include <map>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

bool haveEqualBytes(const QString &a, const QString &b, qint64 size)
{
    RegularFile first(a);
    RegularFile second(b);
    constexpr qint64 blockSize = 65536;
    std::vector<char> one(blockSize);
    std::vector<char> other(blockSize);
    for (qint64 position = 0; position < size; position += blockSize) {
        const qint64 count = std::min(blockSize, size - position);
        if (first.readAt(position, one.data(), count) != count ||
            second.readAt(position, other.data(), count) != count ||
            std::memcmp(one.data(), other.data(), static_cast<std::size_t>(count)) != 0)
            return false;
    }
    return true;
}

} // namespace

ContentGroups groupByContent(std::span<const SurveyedFile> files, ContentComparison comparison,
    int /*threads*/, const ComparisonCallbacks &callbacks)
{
    std::map<qint64, std::vector<quint32>> classes;
    for (quint32 i = 0; i < files.size(); ++i)
        classes[files[i].size].push_back(i);
    ContentGroups result;
    qint64 total = 0;
    qint64 done = 0;
    for (const auto &[size, members] : classes)
        total += members.size() < 2 ? 0 : size * static_cast<qint64>(members.size());
    for (const auto &[size, members] : classes) {
        if (members.size() < 2)
            continue;
        std::map<QByteArray, std::vector<std::vector<quint32>>> byFingerprint;
        for (const quint32 index : members) {
            if (callbacks.abandoned())
                return {};
            const QString &path = files[index].path;
            const QByteArray fingerprint = size == 0 ? QByteArray() : computeFileHash(path, 4096);
            RegularFile opened(path);
            if (size > 0 && (!opened.isOpen() || opened.size() != size)) {
                result.unreadable.append({path, u"cannot be read"_s});
                continue;
            }
            std::vector<std::vector<quint32>> &groups = byFingerprint[fingerprint];
            const auto group = std::ranges::find_if(groups, [&](const std::vector<quint32> &some) {
                return comparison == ContentComparison::Sample ||
                       haveEqualBytes(files[some.front()].path, path, size);
            });
            if (group == groups.end())
                groups.push_back({index});
            else
                group->push_back(index);
            done += size;
            callbacks.progress(done, total);
        }
        for (auto &[fingerprint, groups] : byFingerprint) {
            for (std::vector<quint32> &group : groups) {
                if (group.size() > 1)
                    result.groups.push_back(std::move(group));
            }
        }
    }
    return result;
}
