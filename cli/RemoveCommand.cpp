#include "cli/Remove.h"

using Qt::Literals::StringLiterals::operator""_s;

const CommandDescription &removeCommand()
{
    static const CommandDescription description{
        .name = u"remove"_s,
        .operands = u"REPORT"_s,
        .purpose =
            u"Shows what would be done with REPORT, which `quillory-cli find --format json` wrote (\"-\": "
            u"standard "
            "input). With --apply it is done: every file is compared with the kept file, byte by byte, just before."_s,
        .options = {{.name = u"apply"_s,
                        .valueName = {},
                        .meaning = u"acts; without it nothing is touched"_s},
            {.name = u"action"_s,
                .valueName = u"A"_s,
                .meaning = u"trash (default), delete, hardlink, or reflink, which shares the blocks of the "
                           u"kept file "
                           "where the file system can"_s,
                .words = {u"trash"_s, u"delete"_s, u"hardlink"_s, u"reflink"_s}},
            {.name = u"journal"_s,
                .valueName = u"FILE"_s,
                .meaning =
                    u"appends a JSON line to FILE before and after each action; a journal that cannot be "
                    "written ends the run"_s}},
        .notes = u"A file that is not what the report says is left alone, and the exit code is 4. The last "
                 u"copy of a "
                 "content, reference files and links are never acted on.\n"
                 "\n"
                 "An option given twice: the last one counts. \"--\" ends the options."_s,
    };
    return description;
}
