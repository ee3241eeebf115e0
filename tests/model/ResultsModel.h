#pragma once

#include "tests/model/ExpectedDisk.h"
#include "tests/support/WindowDriver.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

/// A reference for the results page, written as simply as possible: linear searches, no caches, no code
/// shared with the program.
class ResultsModel
{
public:
    /// \a totals is the text of the form before the first scan.
    ResultsModel(ExpectedDisk &disk, const QString &totals)
        : m_disk(disk)
        , m_totals(totals)
    {
    }

    /// The result of a scan of these files was loaded under "all".
    void deliver(const QStringList &collected);
    /// Back was pressed. Only deliver() may follow.
    void goBack()
    {
        m_totals.clear();
    }
    void showCategory(const QString &key);
    void loadNextBatch();
    void selectAll();
    [[nodiscard]] QList<ShownBox> unselect();
    /// Expects the files to be deleted from the disk as well.
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

    /// The rows of the tree, then totals and status, in the format of PageDescription.h.
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
