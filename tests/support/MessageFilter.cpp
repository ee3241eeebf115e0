#include "tests/support/MessageFilter.h"

#include <QString>

#include <array>

namespace {

constexpr std::array dropped{
    "Unknown property transition",
    "This plugin does not support",
    "No matching signal for on_treeDuplicates_scroll()",
    "ScanOptions Slot Triggered!",
    "chkSkipSystem checked:",
};

QtMessageHandler &nextHandler()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    for (const char *each : dropped) {
        if (text.contains(QLatin1StringView(each)))
            return;
    }
    nextHandler()(type, context, text);
}

} // namespace

void dropRepeatedMessages()
{
    if (const QtMessageHandler previous = qInstallMessageHandler(handle); previous != handle)
        nextHandler() = previous;
}
