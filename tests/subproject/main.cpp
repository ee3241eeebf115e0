#include "scan/FileCategories.h"

#include <QString>

// Exits with 0 if the engine answers.
int main()
{
    return categoryOf(QStringLiteral("png")).isEmpty() ? 1 : 0;
}
