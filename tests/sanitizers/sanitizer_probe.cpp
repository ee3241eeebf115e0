#include "analysis/PoolThreadRelease.h"

#include <QCoreApplication>
#include <QMap>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrentMap>
#include <QtConcurrentRun>

#include <cstdio>
#include <limits>
#include <memory>
#include <tuple>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int rounds = 200;

/// Runs \a task on the pool and the event loop until something calls exit().
int runWithPool(const std::function<void()> &task)
{
    std::ignore = QtConcurrent::run(QThreadPool::globalInstance(), task);
    const int result = QCoreApplication::exec();
    QThreadPool::globalInstance()->waitForDone();
    return result;
}

/// Fault: the pool thread goes on writing to what it has handed over already.
int lateWrite()
{
    int files = 0;
    return runWithPool([&files] {
        QMetaObject::invokeMethod(
            qApp, [&files] { QCoreApplication::exit(files < 0); }, Qt::QueuedConnection);
        files = 1;
    });
}

/// The same fault, but made and found inside Qt's own code: one list, without a copy, in two threads.
int sharedList()
{
    QStringList paths{u"first"_s};
    return runWithPool([&paths] {
        QMetaObject::invokeMethod(
            qApp, [&paths] { QCoreApplication::exit(paths.contains(u"none"_s)); }, Qt::QueuedConnection);
        paths.append(u"second"_s);
    });
}

/// Fault: a queued call outlives what it reads.
int lateRead()
{
    auto files = std::make_unique<int>(0);
    QTimer::singleShot(0, qApp, [late = files.get()] { QCoreApplication::exit(*late < 0); });
    files.reset();
    return QCoreApplication::exec();
}

/// Fault: objects that nothing owns and nothing knows any more.
int leak()
{
    for (int i = 0; i < rounds; ++i)
        new QObject;
    return 0;
}

/// Fault: one more than an int can hold, as a count of files would be.
int overflow()
{
    const int places = static_cast<int>(QCoreApplication::arguments().size());
    const int files = std::numeric_limits<int>::max() - 1 + places;
    return files == 0;
}

/// No fault: results of the pool's threads, handed over by value as the window takes them.
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

/// Does what its argument names and ends with 0, unless a sanitizer ends it first.
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
