#include "analysis/Sha256.h"

#include <QCryptographicHash>

#ifdef QUILLORY_HAS_CNG
#include "analysis/CngSha256.h"
#endif

#ifdef QUILLORY_HAS_LIBCRYPTO
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <memory>
#endif

namespace {

QByteArray sha256ByQt(QByteArrayView head, QByteArrayView tail)
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    digest.addData(head);
    digest.addData(tail);
    return digest.result();
}

#ifdef QUILLORY_HAS_LIBCRYPTO

constexpr qsizetype digestSize = 32;

struct Free
{
    void operator()(EVP_MD *algorithm) const
    {
        EVP_MD_free(algorithm);
    }
    void operator()(EVP_MD_CTX *context) const
    {
        EVP_MD_CTX_free(context);
    }
};

std::unique_ptr<EVP_MD, Free> fetchAlgorithm()
{
    std::unique_ptr<EVP_MD, Free> algorithm(EVP_MD_fetch(nullptr, "SHA256", nullptr));
    // The fetch allocates an error list for this thread. A pool thread that ends with the program might not
    // free it, a leak.
    OPENSSL_thread_stop();
    return algorithm;
}

/// Empty if libcrypto fails, for example because its configuration excludes SHA-256.
QByteArray sha256ByLibcrypto(QByteArrayView head, QByteArrayView tail)
{
    // Fetched only once: fetching takes longer than hashing a small file. Read-only afterwards.
    static const std::unique_ptr<EVP_MD, Free> algorithm = fetchAlgorithm();
    const std::unique_ptr<EVP_MD_CTX, Free> context(EVP_MD_CTX_new());

    QByteArray digest(digestSize, Qt::Uninitialized);
    const bool done =
        algorithm && context && EVP_DigestInit_ex2(context.get(), algorithm.get(), nullptr) == 1 &&
        EVP_DigestUpdate(context.get(), head.data(), static_cast<std::size_t>(head.size())) == 1 &&
        EVP_DigestUpdate(context.get(), tail.data(), static_cast<std::size_t>(tail.size())) == 1 &&
        EVP_DigestFinal_ex(context.get(), reinterpret_cast<unsigned char *>(digest.data()), nullptr) == 1;
    return done ? digest : QByteArray();
}

#endif

} // namespace

QByteArray sha256(QByteArrayView head, QByteArrayView tail)
{
#ifdef QUILLORY_HAS_CNG
    if (QByteArray digest = sha256ByCng(head, tail); !digest.isEmpty())
        return digest;
#endif
#ifdef QUILLORY_HAS_LIBCRYPTO
    if (QByteArray digest = sha256ByLibcrypto(head, tail); !digest.isEmpty())
        return digest;
#endif
    return sha256ByQt(head, tail);
}
