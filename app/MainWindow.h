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

/// The program's one window: start page, scan page and results page, and all state of a scan and its result.
///
/// Everything runs on the GUI thread. The two pool tasks (collection, analysis) reach the window through
/// queued calls only and never touch a member. The definitions stand beside what they are about: app/
/// (places, help), scan/, analysis/ and results/.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    /// Ends the running tasks early and waits for them; they hold a pointer to the window.
    ~MainWindow() override;

    /// Ends the running tasks early and waits for them; false if one still runs at the deadline.
    [[nodiscard]] bool finishTasks(QDeadlineTimer deadline);

    /// Makes \a folders the whole list of places to scan, each as if added with Add. Takes absolute paths.
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
    // MainWindow.cpp
    void showStartPage();
    void connectScrollBar();
    QWidget *createTopBar();
    void installCentralContainer(QWidget *topBar);
    void styleResultsTree();
    void connectResultsPage();
    void applyStyleSheets();
    void fitCaptions();
    void setFocusOrder();

    // ScanFolderList.cpp
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

    // HelpMenu.cpp
    void createHelpMenu();
    void connectHelpButton();

    // ScanRun.cpp
    void startScan();
    void startScanningWithOptions();
    void resetScan();
    void startCollection(const QStringList &folders, const ScanOptions &options);
    void showStartOfCollection();
    void showCollectionProgress(const QString &path, int percent);
    void finishCollection(const QStringList &collected);
    void startStatusDots();
    void showElapsedTime();

    // AnalysisRun.cpp
    void finalizeScanUI();
    void deliverBetweenLoads(QList<DuplicateGroup> delivered);
    void deliverGroups(QList<DuplicateGroup> delivered);
    void showFirstRows();
    void forgetShownResults();

    // ResultsTree.cpp
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

    // GroupRow.cpp
    QTreeWidgetItem *createGroupItem(const QString &fileName, const QList<QString> &files, qint64 size,
        const QDateTime &modified, bool hasMarkedFiles, const QSet<QString> &markedFiles);
    QTreeWidgetItem *createGroupItem(const DuplicateGroup &group);

    // RowMenu.cpp
    void connectRowMenu();

    // LoadingPanel.cpp
    void showLoadingOverlay();
    void hideLoadingOverlay();
    void createLoadingPanel();
    void startLoadingDots();

    // CategoryFilter.cpp
    void fitCategoryCaptions();
    void showCategory(const QString &key, QPushButton *button);
    void setCategoryButtonsEnabled(bool enabled);
    [[nodiscard]] QList<QPushButton *> categoryButtons() const;

    // SelectionAndDeletion.cpp
    void selectAllGroups();
    void unselectAll();
    void removeSelected();
    void showNote(const QString &title, const QString &text);

    QList<DuplicateGroup> groups;
    QMap<QString, QList<DuplicateGroup *>> groupsByCategory;
    qint32 firstBatchSize = 20;
    qint32 nextBatchSize = 20;
    bool allBatchesLoaded = false;
    QString currentCategory;
    qint32 loadedGroupCount = 0;
    bool loadingOverlayActive = false;
    bool batchLoading = false;
    bool allSelected = false;
    Ui::MainWindow *ui;
    QWidget *loadingOverlay = nullptr;
    QLabel *loadingLabel = nullptr;
    QTimer *loadingTimer = nullptr;
    QString loadingText = tr("Loading duplicate files,  wait...");
    qint32 loadingDotIndex = 0;
    QPushButton *btnHelp = nullptr;
    QToolButton *btnMenu = nullptr;
    QList<DuplicateGroup *> allGroups;
    ScanOptions scanOptions;
    bool scanOptionsSet = false;
    QElapsedTimer elapsedTimer;
    QTimer *progressTimer = nullptr;
    QTimer *statusDotsTimer = nullptr;
    QString scanStatusText;
    qint32 statusDotCount = 0;
    qint32 duplicatesFound = 0;
    QStringList collectedFiles;
    bool stopRequested = false;
    QTimer *scanTimer = nullptr;

    ThumbnailQueue *thumbnails = nullptr;
    LoadQueue loadQueue;
    BackgroundTasks tasks;
};
