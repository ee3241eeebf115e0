#include "cli/Find.h"
int runFind(const QStringList &)
{
    return 0;
}
