#include "analysis/CngSha256.h"

#include <limits>
#include <memory>
#include <type_traits>

#include <windows.h>

#include <bcrypt.h>

namespace {

constexpr ULONG digestSize = 32;

struct CloseAlgorithm
{
    void operator()(BCRYPT_ALG_HANDLE algorithm) const
    {
        BCryptCloseAlgorithmProvider(algorithm, 0);
    }
};

struct DestroyHash
{
    void operator()(BCRYPT_HASH_HANDLE hash) const
    {
        BCryptDestroyHash(hash);
    }
};

using Algorithm = std::unique_ptr<std::remove_pointer_t<BCRYPT_ALG_HANDLE>, CloseAlgorithm>;
using Hash = std::unique_ptr<std::remove_pointer_t<BCRYPT_HASH_HANDLE>, DestroyHash>;

/// Null on failure.
Algorithm openAlgorithm()
{
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    const NTSTATUS status = BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0);
    return Algorithm(BCRYPT_SUCCESS(status) ? algorithm : nullptr);
}

/// Null on failure.
Hash createHash(const Algorithm &algorithm)
{
    BCRYPT_HASH_HANDLE hash = nullptr;
    const NTSTATUS status = BCryptCreateHash(algorithm.get(), &hash, nullptr, 0, nullptr, 0, 0);
    return Hash(BCRYPT_SUCCESS(status) ? hash : nullptr);
}

bool addData(const Hash &hash, QByteArrayView data)
{
    if (data.size() > std::numeric_limits<LONG>::max())
        return false;
    // BCryptHashData() only reads the bytes, but its parameter is not const.
    auto *const bytes = const_cast<UCHAR *>(reinterpret_cast<const UCHAR *>(data.data()));
    return BCRYPT_SUCCESS(BCryptHashData(hash.get(), bytes, static_cast<ULONG>(data.size()), 0));
}

} // namespace

QByteArray sha256ByCng(QByteArrayView head, QByteArrayView tail)
{
    // Opened only once: opening takes longer than hashing a small file. Thread-safe, according to Microsoft.
    static const Algorithm algorithm = openAlgorithm();
    const Hash hash = algorithm ? createHash(algorithm) : nullptr;

    QByteArray digest(digestSize, Qt::Uninitialized);
    const bool done =
        hash && addData(hash, head) && addData(hash, tail) &&
        BCRYPT_SUCCESS(BCryptFinishHash(hash.get(), reinterpret_cast<UCHAR *>(digest.data()), digestSize, 0));
    return done ? digest : QByteArray();
}
