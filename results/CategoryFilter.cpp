#include "results/CategoryFilter.h"

#include "app/MainWindow.h"
#include "ui_MainWindow.h"

#include <QPushButton>
#include <QStyle>

void setShownAsSelected(QPushButton *button, bool shown)
{
    button->setProperty("selected", shown);
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

void MainWindow::showCategory(const QString &key, QPushButton *button)
{
    onCategoryClicked(key);
    // After the load: the buttons change their look when the tree holds the new rows.
    for (QPushButton *each : categoryButtons())
        setShownAsSelected(each, false);
    setShownAsSelected(button, true);
}
