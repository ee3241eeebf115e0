#include "analysis/FileHash.h"
#include "analysis/Sha256.h"
#include "bench/support/Benchmarks.h"
#include "bench/support/FileTree.h"

#include <QCryptographicHash>

// Fingerprints of one file at several sizes (constant time beyond 8192 bytes), fingerprints of many files,
// and digests, both with this build's SHA-256 and with Qt's. Without libcrypto (QUILLORY_USE_LIBCRYPTO=OFF),
// the two digests are the same.

namespace {

constexpr int chunkSize = 4096;

void fingerprintOne(benchmark::State &state, FileTree &tree)
{
    const QString path = tree.paths(1).constFirst();
    writeWithHole(path, {}, state.range(0));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(computeFileHash(path, chunkSize));
}

void fingerprintMany(benchmark::State &state, FileTree &tree)
{
    const QStringList paths = tree.paths(sizeOf(state));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(computeHashesConcurrently(paths));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void digestOfBuild(benchmark::State &state)
{
    const QByteArray bytes(state.range(0), 'x');
    while (state.KeepRunning())
        benchmark::DoNotOptimize(sha256(bytes, {}));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void digestOfQt(benchmark::State &state)
{
    const QByteArray bytes(state.range(0), 'x');
    while (state.KeepRunning())
        benchmark::DoNotOptimize(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

} // namespace

int main(int argc, char *argv[])
{
    FileTree one(writePair);
    auto *const single = benchmark::RegisterBenchmark(
        "fingerprint", [&](benchmark::State &state) { fingerprintOne(state, one); });
    for (const int size : {0, 100, 4096, 8192, 8193, 1 << 20, 1 << 30})
        single->Arg(size);

    FileTree many(
        [](const QString &path, int number) { writeWithHole(path, QByteArray::number(number), 8193); });
    addGrowing("fingerprintMany", {2, 16, 128, 1000, 10'000, 100'000},
        [&](benchmark::State &state) { fingerprintMany(state, many); });

    for (const int size : {0, 100, 1000, 4096, 8192}) {
        benchmark::RegisterBenchmark("digestOfBuild", digestOfBuild)->Arg(size);
        benchmark::RegisterBenchmark("digestOfQt", digestOfQt)->Arg(size);
    }
    return runBenchmarks(argc, argv);
}
