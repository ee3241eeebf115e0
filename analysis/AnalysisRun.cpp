// Window layer: the functions of MainWindow that run the analysis and show its result.

#include "app/MainWindow.h"

#include "analysis/DuplicateAnalysis.h"
#include "app/QueuedCall.h"
#include "app/TimerDisposal.h"
#include "ui_MainWindow.h"

#include <QPointer>

#include <chrono>

using Qt::Literals::StringLiterals::operator""_s;
using std::chrono_literals::operator""ms;

/// Starts the analysis of the collected files. The user cannot stop it.
void MainWindow::finalizeScanUI()
{
    // Kept deliberately: progressTimer keeps running until the next scan or Stop, and replaces the number of
    // duplicates that the user sees with 0.
    discardTimer(statusDotsTimer);
    ui->labelScanStatus->setText(tr("Analyzing duplicates, please wait..."));
    ui->labelCurrentFile->setText(tr("Analyzing..."));
    ui->btnStopScan->setEnabled(false);

    QProgressBar *const bar = ui->progressBar;
    QLabel *const label = ui->labelDuplicatesFoundValue;
    const AnalysisCallbacks callbacks{
        .progress = [bar](int percent) { queueCall(bar, [bar, percent] { bar->setValue(percent); }); },
        .duplicatesFound =
            [label](qsizetype files) {
                queueCall(label, [label, files] { label->setText(QString::number(files)); });
            },
        .abandoned = tasks.abandoned(),
    };
    tasks.start([window = this, guard = QPointer<MainWindow>(this), paths = collectedFiles, callbacks] {
        QList<DuplicateGroup> found = findDuplicates(paths, callbacks);
        if (callbacks.abandoned())
            return;
        queueCall(window, [guard, found = std::move(found)]() mutable {
            if (guard)
                guard->deliverBetweenLoads(std::move(found));
        });
    });
}

/// Delivers the groups of one analysis, after the current category load if there is one.
void MainWindow::deliverBetweenLoads(QList<DuplicateGroup> delivered)
{
    loadQueue.runBetweenLoads(
        [this, delivered = std::move(delivered)]() mutable { deliverGroups(std::move(delivered)); });
}

/// Replaces the results with those of one analysis and opens the results page.
void MainWindow::deliverGroups(QList<DuplicateGroup> delivered)
{
    forgetShownResults();
    groups = std::move(delivered);
    rebuildCategoryIndex();

    ui->labelScanStatus->setText(tr("Done!"));
    ui->labelCurrentFile->setText(tr("Completed"));
    ui->progressBar->setValue(100);
    qsizetype files = 0;
    for (const DuplicateGroup &group : std::as_const(groups))
        files += group.files.size();
    ui->labelDuplicatesFoundValue->setText(QString::number(files));
    ui->stackedWidget->setCurrentWidget(ui->duplicatespage);

    // Before the first rows exist, no button may save or delete marks that the user has not seen.
    setCategoryButtonsEnabled(false);
    setResultActionsEnabled(false);
    showLoadingOverlay();
    // Each load after the first drops the marks of groups without a row. If two results arrive within the
    // delay, only the second one is loaded, so that its marks stay complete.
    loadQueue.runDelayed(100ms, [this] { showFirstRows(); });
}

/// Shows the first rows of a new result, unless the user has left the results page.
void MainWindow::showFirstRows()
{
    if (ui->stackedWidget->currentWidget() == ui->duplicatespage)
        onCategoryClicked(u"all"_s);
    else
        hideLoadingOverlay();
}

/// Removes the shown rows, so that their check boxes are never saved into the groups of another result.
void MainWindow::forgetShownResults()
{
    removeRows();
    currentCategory.clear();
    loadedGroupCount = 0;
    allBatchesLoaded = false;
}
