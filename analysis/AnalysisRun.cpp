#include "app/MainWindow.h"

#include "analysis/DuplicateAnalysis.h"
#include "app/TimerDisposal.h"
#include "ui_MainWindow.h"

#include <QPointer>
#include <QTimer>

#include <chrono>

using std::chrono_literals::operator""ms;

/// Starts the analysis of the files just collected. It cannot be stopped.
void MainWindow::finalizeScanUI()
{
    discardTimer(statusDotsTimer);
    ui->labelScanStatus->setText(tr("Analyzing duplicates, please wait..."));
    ui->labelCurrentFile->setText(tr("Analyzing..."));
    ui->btnStopScan->setEnabled(false);

    const AnalysisCallbacks callbacks{
        .progress =
            [bar = ui->progressBar](int percent) {
                QMetaObject::invokeMethod(
                    bar, [bar, percent] { bar->setValue(percent); }, Qt::QueuedConnection);
            },
        .duplicatesFound =
            [label = ui->labelDuplicatesFoundValue](qsizetype files) {
                QMetaObject::invokeMethod(
                    label, [label, files] { label->setText(QString::number(files)); }, Qt::QueuedConnection);
            },
        .abandoned = tasks.abandoned(),
    };
    tasks.start([window = this, guard = QPointer<MainWindow>(this), paths = collectedFiles, callbacks] {
        QList<DuplicateGroup> found = findDuplicates(paths, callbacks);
        if (callbacks.abandoned())
            return;
        auto deliver = [guard, found = std::move(found)]() mutable {
            if (guard)
                guard->deliverGroups(std::move(found));
        };
        QMetaObject::invokeMethod(window, std::move(deliver), Qt::QueuedConnection);
    });
}

/// Shows the results of one analysis in place of whatever results were there.
void MainWindow::deliverGroups(QList<DuplicateGroup> delivered)
{
    if (postponeDuringLoad([this, delivered] { deliverGroups(delivered); }))
        return;
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

    // Until the first rows are there, nothing may act on ticks that nobody has seen.
    setResultActionsEnabled(false);
    showLoadingOverlay();
    // A load drops the ticks of groups it has not reached. After two deliveries in a row only the second
    // one's rows are loaded, or the second load would take those ticks from a result that nobody has touched.
    const auto showRows = [this, delivery = ++deliveries] {
        if (delivery == deliveries)
            onCategoryClicked(QStringLiteral("all"));
    };
    // Asked at the end of a load under way: the next delivery may be waiting for that end as well.
    QTimer::singleShot(100ms, this, [this, showRows] {
        if (!postponeDuringLoad(showRows))
            showRows();
    });
}

/// Takes the rows of the shown category down, so that their ticks can never be saved into groups of another
/// result.
void MainWindow::forgetShownResults()
{
    removeRows();
    currentCategory.clear();
    loadedGroupCount = 0;
    allBatchesLoaded = false;
}
