#include "cli/JsonReport.h"
#include "cli/Messages.h"
#include "cli/ReportBuilder.h"
#include "cli/ReportFormats.h"
#include "cli/SizeText.h"

#include <algorithm>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// The control sequence that starts the colour of \a action.
QString colourOf(FileAction action)
{
    switch (action) {
    case FileAction::Keep:
        return u"\x1b[32m"_s;
    case FileAction::Remove:
        return u"\x1b[31m"_s;
    case FileAction::Link:
        return u"\x1b[36m"_s;
    case FileAction::Reference:
        break;
    }
    return u"\x1b[33m"_s;
}

QString painted(const QString &text, const QString &colour, bool withColours)
{
    return withColours ? colour + text + u"\x1b[0m"_s : text;
}

/// Number of files in the group. Further names of a file do not count.
qint64 filesOf(const ReportGroup &group)
{
    return std::ranges::count_if(
        group.files, [](const ReportFile &file) { return file.action != FileAction::Link; });
}

QString groupText(const Report &report, const ReportGroup &group, bool withColours)
{
    QString heading = u"%1 each, %2"_s.arg(sizeText(group.size), counted(filesOf(group), u"file"_s));
    if (report.compared == u"sample")
        heading += u", compared by sample"_s;
    const bool hasReference =
        std::ranges::find(group.files, FileAction::Reference, &ReportFile::action) != group.files.end();
    const qsizetype actionWidth =
        nameOf(hasReference ? FileAction::Reference : FileAction::Remove).size() + 1;
    QString text = painted(heading, u"\x1b[1m"_s, withColours) + u'\n';
    for (const ReportFile &file : group.files) {
        text += u"  "_s +
                painted(nameOf(file.action).leftJustified(actionWidth), colourOf(file.action), withColours) +
                withVisibleControls(file.path) + u'\n';
    }
    return text + u'\n';
}

QString closingText(const Report &report)
{
    const ReportSummary &summary = report.summary;
    QString text;
    if (summary.unreadable > 0)
        text += u"%1 could not be read\n"_s.arg(counted(summary.unreadable, u"path"_s));
    if (summary.undecodableNames > 0)
        text += u"%1 left out: not valid text\n"_s.arg(counted(summary.undecodableNames, u"name"_s));
    text += u"%1, %2 to remove, %3 to win"_s.arg(counted(summary.groups, u"group"_s),
        counted(summary.removableFiles, u"file"_s), sizeText(summary.removableBytes));
    const qint64 several = removableIn(report.groups).filesWithFurtherNames;
    if (several > 0)
        text += u" (for %1 only when its last name goes)"_s.arg(counted(several, u"file"_s));
    if (report.compared == u"sample")
        text += u", compared by sample"_s;
    return text + u'\n';
}

} // namespace

void writeText(const Report &report, bool withColours, const ReportSink &sink)
{
    for (const ReportGroup &group : report.groups) {
        if (!sink(groupText(report, group, withColours).toUtf8()))
            return;
    }
    sink(closingText(report).toUtf8());
}
