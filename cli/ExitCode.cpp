#include "cli/ExitCode.h"

#include <algorithm>
#include <array>

ExitCode moreSerious(ExitCode a, ExitCode b)
{
    constexpr std::array byWeight{
        ExitDone, ExitDuplicatesFound, ExitRefused, ExitFailed, ExitInterrupted, ExitWrongUsage};
    return *std::max(std::ranges::find(byWeight, a), std::ranges::find(byWeight, b));
}
