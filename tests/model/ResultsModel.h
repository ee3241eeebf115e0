#pragma once

#include "tests/model/ExpectedDisk.h"
#include "tests/support/WindowDriver.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

/// What the results page must show and do, in the plainest way that can be written: lists that are searched
/// from end to end, nothing cached, nothing shared with the program.
class ResultsModel
{
public:
    /// \a totals is what the form shows before the first scan.
    ResultsModel(ExpectedDisk &disk, const QString &totals)
        : m_disk(disk)
        , m_totals(totals)
    {
    }

    /// A scan has collected these files and its result was loaded under "all".
    void deliver(const QStringList &collected);
    /// Back was pressed. The next thing to happen is a scan.
    void goBack()
    {
        m_totals.clear();
    }
    void showCategory(const QString &key);
    void loadNextBatch();
    void selectAll();
    [[nodiscard]] QList<ShownBox> unselect();
    /// Expects the deletion on the disk too.
    [[nodiscard]] QList<ShownBox> removeSelected();
    void checkFileRow(qsizetype group, qsizetype file, bool checked);
    void checkGroupRow(qsizetype group, bool checked);

    [[nodiscard]] bool actionsEnabled() const
    {
        return m_actionsEnabled;
    }
    [[nodiscard]] bool allLoaded() const
    {
        return m_rows.size() == listOf(m_shown).size();
    }
    [[nodiscard]] qsizetype rowCount() const
    {
        return m_rows.size();
    }
    [[nodiscard]] qsizetype fileRowCount(qsizetype group) const
    {
        return m_rows.at(group).files.size();
    }

    /// The tree row by row, then totals and status. Same form as describe(WindowDriver &).
    [[nodiscard]] QStringList describe() const;

private:
    struct Group
    {
        QString name;
        QStringList files;
        qint64 size;
        QString category;
        QSet<QString> marked;
    };
    struct FileRow
    {
        QString path;
        QString size;
        QString time;
        bool checked = false;
    };
    struct GroupRow
    {
        QString title;
        Qt::CheckState state = Qt::Unchecked;
        QString loadedUnder;
        QList<FileRow> files;
    };

    [[nodiscard]] QByteArray fingerprint(const QString &path) const;
    [[nodiscard]] QList<QStringList> copies(const QStringList &collected) const;
    [[nodiscard]] QList<qsizetype> listOf(const QString &key) const;
    void saveMarks();
    void appendRow(const Group &group, const QString &loadedUnder);
    void refresh();
    void load(const QString &key);

    ExpectedDisk &m_disk;
    QList<Group> m_groups;
    QList<GroupRow> m_rows;
    QString m_shown;
    bool m_placeholder = false;
    bool m_actionsEnabled = false;
    QString m_totals;
    QString m_status;
    QString m_selectedKey = QStringLiteral("all");
};

/// The same description of what the real window shows.
[[nodiscard]] QStringList describe(WindowDriver &driver);

/// Keys of the category buttons with the buttons' object names.
struct CategoryButton
{
    QString key;
    const char *name;
};
[[nodiscard]] QList<CategoryButton> categoryButtonsByKey();
