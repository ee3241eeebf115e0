#include "scan/FileCategories.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>
#include <span>

namespace {

using Suffixes = std::span<const QLatin1StringView>;

struct Category
{
    QLatin1StringView key;
    Suffixes suffixes;
};

constexpr QLatin1StringView otherKey("other");

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
    Category{QLatin1StringView("archive"), archives},
    Category{QLatin1StringView("document"), collectedDocuments},
    Category{QLatin1StringView("audio"), collectedAudios},
    Category{QLatin1StringView("video"), collectedVideos},
    Category{QLatin1StringView("picture"), collectedPictures},
};

constexpr auto shownPictures = suffixes("jpg", "jpeg", "png", "webp", "gif", "bmp");
constexpr auto shownVideos = suffixes("mp4", "avi", "mkv", "mov", "wmv");
constexpr auto shownAudios = suffixes("mp3", "wav", "flac", "aac");
constexpr auto shownDocuments = suffixes("pdf", "docx", "doc", "txt");

constexpr std::array categorySuffixes{
    Category{QLatin1StringView("picture"), shownPictures},
    Category{QLatin1StringView("video"), shownVideos},
    Category{QLatin1StringView("audio"), shownAudios},
    Category{QLatin1StringView("document"), shownDocuments},
    Category{QLatin1StringView("archive"), archives},
};

constexpr auto thumbnailSuffixes = suffixes("jpg", "jpeg", "png", "gif", "bmp", "webp");

bool contains(Suffixes list, const QString &suffix)
{
    return std::any_of(list.begin(), list.end(), [&](QLatin1StringView entry) { return suffix == entry; });
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
            return category.key;
    }
    return otherKey;
}

bool collectionAccepts(const QString &suffix, const QStringList &fileTypes)
{
    if (fileTypes.contains(otherKey))
        return true;
    return std::any_of(collectionSuffixes.begin(), collectionSuffixes.end(), [&](const Category &category) {
        return contains(category.suffixes, suffix) && fileTypes.contains(category.key);
    });
}

bool hasThumbnail(const QString &suffix)
{
    return contains(thumbnailSuffixes, suffix);
}
