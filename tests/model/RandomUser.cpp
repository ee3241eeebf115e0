#include "tests/model/RandomUser.h"

#include "tests/model/PageDescription.h"

#include <QDir>
#include <QDirIterator>
#include <QScrollBar>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int stepsPerSequence = 5;

} // namespace

RandomUser::RandomUser(const QString &root, const QStringList &folders, quint32 seed)
    : m_untouched({root + u"/untouched"_s})
    , m_disk({root + u"/a"_s, root + u"/b"_s})
    , m_model(m_disk, m_driver.labelText("labelStatsInfo"))
    , m_random(seed)
    , m_files(root, m_disk, m_random)
{
    for (const char *name : {"photo.jpg", "copy of photo.jpg", "a/f0.txt"})
        m_untouched.write(root + u"/untouched/"_s + QLatin1StringView(name), "the same everywhere");
    for (const QString &folder : folders) {
        m_folders.append(root + u'/' + folder);
        QDir().mkpath(m_folders.last());
    }
    m_driver.setFolders(m_folders);
}

void RandomUser::goBack()
{
    m_driver.click("btnBack");
    if (m_driver.page() != u"page" || m_driver.tree()->topLevelItemCount() != 0)
        m_failures.append(u"Back did not open the start page or did not empty the tree"_s);
    m_model.goBack();
}

