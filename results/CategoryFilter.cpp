// Window layer: the functions of MainWindow that filter the results by category.

#include "results/CategoryFilter.h"

#include "app/CaptionFit.h"
#include "app/MainWindow.h"
#include "ui_MainWindow.h"

#include <QPushButton>
#include <QStyle>

void setShownAsSelected(QPushButton *button, bool shown)
{
    button->setProperty("selected", shown);
    // A style sheet reads a property only when it polishes the widget.
    button->style()->unpolish(button);
    button->style()->polish(button);
}

QList<QPushButton *> MainWindow::categoryButtons() const
{
    return {ui->btnAll, ui->btnPictures, ui->btnVideos, ui->btnAudios, ui->btnDocuments, ui->btnArchives,
        ui->btnOthers};
}

/// Gives all category buttons the same letter width, at which each caption fits its button.
void MainWindow::fitCategoryCaptions()
{
    constexpr int captionWidth = 75; // between a button's paddings, in pixels
    QStringList captions;
    for (const QPushButton *button : categoryButtons())
        captions.append(button->text());
    ui->btnAll->ensurePolished();
    const QFont boldest = ui->btnAll->font(); // the selected button's
    const int stretch = stretchToFit(captions, boldest, captionWidth);
    for (QPushButton *button : categoryButtons()) {
        QFont font = button->font();
        font.setStretch(stretch);
        button->setFont(font);
    }
}

void MainWindow::setCategoryButtonsEnabled(bool enabled)
{
    for (QPushButton *button : categoryButtons())
        button->setEnabled(enabled);
}

/// Kept deliberately: only a click changes the selected button. A new scan shows the user all groups while
/// another button may still look selected.
void MainWindow::showCategory(const QString &key, QPushButton *button)
{
    onCategoryClicked(key);
    // Kept deliberately: after the load, so that the user sees the button change together with the rows.
    for (QPushButton *each : categoryButtons())
        setShownAsSelected(each, false);
    setShownAsSelected(button, true);
}
