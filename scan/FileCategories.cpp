#include "scan/FileCategories.h"

#include <QLatin1StringView>
#include <QStringView>

#include <algorithm>
#include <array>
#include <span>

namespace {

using Suffixes = std::span<const QLatin1StringView>;

struct Category
{
    QStringView key;
    Suffixes suffixes;
};

constexpr QStringView otherKey(u"other");

template <typename... Texts>
constexpr auto suffixes(const Texts &...texts)
{
    return std::array{QLatin1StringView(texts)...};
}

constexpr auto archives = suffixes("zip", "rar", "7z");

constexpr auto collectedDocuments = suffixes("doc", "docx", "pdf", "txt");
constexpr auto collectedAudios = suffixes("mp3", "wav", "flac", "aac", "ogg", "m4a");
constexpr auto collectedVideos = suffixes("mp4", "avi", "mkv", "mov", "wmv", "flv");
constexpr auto collectedPictures =
    suffixes("jpg", "jpeg", "png", "webp", "gif", "bmp", "tiff", "tif", "ico", "heic", "svg");

constexpr std::array collectionSuffixes{
    Category{u"archive", archives},
    Category{u"document", collectedDocuments},
    Category{u"audio", collectedAudios},
    Category{u"video", collectedVideos},
    Category{u"picture", collectedPictures},
};

constexpr auto shownPictures = suffixes("jpg", "jpeg", "png", "webp", "gif", "bmp");
constexpr auto shownVideos = suffixes("mp4", "avi", "mkv", "mov", "wmv");
constexpr auto shownAudios = suffixes("mp3", "wav", "flac", "aac");
constexpr auto shownDocuments = suffixes("pdf", "docx", "doc", "txt");

constexpr std::array categorySuffixes{
    Category{u"picture", shownPictures},
    Category{u"video", shownVideos},
    Category{u"audio", shownAudios},
    Category{u"document", shownDocuments},
    Category{u"archive", archives},
};

constexpr auto thumbnailSuffixes = suffixes("jpg", "jpeg", "png", "gif", "bmp", "webp");

/// \a key as a string that allocates no memory: a scan can find a hundred thousand groups.
QString shared(QStringView key)
{
    return QString::fromRawData(key.data(), key.size());
}

bool contains(Suffixes list, const QString &suffix)
{
    return std::ranges::any_of(list, [&](QLatin1StringView entry) { return suffix == entry; });
}

} // namespace

QString lowerCaseSuffix(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot > path.lastIndexOf(u'/') ? path.sliced(dot + 1).toLower() : QString();
}

QString categoryOf(const QString &suffix)
{
    for (const Category &category : categorySuffixes) {
        if (contains(category.suffixes, suffix))
            return shared(category.key);
    }
    return shared(otherKey);
}

bool collectionAccepts(const QString &suffix, const QStringList &fileTypes)
{
    if (fileTypes.contains(otherKey))
        return true;
    return std::ranges::any_of(collectionSuffixes, [&](const Category &category) {
        return contains(category.suffixes, suffix) && fileTypes.contains(category.key);
    });
}

bool hasThumbnail(const QString &suffix)
{
    return contains(thumbnailSuffixes, suffix);
}
