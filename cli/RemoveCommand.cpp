#include "cli/Remove.h"

using Qt::Literals::StringLiterals::operator""_s;

namespace {

QList<OptionDescription> removeOptions()
{
    return {
        {.name = u"apply"_s, .valueName = {}, .meaning = u"acts; without it, nothing is touched"_s},
        {.name = u"action"_s,
            .valueName = u"A"_s,
            .meaning = u"trash (default), delete, hardlink, or reflink, which shares the blocks of the kept "
                       "file where the file system can"_s,
            .words = {u"trash"_s, u"delete"_s, u"hardlink"_s, u"reflink"_s}},
        {.name = u"journal"_s,
            .valueName = u"FILE"_s,
            .meaning = u"appends a JSON line to FILE before and after each action; if that fails, the run "
                       "ends before the next action"_s},
    };
}

} // namespace

const CommandDescription &removeCommand()
{
    static const CommandDescription description{
        .name = u"remove"_s,
        .operands = u"REPORT"_s,
        .purpose = u"Shows what it would do with REPORT, which `quillory-cli find --format json` wrote "
                   "(\"-\": standard input). With --apply it acts: just before each action, it compares "
                   "every byte of the file with the kept file."_s,
        .options = removeOptions(),
        .notes = u"A file that does not match the report is left alone, and the exit code is 4. The last "
                 "copy of a content, reference files and links are never acted on.\n"
                 "\n"
                 "If an option is given twice, the last one counts. \"--\" ends the options."_s,
    };
    return description;
}
