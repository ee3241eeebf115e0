#include "cli/PathOrder.h"

#include <algorithm>

namespace {

/// Maps UTF-16 code units so that surrogates, which encode characters above U+FFFF, come last.
char16_t rank(QChar unit)
{
    constexpr char16_t firstSurrogate = 0xd800;
    constexpr char16_t afterSurrogates = 0xe000;
    constexpr char16_t surrogates = afterSurrogates - firstSurrogate;
    const char16_t code = unit.unicode();
    if (code < firstSurrogate)
        return code;
    return static_cast<char16_t>(
        code < afterSurrogates ? code + (0x10000 - afterSurrogates) : code - surrogates);
}

} // namespace

bool comesBefore(QStringView a, QStringView b)
{
    const auto [inA, inB] = std::ranges::mismatch(a, b);
    if (inA == a.end() || inB == b.end())
        return inA == a.end() && inB != b.end();
    return rank(*inA) < rank(*inB);
}

qsizetype utf8Size(QStringView text)
{
    qsizetype size = 0;
    for (const QChar unit : text) {
        const char16_t code = unit.unicode();
        // Each half of a surrogate pair counts for two of the four bytes.
        size += code < 0x80 ? 1 : code < 0x800 || unit.isSurrogate() ? 2 : 3;
    }
    return size;
}
