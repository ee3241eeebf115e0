// Window layer: the functions of MainWindow that run a scan and show its progress.

#include "app/MainWindow.h"

#include "app/QueuedCall.h"
#include "app/TimerDisposal.h"
#include "scan/ElapsedTime.h"
#include "scan/FileCollection.h"
#include "scan/ScanOptionsDialog.h"
#include "ui_MainWindow.h"

#include <QDebug>
#include <QTimer>

#include <chrono>

using Qt::Literals::StringLiterals::operator""_s;
using std::chrono_literals::operator""ms;

namespace {

constexpr std::chrono::milliseconds tickInterval = 500ms;

} // namespace

/// Kept deliberately: also starts while a stopped scan still runs. The user sees the sum of both file counts
/// and gets both results.
void MainWindow::startScan()
{
    resetScan();
    stopRequested = false;
    ui->stackedWidget->setCurrentWidget(ui->scanpage);
    // Kept deliberately: resetScan() has done both; the user sees no difference.
    ui->progressBar->setValue(0);
    ui->btnStopScan->setEnabled(true);
    startScanningWithOptions();
}

void MainWindow::startScanningWithOptions()
{
    ui->progressBar->setValue(0);
    duplicatesFound = 0;
    collectedFiles.clear();
    elapsedTimer.start();
    scannedFileCount = 0;
    acceptedFileCount = 0;

    discardTimer(progressTimer);
    progressTimer = new QTimer(this);
    connect(progressTimer, &QTimer::timeout, this, &MainWindow::showElapsedTime);
    progressTimer->start(tickInterval);

    QMetaObject::invokeMethod(this, &MainWindow::startStatusDots, Qt::QueuedConnection);
    startCollection(scanFolders(), scanOptions);
}

/// Collects files in the background. Queues progress and, at the end, the list to the GUI thread.
void MainWindow::startCollection(const QStringList &folders, const ScanOptions &options)
{
    const CollectionCallbacks callbacks{
        .counted = [this] { queueCall(this, [this] { showStartOfCollection(); }); },
        .progress =
            [this](const QString &path, int percent) {
                queueCall(this, [this, path, percent] { showCollectionProgress(path, percent); });
            },
        .abandoned = tasks.abandoned(),
    };
    tasks.start([this, folders, options, callbacks] {
        const QStringList collected = collectFiles(folders, options, callbacks);
        if (callbacks.abandoned())
            return;
        queueCall(this, [this] { ui->progressBar->setValue(100); });
        queueCall(this, [this, collected] { finishCollection(collected); });
    });
}

void MainWindow::showStartOfCollection()
{
    ui->progressBar->setValue(0);
    ui->labelFilesScannedValue->setText(u"0"_s);
}

void MainWindow::showCollectionProgress(const QString &path, int percent)
{
    // Kept deliberately: no space between the label and the path that the user sees.
    ui->labelCurrentFile->setText(tr("Scanning:") + path);
    ui->progressBar->setValue(percent);
    ui->labelFilesScannedValue->setText(QString::number(scannedFileCount));
}

void MainWindow::finishCollection(const QStringList &collected)
{
    collectedFiles = collected;
    finalizeScanUI();
}

void MainWindow::showElapsedTime()
{
    ui->labelFilesScannedValue->setText(QString::number(scannedFileCount));
    // Kept deliberately: always 0, so users see the number from the analysis for half a second at most.
    ui->labelDuplicatesFoundValue->setText(QString::number(duplicatesFound));
    ui->labelElapsedTimeValue->setText(elapsedTimeText(elapsedTimer.elapsed()));
}

void MainWindow::startStatusDots()
{
    scanStatusText = tr("Scanning, please wait");
    statusDotCount = 0;
    discardTimer(statusDotsTimer);
    statusDotsTimer = new QTimer(this);
    connect(statusDotsTimer, &QTimer::timeout, this, [this] {
        statusDotCount = (statusDotCount + 1) % 4;
        ui->labelScanStatus->setText(scanStatusText + QString(statusDotCount, u'.'));
    });
    statusDotsTimer->start(tickInterval);
}

void MainWindow::resetScan()
{
    collectedFiles.clear();
    forgetShownResults();
    groups.clear();
    rebuildCategoryIndex();
    duplicatesFound = 0;
    ui->progressBar->setValue(0);
    discardTimer(progressTimer);
    // Kept deliberately: without effect, because the timer is never created; the user sees no difference.
    discardTimerLater(scanTimer);
    if (loadingOverlay) {
        loadingOverlay->hide();
        delete loadingOverlay;
        loadingOverlay = nullptr;
        loadingLabel = nullptr;
    }
    ui->labelFilesScannedValue->setText(u"0"_s);
    ui->labelDuplicatesFoundValue->setText(u"0"_s);
    ui->labelElapsedTimeValue->setText(u"00:00:00"_s);
    ui->labelScanStatus->clear();
    ui->labelCurrentFile->clear();
    ui->btnStopScan->setEnabled(true);
}

/// Kept deliberately: Stop shows the start page but does not end the scan, which opens the results page when
/// it is done.
void MainWindow::on_btnStopScan_clicked()
{
    stopRequested = true;
    resetScan();
    hideLoadingOverlay();
    // Kept deliberately: without effect, because the timer is never created; the user sees no difference.
    discardTimerLater(scanTimer);
    ui->stackedWidget->setCurrentWidget(ui->page);
}

void MainWindow::on_btnScanOptions_clicked()
{
    // Kept deliberately: appears in the debug log, which the user does not see.
    qDebug() << "ScanOptions Slot Triggered!";
    ScanOptionsDialog dialog(this);
    // Kept deliberately: without any skip rule, the dialog opens with its defaults instead of the options.
    if (!scanOptions.fileTypes.isEmpty() && (scanOptions.skipSystem || scanOptions.skipApps ||
                                                scanOptions.skipHiddenFolders || scanOptions.skipDesktop))
        dialog.setOptions(scanOptions);
    if (dialog.exec() == QDialog::Accepted) {
        scanOptions = dialog.getOptions();
        scanOptionsSet = true;
    }
}
