#include "results/CategoryFilter.h"

#include "app/MainWindow.h"
#include "ui_MainWindow.h"

#include <QPushButton>
#include <QStyle>

#include <algorithm>

void markSelected(QPushButton *button, bool selected)
{
    button->setProperty("selected", selected);
    // A style sheet looks at a property only while it polishes the widget.
    button->style()->unpolish(button);
    button->style()->polish(button);
}

QList<QPushButton *> MainWindow::categoryButtons() const
{
    return {ui->btnAll, ui->btnPictures, ui->btnVideos, ui->btnAudios, ui->btnDocuments, ui->btnArchives,
        ui->btnOthers};
}

void MainWindow::setCategoryButtonsEnabled(bool enabled)
{
    for (QPushButton *button : categoryButtons())
        button->setEnabled(enabled);
}

/// Makes room for captions that are wider than their buttons in the platform's font.
void MainWindow::widenCategoryButtons()
{
    for (QPushButton *button : categoryButtons()) {
        button->ensurePolished();
        button->resize(std::max(button->width(), button->sizeHint().width()), button->height());
    }
}

void MainWindow::showCategory(const QString &key, QPushButton *button)
{
    if (postponeDuringLoad([this, key, button] { showCategory(key, button); }))
        return;
    onCategoryClicked(key);
    // Only now, so that the buttons change their look when the tree holds the new rows.
    for (QPushButton *each : categoryButtons())
        markSelected(each, false);
    markSelected(button, true);
}
