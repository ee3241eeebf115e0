#include "analysis/PoolThreadRelease.h"

#include <QCoreApplication>
#include <QMap>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrentMap>
#include <QtConcurrentRun>

#include <atomic>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <thread>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int rounds = 200;

/// Signals another thread without ordering other memory accesses. Two flags make a data race happen in every
/// run without synchronising it away.
class RelaxedFlag
{
public:
    void raise()
    {
        m_raised.store(true, std::memory_order_relaxed);
    }

    void wait() const
    {
        while (!m_raised.load(std::memory_order_relaxed))
            std::this_thread::yield();
    }

private:
    std::atomic<bool> m_raised{false};
};

/// Runs \a task on the pool and the event loop until something calls exit().
int runWithPool(const std::function<void()> &task)
{
    // Destroying the future earlier could order the threads.
    const QFuture<void> future = QtConcurrent::run(QThreadPool::globalInstance(), task);
    const int result = QCoreApplication::exec();
    QThreadPool::globalInstance()->waitForDone();
    return result;
}

/// Fault: the pool thread calls \a write after it has passed the data to \a read on the GUI thread. Returns 0
/// if \a read has seen the change.
int writeLate(const std::function<void()> &write, const std::function<bool()> &read)
{
    RelaxedFlag written;
    RelaxedFlag seen;
    return runWithPool([&] {
        const auto look = [&] {
            written.wait();
            QCoreApplication::exit(read() ? 0 : 1);
            seen.raise();
        };
        QMetaObject::invokeMethod(qApp, look, Qt::QueuedConnection);
        write();
        written.raise();
        seen.wait();
    });
}

int lateWrite()
{
    int files = 0;
    return writeLate([&files] { files = 1; }, [&files] { return files == 1; });
}

/// The same fault inside Qt's code: two threads use one list without a copy.
int sharedList()
{
    QStringList paths;
    return writeLate([&paths] { paths.append(u"new"_s); }, [&paths] { return paths.contains(u"new"_s); });
}

/// Fault: a queued call outlives the data it reads.
int lateRead()
{
    auto files = std::make_unique<int>(0);
    QTimer::singleShot(0, qApp, [late = files.get()] { QCoreApplication::exit(*late < 0); });
    files.reset();
    return QCoreApplication::exec();
}

/// Fault: objects that nothing owns or refers to.
int leak()
{
    for (int i = 0; i < rounds; ++i)
        new QObject;
    return 0;
}

/// Fault: a count of files that exceeds the largest int.
int overflow()
{
    const int places = static_cast<int>(QCoreApplication::arguments().size());
    const int files = std::numeric_limits<int>::max() - 1 + places;
    return files == 0;
}

/// No fault: passes results of pool threads to the GUI thread by value, as the window does.
int handOver()
{
    QStringList paths;
    qsizetype letters = 0;
    return runWithPool([&] {
        for (int round = 1; round <= rounds; ++round) {
            const QStringList names(round, u"name"_s);
            const auto lengthOf = [](const QString &name) { return name.size(); };
            QFuture<qsizetype> future = QtConcurrent::mapped(QThreadPool::globalInstance(), names, lengthOf);
            waitReleasingPoolThread(future);
            const QList<qsizetype> lengths = future.results();
            QMetaObject::invokeMethod(
                qApp,
                [&, names, lengths, round] {
                    paths = names;
                    letters += lengths.constLast();
                    if (round == rounds)
                        QCoreApplication::exit(paths.size() != rounds || letters != 4 * rounds);
                },
                Qt::QueuedConnection);
        }
    });
}

} // namespace

/// Runs the function that the argument names. Ends with 0 unless a sanitizer ends the process.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    static const QMap<QString, int (*)()> probes{{u"lateWrite"_s, lateWrite}, {u"sharedList"_s, sharedList},
        {u"lateRead"_s, lateRead}, {u"leak"_s, leak}, {u"overflow"_s, overflow}, {u"handOver"_s, handOver}};
    const auto probe = probes.value(QCoreApplication::arguments().value(1));
    if (!probe) {
        std::fprintf(stderr, "usage: sanitizer_probe %s\n", qPrintable(probes.keys().join(u'|')));
        return 2;
    }
    return probe();
}
