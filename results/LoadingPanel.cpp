// Window layer: the functions of MainWindow that show the loading panel.

#include "app/MainWindow.h"

#include "app/StyleSheets.h"
#include "app/TimerDisposal.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPainterPath>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

using std::chrono_literals::operator""ms;

void MainWindow::showLoadingOverlay()
{
    if (loadingOverlay)
        return;
    // Kept deliberately: except on the first call, this empty widget stays and is never shown. The user sees
    // the loading panel only once.
    loadingOverlay = new QWidget(this, Qt::Dialog | Qt::FramelessWindowHint);
    if (loadingOverlayActive)
        return;
    loadingOverlayActive = true;
    loadingOverlay->hide();
    loadingOverlay->deleteLater();
    loadingOverlay = nullptr;
    discardTimerLater(loadingTimer);

    createLoadingPanel();
    loadingOverlay->move(
        geometry().center() - QPoint(loadingOverlay->width() / 2, loadingOverlay->height() / 2));
    startLoadingDots();
    loadingLabel->setText(loadingText);
    loadingOverlay->show();
    loadingOverlay->raise();
}

void MainWindow::createLoadingPanel()
{
    loadingOverlay = new QWidget(this, Qt::Dialog | Qt::FramelessWindowHint);
    // Kept deliberately: this is the default; the user sees no difference.
    loadingOverlay->setAttribute(Qt::WA_DeleteOnClose, false);
    loadingOverlay->setFixedSize(300, 100);
    loadingOverlay->setStyleSheet(StyleSheets::loadingPanel);
    // Without the mask, the corners outside the rounded border are painted.
    QPainterPath outline;
    outline.addRoundedRect(loadingOverlay->rect(), 18, 18);
    loadingOverlay->setMask(QRegion(outline.toFillPolygon().toPolygon()));
    auto *const layout = new QVBoxLayout(loadingOverlay);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    loadingLabel = new QLabel(loadingText, loadingOverlay);
    loadingLabel->setAlignment(Qt::AlignCenter);
    loadingLabel->setStyleSheet(StyleSheets::loadingLabel);
    layout->addStretch();
    layout->addWidget(loadingLabel);
    layout->addStretch();
}

void MainWindow::startLoadingDots()
{
    if (loadingTimer)
        return;
    loadingTimer = new QTimer(this);
    connect(loadingTimer, &QTimer::timeout, this, [this] {
        loadingDotIndex = (loadingDotIndex + 1) % 4;
        if (loadingLabel)
            loadingLabel->setText(loadingText + QString(loadingDotIndex, u'.'));
    });
    loadingTimer->start(400ms);
}

void MainWindow::hideLoadingOverlay()
{
    // Kept deliberately: only the GUI thread calls this function; the user sees no difference.
    if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
        QMetaObject::invokeMethod(this, &MainWindow::hideLoadingOverlay, Qt::QueuedConnection);
        return;
    }
    if (loadingOverlay) {
        loadingOverlay->close();
        loadingOverlay->deleteLater();
        loadingOverlay = nullptr;
        loadingLabel = nullptr;
        // Without user input: a load in progress has no rows yet.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    discardTimerLater(loadingTimer);
}
