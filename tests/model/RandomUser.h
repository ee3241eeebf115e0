#pragma once

#include "tests/model/ExpectedDisk.h"
#include "tests/model/RandomFiles.h"
#include "tests/model/ResultsModel.h"
#include "tests/support/RandomChoice.h"
#include "tests/support/WindowDriver.h"

/// Counts the most important events, to prove that the random steps reach them.
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

/// Performs random steps in a window and in a model of it, and compares the two.
class RandomUser
{
public:
    /// Scans \a folders, which are relative to \a root. The same \a seed gives the same steps.
    RandomUser(const QString &root, const QStringList &folders, quint32 seed);

    /// Scans the folders, by default with new files.
    void scan(bool newFiles = true);
    /// Performs a few steps, then checks the content of every file.
    void sequence();
    [[nodiscard]] const Reached &reached() const
    {
        return m_reached;
    }
    /// The steps and the differences found; empty if there are none.
    [[nodiscard]] QString failure() const
    {
        return m_failures.isEmpty() ? QString() : (m_log + m_failures).join(u'\n');
    }

private:
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
    ExpectedDisk m_untouched;
    ExpectedDisk m_disk;
    ResultsModel m_model;
    RandomChoice m_random;
    RandomFiles m_files;
    QStringList m_folders;
    Reached m_reached;
    QStringList m_log;
    QStringList m_failures;
};
