// Window layer: the functions of MainWindow that show help.

#include "app/MainWindow.h"
#include "app/Version.h"

#include <QDesktopServices>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>

using Qt::StringLiterals::operator""_L1;
using Qt::StringLiterals::operator""_s;

namespace {

/// Placeholder (RFC 2606) until the project has a web site.
constexpr QLatin1StringView webSite("https://www.quillory.example/");

void openPage(QLatin1StringView document)
{
    QDesktopServices::openUrl(QUrl(QString(webSite) + document));
}

void openSupportPage()
{
    openPage("support.html"_L1);
}

void openHelpPage()
{
    openPage("online-help/quillory.html"_L1);
}

} // namespace

void MainWindow::createHelpMenu()
{
    auto *const menu = new QMenu(this);
    connect(menu->addAction(tr("About")), &QAction::triggered, this, &MainWindow::showAbout);
    connect(menu->addAction(tr("Support")), &QAction::triggered, this, &openSupportPage);
    connect(menu->addAction(tr("Help")), &QAction::triggered, this, &openHelpPage);
    btnMenu->setMenu(menu);
}

void MainWindow::connectHelpButton()
{
    connect(btnHelp, &QPushButton::clicked, this, &openHelpPage);
}

void MainWindow::showAbout()
{
    const QStringList paragraphs{
        tr("Quillory v%1").arg(quilloryVersion),
        tr("A powerful and easy-to-use duplicate file finder tool that helps you find and remove duplicate "
           "files from your Windows or Mac computer, freeing up valuable disk space and optimizing your "
           "system's performance."),
        tr("© 2026 The Quillory authors"),
    };
    QMessageBox::about(this, tr("About"), paragraphs.join(u"\n\n"_s));
}
