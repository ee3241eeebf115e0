#pragma once

#include <QDebug>

#include <cstdlib>

/// Aborts the process, which libFuzzer reports as a finding, if \a actual differs from \a expected. \a
/// subject names the compared value, \a input the input.
template <typename Value, typename Input>
void expectEqual(const char *subject, const Value &actual, const Value &expected, const Input &input)
{
    if (actual == expected)
        return;
    qCritical().nospace() << subject << " of " << input << " is " << actual << ", not " << expected;
    std::abort();
}