void RandomUser::scan(bool newFiles)
{
    if (newFiles)
        m_log.clear();
    if (m_driver.page() == u"duplicatespage")
        goBack();
    if (newFiles)
        m_files.replaceAll();
    QStringList collected;
    for (const QString &folder : std::as_const(m_folders)) {
        QDirIterator files(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
        while (files.hasNext())
            collected.append(files.next());
    }
    m_driver.click("btnStartScan");
    if (m_random.below(8) == 0) {
        m_log.append(u"stop the scan; its results arrive later"_s);
        m_driver.click("btnStopScan");
        if (m_driver.page() != u"page")
            m_failures.append(u"Stop did not open the start page"_s);
    }
    if (!m_driver.waitForResults())
        m_failures.append(u"the scan delivered no results"_s);
    m_model.deliver(collected);
    m_log.append(u"scan %1 files"_s.arg(collected.size()));
    compare();
}

void RandomUser::sequence()
{
    ++m_reached.sequences;
    m_log.append(u"-"_s);
    for (int i = 0; i < stepsPerSequence && m_failures.isEmpty(); ++i) {
        step();
        compare();
    }
    if (const QString wrong = m_untouched.contentDifferences() + m_disk.contentDifferences();
        !wrong.isEmpty())
        m_failures.append(wrong);
}

void RandomUser::step()
{
    const int dice = m_random.below(100);
    if (dice < 24)
        clickCategory();
    else if (dice < 40)
        scroll();
    else if (dice < 58)
        checkSomeFiles();
    else if (dice < 64)
        checkGroup();
    else if (dice < 72)
        selectAll();
    else if (dice < 78)
        unselect();
    else if (dice < 87)
        removeSelected();
    else if (dice < 99)
        changeDisk();
    else
        scan(m_random.below(3) == 0);
}

void RandomUser::clickCategory()
{
    static const QList<CategoryButton> buttons = categoryButtonsByKey();
    // Half of the clicks choose "All", which has the most groups.
    const CategoryButton button = m_random.below(2) ? buttons.first() : m_random.oneOf(buttons);
    m_log.append(u"show "_s + button.key);
    m_driver.click(button.name);
    m_model.showCategory(button.key);
}

/// One change of the scroll bar loads one batch or two, depending on when the view lays out the first.
void RandomUser::scroll()
{
    QScrollBar *const bar = m_driver.tree()->verticalScrollBar();
    const int value = m_random.below(3) ? bar->maximum() : m_random.below(bar->maximum() + 1);
    m_log.append(u"scroll from %1 to %2 of %3"_s.arg(bar->value()).arg(value).arg(bar->maximum()));
    const bool nearEnd = value != bar->value() && bar->maximum() > 0 && value > 0.9 * bar->maximum() &&
                         bar->maximum() - (m_driver.tree()->viewport()->height() + value) < 100;
    bar->setValue(value);
    if (!nearEnd)
        return;
    m_reached.laterBatches += m_model.allLoaded() ? 0 : 1;
    m_model.loadNextBatch();
    if (m_driver.tree()->topLevelItemCount() > m_model.rowCount())
        m_model.loadNextBatch();
}

void RandomUser::checkSomeFiles()
{
    for (int n = m_random.below(4); m_model.rowCount() > 0 && n >= 0; --n) {
        const int group = m_random.below(m_model.rowCount());
        if (m_model.fileRowCount(group) == 0)
            continue;
        const int file = m_random.below(m_model.fileRowCount(group));
        const bool checked = m_random.below(3) > 0;
        QTreeWidgetItem *const row = m_driver.tree()->topLevelItem(group)->child(file);
        m_log.append((checked ? u"check "_s : u"uncheck "_s) + row->text(0));
        row->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
        m_model.checkFileRow(group, file, checked);
    }
}

void RandomUser::checkGroup()
{
    if (m_model.rowCount() == 0)
        return;
    const int group = m_random.below(m_model.rowCount());
    const bool checked = m_random.below(2);
    m_log.append(u"%1 group row %2"_s.arg(checked ? u"check"_s : u"uncheck"_s).arg(group));
    m_driver.tree()->topLevelItem(group)->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
    m_model.checkGroupRow(group, checked);
}

void RandomUser::selectAll()
{
    m_log.append(u"select all"_s);
    m_driver.click("btnSelectAll");
    if (m_model.actionsEnabled())
        m_model.selectAll();
}

void RandomUser::unselect()
{
    m_log.append(u"unselect"_s);
    const QList<ShownBox> boxes = m_driver.clickAndCloseBoxes("btnUnselect");
    compareBoxes(boxes, m_model.actionsEnabled() ? m_model.unselect() : QList<ShownBox>());
}

void RandomUser::removeSelected()
{
    m_log.append(u"delete"_s);
    const QList<ShownBox> boxes = m_driver.clickAndCloseBoxes("btnRemoveSelected");
    const qsizetype filesBefore = m_disk.files().size();
    compareBoxes(boxes, m_model.actionsEnabled() ? m_model.removeSelected() : QList<ShownBox>());
    m_reached.deletedFiles += static_cast<int>(filesBefore - m_disk.files().size());
    if (!boxes.isEmpty() && boxes.first().title == u"Deletion Complete" &&
        !boxes.first().text.contains(u" 0 files failed"))
        ++m_reached.deletionsWithFailures;
}

void RandomUser::changeDisk()
{
    if (m_disk.files().isEmpty())
        return;
    QStringList files = m_disk.files();
    files.sort();
    const QString path = m_random.oneOf(files);
    switch (m_random.below(4)) {
    case 0:
        m_log.append(u"lock "_s + path);
        m_disk.lock(path);
        break;
    case 1:
        m_log.append(u"turn into a folder "_s + path);
        m_disk.turnIntoFolder(path);
        break;
    default:
        m_log.append(u"vanish "_s + path);
        m_disk.vanish(path);
    }
}

void RandomUser::compare()
{
    QCoreApplication::processEvents();
    const QStringList shown = describe(m_driver);
    const QStringList expected = m_model.describe();
    if (shown != expected) {
        qsizetype line = 0;
        while (shown.value(line) == expected.value(line))
            ++line;
        m_failures.append(u"line %1 of %2 must be: %3\nbut is:           %4"_s.arg(QString::number(line),
            QString::number(expected.size()), expected.value(line), shown.value(line)));
    }
    if (const QString wrong = m_disk.differences() + m_untouched.differences(); !wrong.isEmpty())
        m_failures.append(wrong);
}

void RandomUser::compareBoxes(const QList<ShownBox> &shown, const QList<ShownBox> &expected)
{
    const auto texts = [](const QList<ShownBox> &boxes) {
        QStringList lines;
        for (const ShownBox &box : boxes)
            lines.append(box.title + u": "_s + box.text);
        return lines.join(u" | "_s);
    };
    if (shown != expected)
        m_failures.append(u"box must be <%1> but is <%2>"_s.arg(texts(expected), texts(shown)));
}
