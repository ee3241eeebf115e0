#include "results/FileManager.h"

#include "tests/support/OpenedUrls.h"
#include "tests/support/TestFiles.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timeoutMilliseconds = 60'000;

// Without a folder of services, the bus cannot start a file manager of this machine.
constexpr auto busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

/// The D-Bus service of a desktop's file manager, on a separate bus.
class FileManagerService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QList<QStringList> shown;

public slots:
    void ShowItems(const QStringList &uris, const QString &startupId)
    {
        shown.append(uris + QStringList{startupId});
    }
};

/// "Show in folder" selects the file in the desktop's file manager, or opens the folder if there is none.
class tst_showInFolder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void opensTheFolderWithoutAFileManager();
    void selectsTheFileInTheFileManager();

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    OpenedUrls m_opened{{u"file"_s}};
};

void tst_showInFolder::initTestCase()
{
    if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty())
        QSKIP("dbus-daemon is not installed");
    const QString configuration = m_folder.filePath(u"bus.conf"_s);
    writeFile(configuration, busConfiguration);
    m_bus.start(u"dbus-daemon"_s,
        {u"--config-file="_s + configuration, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
    QVERIFY(m_bus.waitForStarted(timeoutMilliseconds));
    while (!m_bus.canReadLine())
        QVERIFY(m_bus.waitForReadyRead(timeoutMilliseconds));
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void tst_showInFolder::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(u"file manager"_s);
    m_bus.kill();
    m_bus.waitForFinished();
}

void tst_showInFolder::opensTheFolderWithoutAFileManager()
{
    showInFolder(u"/some where/a,b.txt"_s);
    QTRY_COMPARE(m_opened.urls, QList<QUrl>{QUrl::fromLocalFile(u"/some where"_s)});
}

void tst_showInFolder::selectsTheFileInTheFileManager()
{
    m_opened.urls.clear();
    FileManagerService service;
    QDBusConnection bus =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"file manager"_s);
    QVERIFY(
        bus.registerObject(u"/org/freedesktop/FileManager1"_s, &service, QDBusConnection::ExportAllSlots));
    QVERIFY(bus.registerService(u"org.freedesktop.FileManager1"_s));

    showInFolder(u"/some where/a,b#%20ü.txt"_s);

    QTRY_COMPARE(service.shown.size(), 1);
    QCOMPARE(
        service.shown.first(), (QStringList{u"file:///some%20where/a,b%23%2520%C3%BC.txt"_s, QString()}));
    QTRY_VERIFY(!QCoreApplication::instance()->findChild<QDBusPendingCallWatcher *>());
    QVERIFY(m_opened.urls.isEmpty());
}

QTEST_GUILESS_MAIN(tst_showInFolder)
#include "tst_showInFolder.moc"
