#include "scan/FileCategories.h"
#include "tests/fuzz/FuzzReport.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <string>

namespace {

QStringList words(const QString &text)
{
    return text.split(u' ');
}

QString referenceLowerCase(const QString &text)
{
    std::u32string lower;
    for (const char32_t letter : text.toStdU32String()) {
        // The only letter whose lower case has two letters: an i and a combining dot.
        if (letter == 0x130)
            lower += U"i\u0307";
        else
            lower += QChar::toLower(letter);
    }
    return QString::fromStdU32String(lower);
}

/// Searches letter by letter instead of using QFileInfo.
QString referenceSuffix(const QString &path)
{
    QString suffix;
    bool seenDot = false;
    for (const QChar letter : path) {
        if (letter == u'/' || letter == u'.') {
            seenDot = letter == u'.';
            suffix.clear();
        } else if (seenDot) {
            suffix += letter;
        }
    }
    return referenceLowerCase(suffix);
}

QString referenceCategoryOf(const QString &suffix)
{
    if (words(QStringLiteral("jpg jpeg png webp gif bmp")).contains(suffix))
        return QStringLiteral("picture");
    if (words(QStringLiteral("mp4 avi mkv mov wmv")).contains(suffix))
        return QStringLiteral("video");
    if (words(QStringLiteral("mp3 wav flac aac")).contains(suffix))
        return QStringLiteral("audio");
    if (words(QStringLiteral("pdf docx doc txt")).contains(suffix))
        return QStringLiteral("document");
    if (words(QStringLiteral("zip rar 7z")).contains(suffix))
        return QStringLiteral("archive");
    return QStringLiteral("other");
}

/// The suffixes of a file type other than "other".
QStringList referenceCollected(const QString &type)
{
    if (type == QStringLiteral("archive"))
        return words(QStringLiteral("zip rar 7z"));
    if (type == QStringLiteral("document"))
        return words(QStringLiteral("doc docx pdf txt"));
    if (type == QStringLiteral("audio"))
        return words(QStringLiteral("mp3 wav flac aac ogg m4a"));
    if (type == QStringLiteral("video"))
        return words(QStringLiteral("mp4 avi mkv mov wmv flv"));
    if (type == QStringLiteral("picture"))
        return words(QStringLiteral("jpg jpeg png webp gif bmp tiff tif ico heic svg"));
    return {};
}

bool referenceAccepts(const QString &suffix, const QStringList &fileTypes)
{
    bool matched = false;
    bool others = false;
    for (const QString &type : fileTypes) {
        matched = matched || referenceCollected(type).contains(suffix);
        others = others || type == QStringLiteral("other");
    }
    return matched || others;
}

bool referenceHasThumbnail(const QString &suffix)
{
    return words(QStringLiteral("jpg jpeg png gif bmp webp")).contains(suffix);
}

QString consumeText(FuzzedDataProvider &data)
{
    if (data.ConsumeBool())
        return QString::fromStdString(data.ConsumeRandomLengthString(60));
    QString units;
    for (int count = data.ConsumeIntegralInRange(0, 12); count > 0; --count)
        units += QChar(data.ConsumeIntegral<char16_t>());
    return units;
}

/// One of the listed suffixes with some letters in upper case.
QString consumeListedSuffix(FuzzedDataProvider &data)
{
    const QStringList listed =
        words(QStringLiteral("jpg jpeg png webp gif bmp tiff tif ico heic svg mp4 avi mkv "
                             "mov wmv flv mp3 wav flac aac ogg m4a doc docx pdf txt zip rar 7z"));
    QString suffix = listed.at(data.ConsumeIntegralInRange<qsizetype>(0, listed.size() - 1));
    for (QChar &letter : suffix) {
        if (data.ConsumeBool())
            letter = letter.toUpper();
    }
    return suffix;
}

QString consumePath(FuzzedDataProvider &data)
{
    QString path = consumeText(data);
    if (data.ConsumeBool())
        path += u'.' + consumeListedSuffix(data);
    if (data.ConsumeIntegralInRange(0, 3) == 0)
        path += consumeText(data);
    return path;
}

QStringList consumeFileTypes(FuzzedDataProvider &data)
{
    const QStringList keys = words(QStringLiteral("picture video audio document archive other"));
    QStringList types;
    for (int count = data.ConsumeIntegralInRange(0, 7); count > 0; --count) {
        const auto key = data.ConsumeIntegralInRange<qsizetype>(0, keys.size() + 1);
        if (key < keys.size())
            types += keys.at(key);
        else
            types +=
                key == keys.size() ? consumeText(data) : data.PickValueInArray({"Other", "PICTURE", "all"});
    }
    return types;
}

} // namespace

/// Compares the suffix of a path, and its result in the three tables, with the reference.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    FuzzedDataProvider data(bytes, count);
    const QStringList types = consumeFileTypes(data);
    const QString path = consumePath(data);

    const QString suffix = lowerCaseSuffix(path);
    // Qt sometimes keeps and sometimes replaces an unpaired surrogate. No suffix of the tables has one.
    expectEqual("Suffix", QString::fromStdU32String(suffix.toStdU32String()), referenceSuffix(path), path);
    // The tables compare exactly: no suffix in upper case is listed.
    for (const QString &asked : {suffix, suffix.toUpper(), consumeText(data)}) {
        expectEqual("Category", categoryOf(asked), referenceCategoryOf(asked), asked);
        expectEqual("Thumbnail", hasThumbnail(asked), referenceHasThumbnail(asked), asked);
        expectEqual("Acceptance", collectionAccepts(asked, types), referenceAccepts(asked, types),
            qMakePair(asked, types));
    }
    return 0;
}
