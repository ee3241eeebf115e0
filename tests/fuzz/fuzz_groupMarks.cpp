#include "results/GroupMarks.h"
#include "tests/fuzz/FuzzReport.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace {

/// A result, the groups of the shown category, and the checked paths of the loaded rows.
struct Page
{
    QList<DuplicateGroup> groups;
    QList<qsizetype> shown;
    QList<QSet<QString>> checked;

    QList<DuplicateGroup *> shownGroups()
    {
        QList<DuplicateGroup *> pointers;
        for (const qsizetype position : std::as_const(shown))
            pointers.append(&groups[position]);
        return pointers;
    }
};

/// Chooses from few paths, so that groups often have equal files, an equal first file or another order.
QList<QString> consumePaths(FuzzedDataProvider &data)
{
    QList<QString> paths;
    for (int count = data.ConsumeIntegralInRange(0, 4); count > 0; --count)
        paths.append(QLatin1String(data.PickValueInArray({"/a", "/b", "/A", "/a ", "/a/b", ""})));
    return paths;
}

QSet<QString> consumePathSet(FuzzedDataProvider &data)
{
    const QList<QString> paths = consumePaths(data);
    return QSet<QString>(paths.cbegin(), paths.cend());
}

DuplicateGroup consumeGroup(FuzzedDataProvider &data)
{
    DuplicateGroup group;
    group.files = consumePaths(data);
    group.markedFiles = consumePathSet(data);
    // May be out of date, so it does not depend on the marks.
    group.hasMarkedFiles = data.ConsumeBool();
    return group;
}

Page consumePage(FuzzedDataProvider &data)
{
    Page page;
    for (int count = data.ConsumeIntegralInRange(0, 12); count > 0; --count)
        page.groups.append(consumeGroup(data));
    for (qsizetype i = 0; i < page.groups.size(); ++i) {
        if (data.ConsumeBool())
            page.shown.append(i);
    }
    for (auto count = data.ConsumeIntegralInRange<qsizetype>(0, page.shown.size() + 1); count > 0; --count)
        page.checked.append(consumePathSet(data));
    return page;
}

/// Compares every row with every group.
void referenceSaveMarks(Page &page)
{
    for (qsizetype row = 0; row < page.shown.size(); ++row) {
        DuplicateGroup &group = page.groups[page.shown.at(row)];
        group.markedFiles = {};
        if (row >= page.checked.size())
            continue;
        for (const QString &path : page.checked.at(row))
            group.markedFiles.insert(path);
        group.hasMarkedFiles = !group.markedFiles.isEmpty();
        for (DuplicateGroup &other : page.groups) {
            if (other.files == group.files) {
                other.markedFiles = group.markedFiles;
                other.hasMarkedFiles = group.hasMarkedFiles;
            }
        }
    }
}

} // namespace

/// Compares saveMarks() with the reference for any result and any checked rows.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    FuzzedDataProvider data(bytes, count);
    Page page = consumePage(data);
    Page expected = page;
    const Page before = page;

    referenceSaveMarks(expected);
    saveMarks(page.groups, page.shownGroups(), page.checked);
    for (qsizetype i = 0; i < before.groups.size(); ++i) {
        const auto input = qMakePair(i, before.groups.at(i).files);
        expectEqual("Files", page.groups.at(i).files, before.groups.at(i).files, input);
        expectEqual("Marks", page.groups.at(i).markedFiles, expected.groups.at(i).markedFiles, input);
        expectEqual("Marked", page.groups.at(i).hasMarkedFiles, expected.groups.at(i).hasMarkedFiles, input);
    }
    return 0;
}
