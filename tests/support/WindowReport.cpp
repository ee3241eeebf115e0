#include <QApplication>
#include <QGenericPlugin>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QTextStream>
#include <QTimer>

namespace {

void reportWindow()
{
    QTextStream output(stdout);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        const auto *const list = window->findChild<QListWidget *>(QStringLiteral("listScanFolders"));
        if (!list)
            continue;
        output << (window->isVisible() ? "shown" : "hidden") << '\n';
        for (int i = 0; i < list->count(); ++i)
            output << list->itemWidget(list->item(i))->findChild<QLabel *>()->text() << '\n';
    }
}

} // namespace

/// Plugin that prints whether the window is visible and which folders it lists, then ends the program. Loaded
/// with "-plugin windowreport".
class WindowReport : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "WindowReport.json")

public:
    QObject *create(const QString & /*name*/, const QString & /*parameters*/) override
    {
        QTimer::singleShot(0, qApp, [] {
            reportWindow();
            QCoreApplication::quit();
        });
        return new QObject(this);
    }
};

#include "WindowReport.moc"
