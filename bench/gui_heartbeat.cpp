#include "bench/support/FileTree.h"
#include "bench/support/Heartbeat.h"
#include "bench/support/Photo.h"
#include "bench/support/ScannedWindow.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>

// Measures how long the window takes to respond, during a scan of given folders and with large results.
// Operates the real window through its buttons, in the normal event loop.

using Qt::StringLiterals::operator""_s;

namespace {

struct CategoryButton
{
    const char *name;
    const char *what;
};

constexpr std::array categoryButtons{
    CategoryButton{"btnPictures", "pictures"},
    CategoryButton{"btnVideos", "videos (none)"},
    CategoryButton{"btnAudios", "audios"},
    CategoryButton{"btnDocuments", "documents"},
    CategoryButton{"btnArchives", "archives"},
    CategoryButton{"btnOthers", "others"},
    CategoryButton{"btnAll", "all"},
};

/// Pairs of copies in all categories but videos. The pictures are not valid.
void writeMixedPair(const QString &path, int number)
{
    constexpr std::array suffixes{".jpg", ".mp3", ".txt", ".zip", ".bin"};
    const auto kind = static_cast<std::size_t>(number / 2) % suffixes.size();
    writePair(path + QLatin1StringView(suffixes.at(kind)), number);
}

/// A window with a heartbeat.
class Session
{
public:
    explicit Session(QString title)
        : m_title(std::move(title))
    {
    }

    /// Presses Scan and waits for the first rows.
    bool scan(const QStringList &folders)
    {
        m_driver.listFolders(folders);
        const auto shows = [this](const char *text) {
            return m_driver.labelText("labelCurrentFile") == QLatin1StringView(text);
        };
        const auto isOnResultsPage = [this] { return m_driver.page() == u"duplicatespage"; };
        return m_beat.run(
                   u"collect"_s, [this] { m_driver.click("btnStartScan"); },
                   [&] { return shows("Analyzing...") || isOnResultsPage(); }) &&
               m_beat.run(
                   u"analyse and deliver"_s, [] {}, isOnResultsPage) &&
               m_beat.run(
                   u"open"_s, [] {}, [this] { return m_driver.tree()->topLevelItemCount() > 0; }) &&
               m_beat.run(u"thumbnails and painting"_s, [] {});
    }

    void switchCategories(const QString &when)
    {
        for (const CategoryButton &button : categoryButtons) {
            m_beat.run(QLatin1StringView(button.what) + when, [&] { m_driver.click(button.name); });
        }
    }

    void press(const char *button, const QString &phase)
    {
        m_beat.run(phase, [&] { m_driver.click(button); });
    }

    /// Moves the scroll bar to its end until \a groups groups have rows; false if there are fewer groups.
    bool scroll(int groups)
    {
        QScrollBar *const bar = m_driver.tree()->verticalScrollBar();
        constexpr int beatsToWait = 100;
        int beatsWithoutNewRows = 0;
        int loaded = 0;
        m_beat.run(
            u"scroll through %1 groups"_s.arg(groups), [] {},
            [&] {
                const int now = m_driver.tree()->topLevelItemCount();
                beatsWithoutNewRows = now > loaded ? 0 : beatsWithoutNewRows + 1;
                loaded = now;
                bar->setValue(bar->maximum() - 1);
                bar->setValue(bar->maximum());
                return loaded >= groups || beatsWithoutNewRows > beatsToWait;
            });
        return loaded >= groups;
    }

    void expandFirstGroup()
    {
        m_beat.run(
            u"expand the first group"_s, [this] { m_driver.tree()->topLevelItem(0)->setExpanded(true); });
    }

