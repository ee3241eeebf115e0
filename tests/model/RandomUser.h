#pragma once

#include "tests/model/ExpectedDisk.h"
#include "tests/model/ResultsModel.h"
#include "tests/support/WindowDriver.h"

#include <QRandomGenerator>

/// How often what matters most has happened, to know that the random steps get there.
struct Reached
{
    int sequences = 0;
    int laterBatches = 0;
    int deletedFiles = 0;
    int deletionsWithFailures = 0;

    void add(const Reached &other)
    {
        sequences += other.sequences;
        laterBatches += other.laterBatches;
        deletedFiles += other.deletedFiles;
        deletionsWithFailures += other.deletionsWithFailures;
    }
};

/// One window, its places to scan, and the model beside it.
class RandomUser
{
public:
    /// Scans \a places below \a root. The same \a seed does the same again.
    RandomUser(const QString &root, const QStringList &places, quint32 seed);

    /// Scans the places, with the folders filled anew or as they are.
    void scan(bool fillAnew = true);
    /// A few steps, then a look at the content of every file.
    void sequence();
    [[nodiscard]] const Reached &reached() const
    {
        return m_reached;
    }
    [[nodiscard]] QString failure() const
    {
        return m_failures.isEmpty() ? QString() : (m_log + m_failures).join(u'\n');
    }

private:
    [[nodiscard]] int below(qsizetype limit)
    {
        return static_cast<int>(m_random.bounded(static_cast<quint32>(limit)));
    }
    template <typename T>
    [[nodiscard]] T oneOf(const QList<T> &list)
    {
        return list.at(below(list.size()));
    }

    void fillFolders();
    [[nodiscard]] QByteArray content(int group, int file);
    [[nodiscard]] QString freshPath();

    void step();
    void clickCategory();
    void scroll();
    void checkSomeFiles();
    void checkGroup();
    void selectAll();
    void unselect();
    void removeSelected();
    void changeDisk();
    void goBack();

    void compare();
    void compareBoxes(const QList<ShownBox> &shown, const QList<ShownBox> &expected);

    WindowDriver m_driver;
    ExpectedDisk m_bystanders;
    ExpectedDisk m_disk;
    ResultsModel m_model;
    QRandomGenerator m_random;
    QStringList m_places;
    int m_files = 0;
    Reached m_reached;
    QStringList m_log;
    QStringList m_failures;
};
