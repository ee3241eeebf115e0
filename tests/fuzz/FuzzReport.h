#pragma once

#include <QDebug>

#include <cstdlib>

/// Ends the process, which libFuzzer takes as a finding, when \a actual is not \a expected. \a subject says
/// what was compared, \a input for what.
template <typename Value, typename Input>
void expectEqual(const char *subject, const Value &actual, const Value &expected, const Input &input)
{
    if (actual == expected)
        return;
    qCritical().nospace() << subject << " of " << input << " is " << actual << ", not " << expected;
    std::abort();
}
