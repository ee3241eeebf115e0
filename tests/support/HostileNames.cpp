#include "tests/support/HostileNames.h"

#include "tests/support/SpecialFiles.h"

#include <QFile>
#include <QTest>

#include <algorithm>

namespace {

constexpr int levels = 2;
constexpr int entriesEach = 8;
/// 255 bytes minus the three of a byte order mark.
constexpr int longest = 252;

} // namespace

QByteArrayList textPieces()
{
    return {"a", "b", "Z", "0", " ", ".", "-", "%1", "%L2", "\\", "\n", "\t", "\x01", "\x1B[31m", "\x7F",
        "\xC2\x85", "\xEF\xBB\xBF", "\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xEF\xB7\x90",
        "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBD", "\xCC\x81", "e\xCC\x81", "\xC3\xA9", "\xE2\x80\xAE",
        "\xE2\x80\x8F", "\xE2\x80\x8D", "\xD7\xA9", "\xE7\x85\xA7", "\xF0\x9F\x98\x80", "\xC2\xA0",
        "\xE3\x80\x80", "?", "*", "\"", "<b>", "&"};
}

QByteArrayList brokenPieces()
{
    return {"\x80", "\xBF", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80",
        "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        "\xF8\x88\x80\x80\x80", "\xFE", "\xFF", "\xC3", "\xE7\x85", "\xF0\x9F\x98"};
}

RandomTree::RandomTree(const HostileTree &tree, quint32 seed)
    : m_root(QFile::encodeName(tree.path()))
    , m_random(seed)
{
    fill({}, 0, true);
}

QList<QByteArray> RandomTree::visibleFiles()
{
    std::ranges::sort(m_visible);
    return m_visible;
}

void RandomTree::fill(const QByteArray &folder, int level, bool isVisible)
{
    for (int i = 0; i < entriesEach; ++i) {
        const auto [name, isText] = randomName();
        const bool isFolder = level < levels && m_random.bounded(4) == 0;
        add(folder, name, isText, isFolder, level, isVisible);
        // The same name with one more byte order mark.
        if (m_random.bounded(3) == 0)
            add(folder, "\xEF\xBB\xBF" + name, isText, isFolder, level, isVisible);
    }
}

std::pair<QByteArray, bool> RandomTree::randomName()
{
    QByteArray name;
    bool isText = true;
    bool endsBroken = false;
    const bool isLong = m_random.bounded(20) == 0;
    const int count = isLong ? longest : m_random.bounded(1, 6);
    for (int i = 0; i < count; ++i) {
        // Two adjacent broken pieces could form a character.
        if (endsBroken)
            name += '~';
        endsBroken = m_random.bounded(20) == 0;
        const QByteArrayList pieces = endsBroken ? brokenPieces() : textPieces();
        const QByteArray &piece = pieces.at(m_random.bounded(static_cast<int>(pieces.size())));
        if (name.size() + piece.size() >= longest)
            break;
        name += piece;
        isText = isText && !endsBroken;
    }
    return {isLong ? name.leftJustified(longest, 'n') : name, isText};
}

void RandomTree::add(
    const QByteArray &folder, const QByteArray &name, bool isText, bool isFolder, int level, bool isVisible)
{
    const QString parent = QFile::decodeName(m_root);
    const QByteArray path = folder.isEmpty() ? name : folder + '/' + name;
    const bool isHidden = name.startsWith('.');
    // Existing entries stay unchanged.
    if (name == "." || name == ".." || m_all.contains(path))
        return;
    m_all.insert(path);
    const bool met = isVisible && !isHidden;
    const bool isAdded =
        isFolder ? makeFolderWithRawName(parent, path) : writeFileWithRawName(parent, path, "x");
    QVERIFY2(isAdded, path.toHex().constData());
    m_undecodable += met && !isText ? 1 : 0;
    if (isFolder)
        fill(path, level + 1, met && isText);
    else if (met && isText)
        m_visible.append(path);
}
