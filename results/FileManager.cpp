#include "results/FileManager.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#ifdef Q_OS_WIN
#include <QProcess>
#endif

#ifdef QUILLORY_HAS_DBUS
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

#ifndef Q_OS_WIN
void openFolderOf(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}
#endif

#if defined(Q_OS_WIN)
void selectInFileManager(const QString &path)
{
    QProcess explorer;
    explorer.setProgram(QDir(qEnvironmentVariable("WINDIR", u"C:/Windows"_s)).filePath(u"explorer.exe"_s));
    // Explorer splits its argument at commas and expects quotes around the path only.
    explorer.setNativeArguments(u"/select,\"%1\""_s.arg(QDir::toNativeSeparators(path)));
    explorer.startDetached();
}
#elif defined(QUILLORY_HAS_DBUS)
/// Calls the file manager through its standard D-Bus interface; opens the folder if none responds.
void selectInFileManager(const QString &path)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openFolderOf(path);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
        u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    const QString startupId;
    call << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << startupId;
    auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, path] {
        if (answer->isError())
            openFolderOf(path);
        answer->deleteLater();
    });
}
#else
void selectInFileManager(const QString &path)
{
    openFolderOf(path);
}
#endif

} // namespace

void openFile(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void showInFolder(const QString &path)
{
    selectInFileManager(path);
}
