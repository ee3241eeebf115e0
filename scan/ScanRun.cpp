// Window layer: the functions of MainWindow that run a scan and show its progress.

#include "app/MainWindow.h"

#include "app/TimerDisposal.h"
#include "scan/ElapsedTime.h"
#include "scan/FileCollection.h"
#include "scan/ScanOptionsDialog.h"
#include "ui_MainWindow.h"

#include <QDebug>
#include <QTimer>

#include <chrono>

using std::chrono_literals::operator""ms;

namespace {

constexpr std::chrono::milliseconds tickInterval = 500ms;

} // namespace

void MainWindow::startScan()
{
    resetScan();
    stopRequested = false;
    ui->stackedWidget->setCurrentWidget(ui->scanpage);
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
    const auto queue = [this](auto step) {
        QMetaObject::invokeMethod(this, std::move(step), Qt::QueuedConnection);
    };
    const CollectionCallbacks callbacks{
        .counted =
            [this, queue] {
                queue([this] {
                    ui->progressBar->setValue(0);
                    ui->labelFilesScannedValue->setText(QStringLiteral("0"));
                });
            },
        .progress =
            [this, queue](const QString &path, int percent) {
                queue([this, path, percent] {
                    ui->labelCurrentFile->setText(tr("Scanning:") + path);
                    ui->progressBar->setValue(percent);
                    ui->labelFilesScannedValue->setText(QString::number(scannedFileCount));
                });
            },
        .abandoned = tasks.abandoned(),
    };
    tasks.start([this, queue, folders, options, callbacks] {
        const QStringList collected = collectFiles(folders, options, callbacks);
        if (callbacks.abandoned())
            return;
        queue([this] { ui->progressBar->setValue(100); });
        queue([this, collected] {
            collectedFiles = collected;
            finalizeScanUI();
        });
    });
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
    discardTimerLater(scanTimer);
    if (loadingOverlay) {
        loadingOverlay->hide();
        delete loadingOverlay;
        loadingOverlay = nullptr;
        loadingLabel = nullptr;
    }
    ui->labelFilesScannedValue->setText(QStringLiteral("0"));
    ui->labelDuplicatesFoundValue->setText(QStringLiteral("0"));
    ui->labelElapsedTimeValue->setText(QStringLiteral("00:00:00"));
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
    discardTimerLater(scanTimer);
    ui->stackedWidget->setCurrentWidget(ui->page);
}

void MainWindow::on_btnScanOptions_clicked()
{
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
