#include "bench/support/ScanEverything.h"

ScanOptions scanEverything()
{
    ScanOptions options;
    options.fileTypes =
        QStringList{QStringLiteral("picture"), QStringLiteral("video"), QStringLiteral("audio"),
            QStringLiteral("document"), QStringLiteral("archive"), QStringLiteral("other")};
    return options;
}