    void print() const
    {
        std::printf("%s\n%s\n", qPrintable(m_title), qPrintable(m_beat.table()));
    }

private:
    const QString m_title;
    WindowDriver m_driver;
    Heartbeat m_beat;
};

bool scanFolders(const QStringList &folders)
{
    Session session(u"# A scan of "_s + folders.join(u' '));
    const bool done = session.scan(folders);
    session.print();
    return done;
}

bool workOnGroups(int groups, int rows, const QString &parent)
{
    FileTree tree(writeMixedPair, parent);
    Session session(u"# A result of %1 groups"_s.arg(groups));
    bool done = session.scan({tree.folderOfAll(2 * groups)});
    session.switchCategories({});
    session.press("btnUnselect", u"Unselect"_s);
    session.press("btnSelectAll", u"Select All"_s);
    done = session.scroll(rows) && done;
    session.press("btnUnselect", u"Unselect, after scrolling"_s);
    session.press("btnAll", u"all again, after scrolling"_s);
    done = session.scroll(rows) && done;
    session.switchCategories(u", after scrolling"_s);
    session.press("btnBack", u"Back"_s);
    session.print();
    return done;
}

bool openLargeGroup(int members, const QString &parent)
{
    FileTree tree(writeCopy, parent);
    Session session(u"# A group of %1 files"_s.arg(members));
    const bool done = session.scan({tree.folderOfAll(members)});
    session.expandFirstGroup();
    session.press("btnUnselect", u"Unselect"_s);
    session.press("btnSelectAll", u"Select All"_s);
    session.press("btnAll", u"all again"_s);
    session.print();
    return done;
}

/// Makes pairs of photos: bytes after the end of a JPEG file do not change the picture.
bool lookAtPhotos(int pairs, const QString &parent)
{
    const QByteArray picture = makePhoto();
    FileTree tree(
        [&](const QString &path, int number) {
            writeQuickly(path + u".jpg"_s, picture + QByteArray::number(number / 2));
        },
        parent);
    Session session(u"# %1 photos of 12 megapixels, %2 MB each"_s.arg(2 * pairs).arg(
        static_cast<double>(picture.size()) / 1e6, 0, 'f', 1));
    const bool done = session.scan({tree.folderOfAll(2 * pairs)}) && session.scroll(pairs);
    session.print();
    return done;
}

struct Sizes
{
    int groups = 0;
    int rows = 0;
    int members = 0;
    int photos = 0;
};

/// The values of the options of \a parser; prints an error and returns nothing if one is not a number of
/// files.
std::optional<Sizes> sizesFrom(const QCommandLineParser &parser)
{
    Sizes sizes;
    for (const auto &[name, size] : {std::pair("groups", &sizes.groups), std::pair("rows", &sizes.rows),
             std::pair("members", &sizes.members), std::pair("photos", &sizes.photos)}) {
        bool valid = false;
        *size = parser.value(QLatin1StringView(name)).toInt(&valid);
        if (!valid || *size < 0) {
            std::fprintf(stderr, "gui_heartbeat: --%s takes a number\n", name);
            return {};
        }
    }
    return sizes;
}

/// Whether \a folder can be written to or else scanned; prints an error if not.
bool checkFolder(const QString &folder, bool toWrite)
{
    const QFileInfo info(folder);
    const bool usable = info.isDir() && (toWrite ? info.isWritable() : info.isReadable());
    if (!usable)
        std::fprintf(stderr, "gui_heartbeat: %s is not a folder to %s\n", qPrintable(folder),
            toWrite ? "write to" : "scan");
    return usable;
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(u"Measures how long the window takes to respond."_s);
    parser.addHelpOption();
    parser.addOptions({
        {u"groups"_s, u"Groups of the large result, 0 for none."_s, u"number"_s, u"100000"_s},
        {u"rows"_s, u"Number of its groups to scroll through, twice."_s, u"number"_s, u"5000"_s},
        {u"members"_s, u"Files of the large group, 0 for none."_s, u"number"_s, u"50000"_s},
        {u"photos"_s, u"Pairs of photos, 0 for none."_s, u"number"_s, u"50"_s},
        {u"folder"_s, u"Where to create files (default: in memory)."_s, u"folder"_s},
    });
    parser.addPositionalArgument(u"folders"_s, u"Folders to scan (default: none)."_s, u"[folder...]"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    const WindowApplication application(argc, argv);
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(QCoreApplication::arguments());
    const QString parent = parser.value(u"folder"_s);
    const QStringList folders = parser.positionalArguments();
    const auto isReadable = [](const QString &folder) { return checkFolder(folder, false); };
    const std::optional<Sizes> sizes = sizesFrom(parser);
    if (!sizes || (!parent.isEmpty() && !checkFolder(parent, true)) ||
        !std::all_of(folders.cbegin(), folders.cend(), isReadable))
        return 2;

    const bool done =
        (folders.isEmpty() || scanFolders(folders)) &&
        (sizes->groups == 0 || workOnGroups(sizes->groups, std::min(sizes->rows, sizes->groups), parent)) &&
        (sizes->members == 0 || openLargeGroup(sizes->members, parent)) &&
        (sizes->photos == 0 || lookAtPhotos(sizes->photos, parent));
    return done ? 0 : 1;
}
