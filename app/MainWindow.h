#pragma once

#include "analysis/DuplicateGroup.h"
#include "app/BackgroundTasks.h"
#include "results/LoadQueue.h"
#include "scan/ScanOptions.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QList>
#include <QMainWindow>
#include <QMap>
#include <QString>
#include <QStringList>

class QLabel;
class QListWidgetItem;
class QPushButton;
class QTimer;
class QToolButton;
class QTreeWidgetItem;
class ThumbnailQueue;
struct Volume;

namespace Ui {
class MainWindow;
}

/// The program's window: start page, scan page, results page, and the state of a scan and its result.
///
/// GUI thread only. The two background tasks, collection and analysis, never access a member: they report
/// through queued calls. The functions are defined in the folder of their subject; a comment above each group
/// names the file.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    /// Ends the background tasks early and waits for them, because they hold a pointer to the window.
    ~MainWindow() override;

    /// Ends the background tasks early and waits for them. Returns false if one still runs at the deadline.
    [[nodiscard]] bool finishTasks(QDeadlineTimer deadline);

    /// Replaces the list of folders to scan. Takes absolute paths.
    void setScanFolders(const QStringList &folders);

protected:
    void showEvent(QShowEvent *event) override;

private slots:
    void on_btnScanOptions_clicked();
    void on_btnStopScan_clicked();
    void onCategoryClicked(QString type);
    void on_btnBack_clicked();
    void showAbout();
    void on_treeDuplicates_scroll();
    void refreshCurrentBatchUI();

private:
    // app/MainWindow.cpp
    void showStartPage();
    void connectScrollBar();
    [[nodiscard]] QWidget *createTopBar();
    void installCentralContainer(QWidget *topBar);
    void styleResultsTree();
    void connectResultsPage();
    void applyStyleSheets();
    void fitCaptions();
    void setFocusOrder();

    // app/ScanFolderList.cpp: the folders to scan
    void populateScanFolders();
    void listVolumes(const QList<Volume> &volumes);
    void addVolumeRow(const Volume &volume);
    void addFolder();
    void addFolderRow(const QString &path);
    void acceptDroppedFolders();
    void addDroppedFolders(const QStringList &dropped);
    void appendFolderRow(QWidget *row, int height, const QString &path, QPushButton *deleteButton);
    [[nodiscard]] QWidget *folderRowButton(int row) const;
    [[nodiscard]] QStringList scanFolders() const;

    // app/HelpMenu.cpp: help button and menu
    void createHelpMenu();
    void connectHelpButton();

    // scan/ScanRun.cpp: start, progress and Stop of a scan
    void startScan();
    void startScanningWithOptions();
    void resetScan();
    void startCollection(const QStringList &folders, const ScanOptions &options);
    void showStartOfCollection();
    void showCollectionProgress(const QString &path, int percent);
    void finishCollection(const QStringList &collected);
    void startStatusDots();
    void showElapsedTime();

    // analysis/AnalysisRun.cpp: analysis of the collected files and delivery of its groups
    void finalizeScanUI();
    void deliverBetweenLoads(QList<DuplicateGroup> delivered);
    void deliverGroups(QList<DuplicateGroup> delivered);
    void showFirstRows();
    void forgetShownResults();

    // results/ResultsTree.cpp: the rows of one category, loaded in batches
    void loadCategory(const QString &type);
    void removeRows();
    void showFirstBatch();
    void spanGroupRows(int first);
    void clearTree();
    void showNoDuplicates();
    void loadNextBatch();
    [[nodiscard]] QList<DuplicateGroup *> groupsOf(const QString &category) const;
    void rebuildCategoryIndex();
    void saveCheckStates();
    void setResultActionsEnabled(bool enabled);

    // results/GroupRow.cpp: the rows of one group
    QTreeWidgetItem *createGroupItem(const QString &fileName, const QStringList &files, qint64 size,
        const QDateTime &modified, bool hasMarkedFiles, const QSet<QString> &markedFiles);
    QTreeWidgetItem *createGroupItem(const DuplicateGroup &group);

    // results/RowMenu.cpp: context menu of the rows
    void connectRowMenu();

    // results/LoadingPanel.cpp: the panel shown while a category loads
    void showLoadingOverlay();
    void hideLoadingOverlay();
    void createLoadingPanel();
    void startLoadingDots();

    // results/CategoryFilter.cpp: the category buttons
    void fitCategoryCaptions();
    void showCategory(const QString &key, QPushButton *button);
    void setCategoryButtonsEnabled(bool enabled);
    [[nodiscard]] QList<QPushButton *> categoryButtons() const;

    // results/SelectionAndDeletion.cpp: Select All, Unselect and Delete
    void selectAllGroups();
    void unselectAll();
    void removeSelected();
    void showNote(const QString &title, const QString &text);

    // Names, types and order of the members up to scanTimer are fixed; new members follow them.

    /// The result of the last analysis.
    QList<DuplicateGroup> groups;
    /// Pointers into groups, by category key; the key "all" has every group.
    QMap<QString, QList<DuplicateGroup *>> groupsByCategory;
    /// Maximum number of groups that the first batch and each later batch of a category add to the tree.
    qint32 firstBatchSize = 20;
    qint32 nextBatchSize = 20;
    /// True if the tree has a row for each group of the current category.
    bool allBatchesLoaded = false;
    /// Key of the category in the tree.
    QString currentCategory;
    /// Groups of the current category that have a row. Row i shows group i of the category.
    qint32 loadedGroupCount = 0;
    /// True once the loading panel has been shown; never reset.
    bool loadingOverlayActive = false;
    /// Guards loadNextBatch() against recursion.
    bool batchLoading = false;
    // Kept deliberately: set and cleared, never read; the user sees no difference.
    bool allSelected = false;
    Ui::MainWindow *ui;
    /// The loading panel; null while it is closed.
    QWidget *loadingOverlay = nullptr;
    QLabel *loadingLabel = nullptr;
    QTimer *loadingTimer = nullptr;
    // Kept deliberately: two spaces after the comma; the user sees them.
    QString loadingText = tr("Loading duplicate files,  wait...");
    /// Dots after loadingText, 0 to 3.
    qint32 loadingDotIndex = 0;
    QPushButton *btnHelp = nullptr;
    QToolButton *btnMenu = nullptr;
    /// Pointers into groups, one for each element, in the same order.
    QList<DuplicateGroup *> allGroups;
    /// The settings of the next scan.
    ScanOptions scanOptions;
    // Kept deliberately: set, never read; the user sees no difference.
    bool scanOptionsSet = false;
    /// Time since the start of the scan.
    QElapsedTimer elapsedTimer;
    /// Updates elapsed time and counts; null before the first scan and after Stop.
    QTimer *progressTimer = nullptr;
    /// Animates the dots of the status text; null unless files are being collected.
    QTimer *statusDotsTimer = nullptr;
    QString scanStatusText;
    /// Dots after scanStatusText, 0 to 3.
    qint32 statusDotCount = 0;
    // Kept deliberately: stays 0; within 500 ms of each report, the user sees 0 duplicates again.
    qint32 duplicatesFound = 0;
    /// Paths that the last collection has delivered.
    QStringList collectedFiles;
    // Kept deliberately: set and cleared, never read; a stopped scan still shows its results to the user.
    bool stopRequested = false;
    // Kept deliberately: never created; the user sees no difference.
    QTimer *scanTimer = nullptr;

    /// Child of the results tree.
    ThumbnailQueue *thumbnails = nullptr;
    LoadQueue loadQueue;
    BackgroundTasks tasks;
};
