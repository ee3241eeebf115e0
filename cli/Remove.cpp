#include "cli/Remove.h"
int runRemove(const QStringList &)
{
    return 0;
}
