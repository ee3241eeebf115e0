#include "cli/Find.h"

using Qt::Literals::StringLiterals::operator""_s;

namespace {

QList<OptionDescription> filterOptions()
{
    return {
        {.name = u"types"_s,
            .valueName = u"LIST"_s,
            .meaning =
                u"picture,video,audio,document,archive,other: kinds of files to search, separated by commas; "
                "other accepts every file (all)"_s,
            .words = {u"picture"_s, u"video"_s, u"audio"_s, u"document"_s, u"archive"_s, u"other"_s},
            .takesList = true},
        {.name = u"skip"_s,
            .valueName = u"LIST"_s,
            .meaning = u"system,applications,desktop: locations to leave out, separated by commas (none)"_s,
            .words = {u"system"_s, u"applications"_s, u"desktop"_s},
            .takesList = true},
        {.name = u"hidden"_s, .valueName = {}, .meaning = u"hidden files and folders too (left out)"_s},
        {.name = u"min-size"_s,
            .valueName = u"N"_s,
            .meaning = u"smallest file in bytes, or with K, M, G, T in units of 1024 (1)"_s},
        {.name = u"max-size"_s, .valueName = u"N"_s, .meaning = u"largest file (no limit)"_s},
        {.name = u"exclude"_s,
            .valueName = u"GLOB"_s,
            .meaning =
                u"leaves out files and folders with this name, or this path below FOLDER; may be repeated"_s},
        {.name = u"reference"_s,
            .valueName = u"FOLDER"_s,
            .meaning = u"searches FOLDER too, prefers its files as the kept ones and never offers them for "
                       "removal; may be repeated"_s},
    };
}

QList<OptionDescription> decisionOptions()
{
    return {
        {.name = u"keep"_s,
            .valueName = u"RULE"_s,
            .meaning =
                u"oldest (default), newest, first (in the order of FOLDERs, then of paths), or shortest "
                "(path): which file of a group is kept"_s,
            .words = {u"oldest"_s, u"newest"_s, u"first"_s, u"shortest"_s}},
        {.name = u"compare"_s,
            .valueName = u"MODE"_s,
            .meaning =
                u"bytes (default): every byte; sample: only the beginning and the end, as the window does"_s,
            .words = {u"bytes"_s, u"sample"_s}},
    };
}

QList<OptionDescription> outputOptions()
{
    return {
        {.name = u"format"_s,
            .valueName = u"F"_s,
            .meaning = u"text (default), json, csv, or paths: a path a line, an empty line between groups"_s,
            .words = {u"text"_s, u"json"_s, u"csv"_s, u"paths"_s}},
        {.name = u"null"_s,
            .valueName = {},
            .meaning = u"with --format paths: a NUL after each path, and one more between groups"_s},
        {.name = u"output"_s,
            .valueName = u"FILE"_s,
            .meaning = u"writes FILE, completely or not at all (standard output)"_s},
        {.name = u"progress"_s,
            .valueName = u"WHEN"_s,
            .meaning =
                u"auto (default: when standard error is a terminal), always or never: a bar on standard "
                "error"_s,
            .words = {u"auto"_s, u"always"_s, u"never"_s}},
        {.name = u"threads"_s, .valueName = u"N"_s, .meaning = u"threads to read with (one for each core)"_s},
        {.name = u"fail-on-duplicates"_s,
            .valueName = {},
            .meaning = u"exit code 3 when there are any duplicates"_s},
    };
}

} // namespace

const CommandDescription &findCommand()
{
    static const CommandDescription description{
        .name = u"find"_s,
        .operands = u"FOLDER..."_s,
        .purpose = u"Lists files with identical contents below every FOLDER. Changes nothing. Links are not "
                   "followed."_s,
        .options = filterOptions() + decisionOptions() + outputOptions(),
        .notes = u"If an option is given twice, the last one counts, unless it may be repeated. \"--\" ends "
                 "the options."_s,
    };
    return description;
}
