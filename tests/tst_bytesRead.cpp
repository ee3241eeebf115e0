#include "tests/support/PageCache.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>

namespace {

constexpr int patience = 60'000;
constexpr int sample = 4096;
constexpr std::array sizes{0, 1, 4096, 8191, 8192, 8193, 16384, 20000, 100'000, 3'000'000};

/// How a process accessed one file.
struct Access
{
    int opened = 0;
    qint64 bytesRead = 0;
    int reads = 0;
    int mapped = 0;

    /// \a bytes is negative if the read failed, for example because the data is not cached.
    void addRead(qint64 bytes)
    {
        bytesRead += std::max<qint64>(bytes, 0);
        reads += bytes < 0 ? 0 : 1;
    }
};

} // namespace

/// The system calls of the analysis: it reads two samples of a large file at most, and does not open a file
/// of unique size.
class tst_bytesRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void readsAtMostTwoSamples_data();
    void readsAtMostTwoSamples();
    void opensNoFileOfUniqueSize();

private:
    void traceAnalysis();
    void addCall(const QString &line);
    [[nodiscard]] QString file(int size, const char *name) const;

    QTemporaryDir m_folder;
    QString m_home;
    QHash<QString, Access> m_accesses;
};

void tst_bytesRead::initTestCase()
{
    const QString strace = QStandardPaths::findExecutable(QStringLiteral("strace"));
    if (strace.isEmpty())
        QSKIP("strace is not installed");
    if (QProcess::execute(
            strace, {QStringLiteral("-o"), QStringLiteral("/dev/null"), QStringLiteral("true")}) != 0)
        QSKIP("ptrace is not permitted, so strace cannot work");
    QVERIFY(m_folder.isValid());
    m_home = QDir(m_folder.path()).canonicalPath();
    traceAnalysis();
}

QString tst_bytesRead::file(int size, const char *name) const
{
    return QStringLiteral("%1/%2.%3").arg(m_home, QString::number(size), QLatin1StringView(name));
}

/// Analyses two copies of each size and a file of unique size between them. The second copy is not cached, if
/// the file system supports that.
void tst_bytesRead::traceAnalysis()
{
    // One trace per thread: a common trace can split a call into two lines.
    const QString traces = m_home + QStringLiteral("/traces/");
    QVERIFY(QDir().mkpath(traces));
    QStringList arguments{QStringLiteral("-ff"), QStringLiteral("-y"), QStringLiteral("-qq"),
        QStringLiteral("-s0"), QStringLiteral("-etrace=%desc"), QStringLiteral("-esignal=none"),
        QStringLiteral("-o") + traces + u't', QStringLiteral(ANALYSE_FILES)};
    for (const int size : sizes) {
        const QByteArray content = randomBytes(size, 1);
        writeFile(file(size, "first"), content);
        writeFile(file(size, "unique"), content + "xyz");
        writeFile(file(size, "second"), content);
        dropFromPageCache(file(size, "second"));
        arguments << file(size, "first") << file(size, "unique") << file(size, "second");
    }

    QProcess tracer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // LeakSanitizer does not work in a traced process.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    tracer.setProcessEnvironment(environment);
    tracer.start(QStringLiteral("strace"), arguments);
    QVERIFY(tracer.waitForFinished(patience));
    QCOMPARE(tracer.readAllStandardOutput().trimmed().toInt(), int(2 * sizes.size()));

    for (const QFileInfo &trace : QDir(traces).entryInfoList(QDir::Files)) {
        QFile lines(trace.filePath());
        QVERIFY(lines.open(QIODevice::ReadOnly));
        while (!lines.atEnd())
            addCall(QString::fromUtf8(lines.readLine()));
    }
}

/// Parses one line, such as: read(3</tmp/x/20000.first>, ""..., 4096) = 4096
void tst_bytesRead::addCall(const QString &line)
{
    static const QRegularExpression pathPattern(
        u'<' + QRegularExpression::escape(m_home) + QStringLiteral("/([^>]+)>"));
    static const QRegularExpression callPattern(QStringLiteral(R"(^(\w+)\(.* = (-?\d+))"));
    const QRegularExpressionMatch path = pathPattern.match(line);
    const QRegularExpressionMatch call = callPattern.match(line);
    if (!path.hasMatch() || !call.hasMatch())
        return;
    Access &access = m_accesses[path.captured(1)];
    const QString name = call.captured(1);
    if (name.startsWith(u"open"))
        ++access.opened;
    else if (name == u"mmap")
        ++access.mapped;
    else if (name.contains(u"read") || name == u"sendfile" || name == u"splice" || name == u"copy_file_range")
        access.addRead(call.captured(2).toLongLong());
}

void tst_bytesRead::readsAtMostTwoSamples_data()
{
    QTest::addColumn<int>("size");
    for (const int size : sizes)
        QTest::addRow("%d bytes", size) << size;
}

void tst_bytesRead::readsAtMostTwoSamples()
{
    QFETCH(const int, size);
    for (const char *const name : {"first", "second"}) {
        const Access access = m_accesses.value(QFileInfo(file(size, name)).fileName());
        QCOMPARE(access.opened, 1);
        QCOMPARE(access.mapped, 0);
        QCOMPARE(access.reads, size > 2 * sample ? 2 : 1);
        QCOMPARE(access.bytesRead, qint64(size > 2 * sample ? 2 * sample : std::min(size, sample)));
    }
}

void tst_bytesRead::opensNoFileOfUniqueSize()
{
    for (const int size : sizes)
        QVERIFY(!m_accesses.contains(QFileInfo(file(size, "unique")).fileName()));
}

QTEST_GUILESS_MAIN(tst_bytesRead)
#include "tst_bytesRead.moc"
